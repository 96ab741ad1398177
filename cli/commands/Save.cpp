// SPDX-License-Identifier: Apache-2.0
#include "cli/commands/Save.h"

#include "cli/cameras/Cameras.h"
#include "cli/commands/SetRequest.h"
#include "cli/session/Failure.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "device/CameraAddress.h"
#include "save/QSaveThread.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <ostream>

namespace cli {
namespace {

/// The worker's latest message, as the user sees it. Called in the worker's thread, whose next failure
/// overwrites the error text.
std::string shown(const QString& text, const QSaveThread& worker)
{
    const std::string reason = worker.LatestMessage() == SaveMessage::TypeNotChanged
                                   ? displayText(QString(worker.GetErrorText()))
                                   : std::string();
    return displayText(text) + (reason.empty() ? "" : " ") + reason;
}

/// What an interruption left in the camera.
std::string leftBehind(const SetRequest& request)
{
    std::string stored;
    if (request.isStatic())
        if (const auto camera = lookForCamera(request.mac))
            stored = describeStored(*camera);
    return stored.empty() ? " and may have the old ones, the new ones or some of each" : "; " + stored;
}

} // namespace

SaveOutcome save(FoundCamera found, const SetRequest& request, Interruption& interruption,
                 const Session& session)
{
    SaveOutcome outcome;
    QEventLoop loop;
    QSaveThread worker;
    QDevice current = found.camera.device;
    if (!found.camera.type)
        current.m_strIpConfigType.clear();
    worker.SetThreadInfo(found.manager.release(), current, changed(current, request));

    // What it is about is known in the worker's thread alone; it is told in this one. There is no box that
    // somebody has to close, so nothing holds the worker up.
    QObject::connect(
        &worker, &QSaveThread::SigShowMsg, &worker,
        [&](const QString& title, const QString& text) {
            const auto tell = [&, about = worker.LatestMessage(), title, message = shown(text, worker)] {
                session.err << displayText(title) << ": " << message << '\n' << std::flush;
                if (about == SaveMessage::Restarting)
                    outcome.restarts = true;
                else
                    outcome.failures.push_back(message);
            };
            QMetaObject::invokeMethod(&loop, tell, Qt::QueuedConnection);
        },
        Qt::DirectConnection);
    // Comes after its messages, and unlike SigEndThread() from a terminated one too.
    QObject::connect(&worker, &QThread::finished, &loop, &QEventLoop::quit);

    bool isInterrupted = false;
    QSocketNotifier notifier(interruption.descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        notifier.setEnabled(false);
        isInterrupted = true;
        session.err << "Interrupted; giving the camera back ...\n" << std::flush;
        worker.terminate();
    });

    worker.start();
    loop.exec();
    worker.wait();
    if (isInterrupted) {
        interruption.arrives({}); // It is dealt with.
        throw Failure(ExitStatus::Interrupted,
                      describe(found.camera) +
                          ": interrupted while the settings were being written; the camera is given back" +
                          leftBehind(request));
    }
    outcome.reason = displayText(GetCameraError(current));
    return outcome;
}

} // namespace cli
