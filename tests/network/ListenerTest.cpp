// SPDX-License-Identifier: Apache-2.0
// The listener as the SDK uses it: what becomes of the processes, and of the search when one is killed.
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

constexpr const char* Inside = "02:00:00:00:01:01";
constexpr const char* Outside = "02:00:00:00:01:02";

/// Where the process's parent stands in /proc/PID/stat, behind the name in parentheses and the state.
pid_t parentOf(const fs::path& process)
{
    std::string line;
    std::getline(std::ifstream(process / "stat"), line);
    const std::size_t state = line.rfind(')');
    return state == std::string::npos ? -1 : std::atoi(line.c_str() + state + 3);
}

/// This process's listeners, dead ones that have not been reaped left out.
std::set<pid_t> listeners()
{
    std::set<pid_t> found;
    std::error_code gone;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos && parentOf(entry) == getpid() &&
            fs::read_symlink(entry.path() / "exe", gone).filename() == "ip-configurator-hear")
            found.insert(std::stoi(name));
    }
    return found;
}

/// All of this process's children; those that are gone and not reaped too.
std::set<std::string> children()
{
    std::set<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc"))
        if (entry.path().filename().string().find_first_not_of("0123456789") == std::string::npos &&
            parentOf(entry) == getpid())
            found.insert(entry.path().filename());
    return found;
}

std::ptrdiff_t descriptors()
{
    const fs::directory_iterator entries("/proc/self/fd");
    return std::distance(begin(entries), end(entries));
}

/// Kills each listener that this process starts, as soon as it is there, up to so many.
class Killer
{
public:
    explicit Killer(int most)
        : m_thread([this, most] {
              std::set<pid_t> killed;
              while (!m_isOver)
                  for (const pid_t each : listeners())
                      if (static_cast<int>(killed.size()) < most && killed.insert(each).second)
                          kill(each, SIGKILL);
              m_killed = static_cast<int>(killed.size());
          })
    {}
    Killer(const Killer&) = delete;
    Killer& operator=(const Killer&) = delete;
    ~Killer() { end(); }

    /// How many it has been.
    int end()
    {
        m_isOver = true;
        if (m_thread.joinable())
            m_thread.join();
        return m_killed;
    }

private:
    std::atomic<bool> m_isOver = false;
    std::atomic<int> m_killed = 0;
    std::thread m_thread;
};

class ListenerOnTheNetwork : public testing::Test
{
protected:
    ListenerOnTheNetwork()
    {
        site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
            {"mac": "02:00:00:00:01:01", "address": "192.168.1.20"},
            {"mac": "02:00:00:00:01:02", "address": "10.0.0.9", "forceIpAcknowledge": "never",
             "forceIpOffTime": 2000})");
        site.setReversePathFilter(1);
    }

    Site site;
};

} // namespace

TEST_F(ListenerOnTheNetwork, IsGoneAfterEachSearchWithAllThatBelongsToIt)
{
    const auto childrenBefore = children();
    const auto descriptorsBefore = descriptors();
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(macTexts(enumerate(site)), UnorderedElementsAre(Inside, Outside));
    EXPECT_EQ(children(), childrenBefore);
    EXPECT_EQ(descriptors(), descriptorsBefore);
}

TEST_F(ListenerOnTheNetwork, IsGoneOnceAnOpenCameraIsHeardWithoutIt)
{
    const auto records = enumerate(site);
    const RZ_CC_DEVICE_INFO* const camera = recordOf(records, Inside);
    ASSERT_TRUE(camera);
    const OpenCamera open(site, *camera);
    ASSERT_EQ(open.result(), RZ_OK);
    EXPECT_THAT(listeners(), IsEmpty());
}

TEST_F(ListenerOnTheNetwork, ThatIsKilledIsStartedAgainAndEveryCameraIsListed)
{
    Killer killer(1);
    EXPECT_THAT(macTexts(enumerate(site)), UnorderedElementsAre(Inside, Outside));
    EXPECT_EQ(killer.end(), 1);
}

TEST_F(ListenerOnTheNetwork, ThatIsKilledEachTimeTakesNothingElseWithIt)
{
    const Killer killer(1000);
    unsigned state = RZ_LISTENER_HEARS;
    for (int i = 0; i < 10 && state == RZ_LISTENER_HEARS; ++i) {
        EXPECT_THAT(macTexts(enumerate(site)), testing::Contains(Inside));
        char path[256];
        EXPECT_EQ(RZ_CC_GetListener(&state, path, sizeof path), RZ_OK);
    }
    EXPECT_EQ(state, unsigned{RZ_LISTENER_FAILED}) << "half a search is not told";
}

TEST_F(ListenerOnTheNetwork, ThatIsKilledWhileACameraIsForcedDoesNotMakeItFail)
{
    const auto records = enumerate(site);
    const RZ_CC_DEVICE_INFO* const camera = recordOf(records, Outside);
    ASSERT_TRUE(camera);
    Killer killer(1);
    EXPECT_EQ(force(site, *camera, "10.0.0.10"_ip, "255.0.0.0"_ip), RZ_OK);
    EXPECT_EQ(killer.end(), 1);
    const auto recordsAfter = enumerate(site);
    const RZ_CC_DEVICE_INFO* const after = recordOf(recordsAfter, Outside);
    ASSERT_TRUE(after);
    EXPECT_EQ(addressIn(*after), "10.0.0.10"_ip);
}
