// SPDX-License-Identifier: Apache-2.0
#include "tests/site/AppliedLine.h"

#include "site/Survey.h"
#include "site/Words.h"
#include "tests/simulator/Shown.h"

#include <map>

using inventory::IpMethod;
using nlohmann::json;
using site::Result;

namespace {

constexpr char Mask[] = "255.255.0.0";

IpMethod methodOf(const json& shown)
{
    const std::string method = shown.at("ipConfiguration");
    return method == "persistent" ? IpMethod::Static
           : method == "dhcp"     ? IpMethod::Dhcp
                                  : IpMethod::LinkLocal;
}

base::Ipv4 ipOf(const json& text)
{
    return *base::Ipv4::parse(text.get<std::string>());
}

site::Settings settingsOf(const json& shown)
{
    return {methodOf(shown),
            {ipOf(shown.at("address")), ipOf(shown.at("mask")), ipOf(shown.at("gateway"))},
            shown.at("userName")};
}

std::string textOf(const site::Settings& settings)
{
    return base::english({site::settingsInWords(settings)}) + " named " + settings.userName;
}

} // namespace

void AppliedLine::build(std::vector<LineCamera> cameras)
{
    m_cameras = std::move(cameras);
    m_site.unlisted = site::Unlisted::Fail;
    std::string members;
    for (std::size_t i = 0; i < count(); ++i) {
        const LineCamera& camera = m_cameras[i];
        const std::string mac = macOf(static_cast<int>(i));
        members += (i == 0 ? R"({"mac": ")" : R"(, {"mac": ")") + mac + "\", " + camera.atFirst + "}";
        site::Place place;
        place.name = "place" + std::to_string(i);
        place.method = camera.method;
        place.match.mac = base::MacAddress::parse(mac);
        if (camera.method == IpMethod::Static)
            place.ip = {*base::Ipv4::parse(camera.address), *base::Ipv4::parse(Mask), {}};
        place.userName = camera.name;
        m_site.places.push_back(place);
    }
    farm = &site.addCameras(network, members);
}

void AppliedLine::apply(int loss)
{
    m_before.clear();
    for (std::size_t i = 0; i < count(); ++i)
        m_before.push_back(simulator_tests::runningCamera(*farm, macOf(static_cast<int>(i))));
    const lab::Visit visit(site.host());
    const site::Plan plan = site::makePlan(m_site, site::survey(m_site, {}, [] { return false; }));
    ASSERT_FALSE(plan.isRefused()) << base::english(site::summaryOf(plan, site::foresee(plan)));
    ASSERT_FALSE(plan.hasMissing());
    network.loseFrames(loss);
    m_outcomes = site::apply(plan, {.keepsGoing = true, .patience = std::chrono::seconds(8)}, {});
    network.loseFrames(0);
}

json AppliedLine::shown(std::size_t camera) const
{
    return simulator_tests::shown(*farm, macOf(static_cast<int>(camera)));
}

void AppliedLine::judgeAll() const
{
    std::map<std::string, std::size_t> owners;
    for (std::size_t i = 0; i < count(); ++i) {
        judge(i);
        if (const json camera = shown(i); camera.at("plugged") && camera.at("state") == "running") {
            const auto [other, isNew] = owners.emplace(camera.at("address"), i);
            EXPECT_TRUE(isNew) << describe(i) << "has the address of another: " << describe(other->second);
        }
    }
}

void AppliedLine::judge(std::size_t camera) const
{
    const site::Outcome& said = outcomes()[camera];
    const Result result = said.result;
    const bool isKnownWhole = result == Result::Changed || result == Result::Ok || result == Result::PutBack;
    if (result == Result::Changed || result == Result::Ok)
        expectAsPlanned(camera);
    if (result == Result::PutBack)
        expectAsBefore(camera);
    if (result == Result::Ok || result == Result::NotBegun)
        expectUntouched(camera);
    EXPECT_TRUE(isKnownWhole ||
                ((result == Result::Failed || result == Result::NotBegun) && !said.reason.empty()))
        << describe(camera);
    EXPECT_TRUE(said.now || !isKnownWhole) << describe(camera);
    EXPECT_TRUE(!said.now || *said.now == settingsOf(shown(camera))) << describe(camera);
}

void AppliedLine::expectAsPlanned(std::size_t camera) const
{
    const LineCamera& wanted = m_cameras[camera];
    const json now = shown(camera);
    EXPECT_EQ(methodOf(now), wanted.method) << describe(camera);
    EXPECT_EQ(now.at("userName"), wanted.name) << describe(camera);
    if (wanted.method != IpMethod::Static)
        return;
    const json ip{{"address", wanted.address}, {"mask", Mask}, {"gateway", "0.0.0.0"}};
    EXPECT_EQ(now.at("persistent"), ip) << describe(camera);
    for (const auto& [member, value] : ip.items())
        EXPECT_EQ(now.at(member), value) << describe(camera);
}

void AppliedLine::expectAsBefore(std::size_t camera) const
{
    const json now = shown(camera);
    const json& before = m_before[camera];
    EXPECT_TRUE(settingsOf(now) == settingsOf(before)) << describe(camera);
    // With what it starts next time. What others than static ones have stored means nothing to them.
    EXPECT_EQ(now.at("ipConfigurationBits"), before.at("ipConfigurationBits")) << describe(camera);
    if (methodOf(before) == IpMethod::Static) {
        EXPECT_EQ(now.at("persistent"), before.at("persistent")) << describe(camera);
    }
}

void AppliedLine::expectUntouched(std::size_t camera) const
{
    for (const char* const command : {"FORCEIP", "WRITEREG", "WRITEMEM"})
        EXPECT_EQ(shown(camera).at("received").at(command), m_before[camera].at("received").at(command))
            << describe(camera);
}

std::string AppliedLine::tally() const
{
    std::map<Result, int> results;
    for (const site::Outcome& outcome : outcomes())
        ++results[outcome.result];
    std::string text;
    for (const auto& [result, cameras] : results)
        text += base::english({site::resultInWords(result)}) + " " + std::to_string(cameras) + " ";
    return text;
}

std::string AppliedLine::describe(std::size_t camera) const
{
    const site::Outcome& said = outcomes()[camera];
    return "camera " + std::to_string(camera) + ", " + m_cameras[camera].fault + "\nhas " +
           shown(camera).dump() + "\nhad " + m_before[camera].dump() +
           "\nsaid: " + base::english({site::resultInWords(said.result)}) + ", " +
           (said.now ? textOf(*said.now) : "nobody knows what it has") + ": " + base::english(said.reason) +
           "\n";
}
