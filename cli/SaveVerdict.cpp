// SPDX-License-Identifier: Apache-2.0
#include "cli/SaveVerdict.h"

#include "cli/Cameras.h"
#include "cli/Failure.h"
#include "cli/Save.h"
#include "cli/Session.h"
#include "cli/SetRequest.h"
#include "cli/StoredSettings.h"
#include "device/CameraAddress.h"

#include <QObject>
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
std::string likelyCause(const QDevice& sent, const SetRequest& request)
{
    if (!request.addressing)
        return "it did not keep the name, or it may lack a usable description of its features";
    if (sent.m_strIpConfigType == changed(sent, request).m_strIpConfigType)
        return "its IP configuration was the right one before, so it was not restarted";
    return "it may lack a usable description of its features";
}

/// Why the camera is not as asked, though it was not told to restart.
std::string cause(const QDevice& sent, const QDevice& after, const SetRequest& request,
                  const SaveOutcome& outcome)
{
    if (after.m_strStatus == QObject::tr("In Use"))
        return "another application controls it";
    if (after.m_strStatus == QObject::tr("Unreachable"))
        return "from another subnet than this computer's adapter it may not be able to answer, so give it an "
               "address of that subnet first";
    return outcome.failures.empty() && outcome.reason.empty() ? likelyCause(sent, request) : std::string();
}

/// What there is to do when another camera answers at the camera's address, of which the text speaks then.
std::string adviceOnOtherCamera(const std::string& text, const QDevice& camera)
{
    static const QRegularExpression mac(QStringLiteral("(?:[0-9A-F]{2}:){5}[0-9A-F]{2}"));
    const bool namesAnother =
        mac.match(QString::fromStdString(text).remove(camera.m_strMacAddress)).hasMatch();
    return namesAnother ? "give one of the two another address with the force command first" : "";
}

} // namespace

std::string differences(const QDevice& camera, const SetRequest& request)
{
    std::string text = addressingDifference(camera, request);
    append(text, nameDifference(camera, request));
    return text;
}

void requireDone(const QDevice& sent, const std::optional<QDevice>& after, const SetRequest& request,
                 const SaveOutcome& outcome, const QVector<QDevice>& cameras, const Session& session)
{
    const bool isStatic = request.addressing == SetRequest::Addressing::Static;
    std::string text;
    for (const std::string& failure : outcome.failures)
        append(text, failure);
    if (!after) {
        append(text, "it was not heard again");
        if (!session.hasRawSockets)
            append(text, "without CAP_NET_RAW a camera outside the subnet may not be heard");
    } else if (const std::string difference = differences(*after, request); !difference.empty()) {
        append(text, difference);
        if (!outcome.restarts)
            append(text, cause(sent, *after, request, outcome));
    } else if (isStatic && IsForcedAddressWaiting(*after)) {
        append(text, "it has the address but has not stored it");
    }
    if (text.empty())
        return;
    append(text, outcome.reason);
    append(text, adviceOnOtherCamera(text, sent));
    if (isStatic)
        append(text, describeStoredOrDoubt(after ? *after : sent));
    throw Failure(ExitStatus::Failed, describe(sent) + ": " + withModels(text, cameras));
}

} // namespace cli
