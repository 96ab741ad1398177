// SPDX-License-Identifier: Apache-2.0
#include "cli/commands/SaveVerdict.h"

#include "cli/cameras/ListenerHint.h"
#include "cli/commands/SetRequest.h"
#include "cli/session/Failure.h"
#include "device/CameraAddress.h"

#include <QRegularExpression>

#include <cctype>

namespace cli {
namespace {

/// Adds a sentence, or part of one, to a text that may end in either; an empty one is nothing.
void append(std::string& text, std::string more)
{
    if (text.empty() || more.empty()) {
        text += more;
    } else if (text.back() == '.') {
        more[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(more[0])));
        text += ' ' + more;
    } else {
        text += "; " + more;
    }
}

/// What may be behind a save that came to nothing and of which neither the worker nor the SDK has a word.
std::string likelyCause(const Camera& sent, const SetRequest& request)
{
    if (!request.type)
        return "it did not keep the name, or it may lack a usable description of its features";
    if (sent.type == request.type)
        return "its IP configuration was the right one before, so it was not restarted";
    return "it may lack a usable description of its features";
}

/// Why the camera is not as asked, though it was not told to restart.
std::string cause(const Change& change, const Camera& after, const SetRequest& request)
{
    if (after.status == CameraStatus::InUse)
        return "another application controls it";
    if (after.status == CameraStatus::Unreachable)
        return "from another subnet than this computer's adapter it may not be able to answer, so give it an "
               "address of that subnet first";
    const bool isKnown = !change.outcome.failures.empty() || !change.outcome.reason.empty();
    return isKnown ? std::string() : likelyCause(change.sent, request);
}

/// What there is to do when another camera answers at the camera's address, of which the text speaks then.
std::string adviceOnOtherCamera(const std::string& text, const Camera& camera)
{
    static const QRegularExpression mac(QStringLiteral("(?:[0-9A-F]{2}:){5}[0-9A-F]{2}"));
    const bool namesAnother =
        mac.match(QString::fromStdString(text).remove(camera.device.m_strMacAddress)).hasMatch();
    return namesAnother ? "give one of the two another address with the force command first" : "";
}

} // namespace

void requireDone(const Change& change, const SetRequest& request, const std::vector<Camera>& cameras)
{
    const std::optional<Camera>& after = change.seen.last;
    std::string text;
    for (const std::string& failure : change.outcome.failures)
        append(text, failure);
    if (!after) {
        append(text, "it was not heard again");
        append(text, listenerDoubt(GetListenerReport()));
    } else if (const std::string difference = differences(*after, request); !difference.empty()) {
        append(text, difference);
        if (!change.outcome.restarts)
            append(text, cause(change, *after, request));
    } else if (request.isStatic() && IsForcedAddressWaiting(after->device)) {
        append(text, "it has the address but has not stored it");
    }
    if (text.empty())
        return;
    append(text, change.outcome.reason);
    append(text, adviceOnOtherCamera(text, change.sent));
    if (request.isStatic())
        append(text, describeStoredOrDoubt(after ? *after : change.sent));
    throw Failure(ExitStatus::Failed, describe(change.sent) + ": " + withModels(text, cameras));
}

} // namespace cli
