// SPDX-License-Identifier: Apache-2.0
#include "cli/Save.h"

#include "cli/DisplayText.h"
#include "cli/Interruption.h"
#include "cli/Session.h"
#include "device/CameraAddress.h"
#include "device/QDeviceManager.h"
#include "save/QSaveThread.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <mutex>
#include <ostream>

namespace cli {

SaveOutcome save(std::unique_ptr<QDeviceManager> manager, const QDevice& current, const QDevice& wanted,
                 const Interruption& interruption, const Session& session)
{
    SaveOutcome outcome;
    QEventLoop loop;
    QSaveThread worker;
    worker.SetThreadInfo(manager.release(), current, wanted);

    const QString typeFailure = QThread::tr("Failed to change the IP configuration type.");
    std::mutex mutex;
    std::string typeError; // Guarded by the mutex.
    // In the worker's thread, whose next failure overwrites the text.
    QObject::connect(
        &worker, &QSaveThread::SigShowMsg, &worker,
        [&](const QString&, const QString& text) {
            const std::lock_guard lock(mutex);
            if (text == typeFailure)
                typeError = worker.GetErrorText();
        },
        Qt::DirectConnection);
    // Queued to this thread. There is no box that somebody has to close, so nothing holds the worker up.
    QObject::connect(&worker, &QSaveThread::SigShowMsg, &loop,
                     [&](const QString& title, const QString& text) {
                         std::string shown = displayText(text);
                         if (const std::lock_guard lock(mutex); text == typeFailure && !typeError.empty())
                             shown += ' ' + displayText(typeError);
                         session.err << displayText(title) << ": " << shown << '\n' << std::flush;
                         // The one message of a save that goes well; its title is also that of some that do
                         // not.
                         if (text == QThread::tr("Modified. The device will reboot automatically."))
                             outcome.restarts = true;
                         else
                             outcome.failures.push_back(std::move(shown));
                     });
    // Comes after its messages, and unlike SigEndThread() from a terminated one too.
    QObject::connect(&worker, &QThread::finished, &loop, &QEventLoop::quit);

    QSocketNotifier notifier(interruption.descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        notifier.setEnabled(false);
        outcome.interrupted = true;
        session.err << "Interrupted; giving the camera back ...\n" << std::flush;
        worker.terminate();
    });

    worker.start();
    loop.exec();
    worker.wait();
    outcome.reason = displayText(GetCameraError(current));
    return outcome;
}

} // namespace cli
