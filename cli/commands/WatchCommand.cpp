// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/EventReport.h"
#include "cli/cameras/ListenerHint.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/commands/Command.h"
#include "cli/session/Failure.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "inventory/Look.h"
#include "inventory/Watch.h"

#include <QDateTime>

#include <charconv>
#include <ostream>
#include <poll.h>
#include <system_error>

namespace cli {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// How often cameras are asked whether they are there.
constexpr auto TimeOfLook = 3s;
/// After a failure, until the adapters are tried again.
constexpr auto Pause = 1s;

/// "2026-03-01T12:00:00.123+01:00"
std::string timeNow()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs).toStdString();
}

Clock::time_point parseEnd(const Arguments& arguments)
{
    if (!arguments.has("--seconds"))
        return Clock::time_point::max();
    const std::string& text = arguments.options.at("--seconds");
    constexpr std::uint32_t most = 365 * 24 * 3600;
    std::uint32_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || seconds == 0 || seconds > most)
        refuseArguments("--seconds \"" + displayText(text) + "\" is no number from 1 to " +
                        std::to_string(most));
    return Clock::now() + std::chrono::seconds(seconds);
}

/// Whether nobody is left who would read it.
bool hasLostItsReader(int descriptor)
{
    pollfd output{descriptor, 0, 0};
    return ::poll(&output, 1, 0) == 1 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

/// From the first look to the end.
class Watcher
{
public:
    Watcher(const Arguments& arguments, Session& session)
        : m_session(session),
          m_end(parseEnd(arguments)),
          m_isJson(arguments.has("--json"))
    {}

    void run()
    {
        if (m_session.interactive)
            m_session.err << "Watching; Ctrl-C ends it.\n" << std::flush;
        if (!m_isJson)
            m_session.out << eventHeader() << std::flush;
        while (!isOver()) {
            try {
                lookOnTheseAdapters();
            } catch (const std::system_error& error) {
                noteNotSearched(error.what());
                m_isOver = m_interruption.arrives(Pause);
            }
        }
    }

private:
    /// Until other ones are there.
    void lookOnTheseAdapters()
    {
        inventory::Look look;
        inventory::Look::Plan plan;
        plan.time = TimeOfLook;
        plan.onCamera = [this](const inventory::Camera& camera) { m_watch.see(camera, Clock::now()); };
        plan.onArrival = [this, &look](const inventory::Arrival& arrival) {
            m_watch.hear(arrival, look.adapters(), Clock::now());
        };
        plan.isOver = [this] { return isOver(); };
        do {
            const inventory::Inventory found = look.once(plan);
            m_watch.see(found.cameras, Clock::now());
            // One that ended early has not given everybody the time to answer.
            if (isOver())
                return;
            m_watch.endLook(Clock::now());
            noteWhatIsMissed(found);
        } while (look.isCurrent());
    }

    bool isOver()
    {
        m_isOver = m_isOver || Clock::now() >= m_end || m_interruption.arrives(0ms) || !m_session.out ||
                   hasLostItsReader(m_session.outDescriptor);
        return m_isOver;
    }

    void print(const inventory::WatchEvent& event)
    {
        const std::string time = timeNow();
        m_session.out << (m_isJson ? eventJson(event, time) : eventText(event, time)) << std::flush;
    }

    void noteWhatIsMissed(const inventory::Inventory& found)
    {
        noteNotSearched(found.notSearched);
        const std::string hint = listenerHint(listenerReport(found));
        if (hint != m_listenerHint)
            m_session.err << hint << std::flush;
        m_listenerHint = hint;
        const unsigned untold = m_watch.takeUntold() + found.unlisted;
        if (untold > 0 && !m_isFlooded)
            m_session.err << "note: there is more than can be told, such as in a flood of forged packets: "
                             "some cameras or devices are left out\n"
                          << std::flush;
        m_isFlooded = untold > 0;
    }

    /// Once, as long as it is the same.
    void noteNotSearched(const std::string& text)
    {
        if (text != m_notSearched && !text.empty())
            m_session.err << "note: not all networks are watched (" << displayText(text) << ")\n"
                          << std::flush;
        m_notSearched = text;
    }

    Session& m_session;
    const Clock::time_point m_end;
    const bool m_isJson;
    Interruption m_interruption;
    inventory::Watch m_watch{[this](const inventory::WatchEvent& event) { print(event); }};
    std::string m_notSearched;  ///< What was said last of this,
    std::string m_listenerHint; ///< and of the listener.
    bool m_isFlooded = false;
    bool m_isOver = false;
};

void watch(const Arguments& arguments, Session& session)
{
    Watcher(arguments, session).run();
}

} // namespace

Command watchCommand()
{
    return {
        "watch",
        "[--json] [--seconds N]",
        "shows what changes, as it happens",
        R"(Shows each camera that is there, and from then on, with the time, each one that appears, goes (has not answered for
ten seconds), or changes its address or status, and each device that asks for an address. Asks every three seconds, hears
all the time, and ends after Ctrl-C.

  --json         prints a JSON object on each line
  --seconds N    ends after so many seconds
)",
        {{}, {{"--json", {}}, {"--seconds", "N"}}},
        watch,
    };
}

} // namespace cli
