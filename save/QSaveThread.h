// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"
#include "save/QCameraAccess.h"
#include "save/QFeatureWriter.h"

#include <QThread>

#include <optional>

class QDeviceManager;

/// What a message of a save is about.
enum class SaveMessage
{
    None,              ///< There was none.
    AddressInUse,      ///< Somebody else has the new address; nothing was changed.
    AddressNotForced,  ///< The camera did not take the address; nothing was changed.
    TypeNotChanged,    ///< Why, stands in GetErrorText().
    FeatureNotWritten, ///< Of the user name or the reset, and the message is GetErrorText() itself.
    Restarting         ///< The type was changed; the camera is about to be reset.
};

/// Applies one set of changes to one camera for each start(): forces address, mask and gateway onto it,
/// whether they changed or not, then writes the IP configuration type and the user name, if those changed,
/// through the camera's node map, and resets it when the type changed.
///
/// The object belongs to the thread that makes it, the owner's; run() and what it calls to a thread of its
/// own. Signals come from that one. A receiver of SigShowMsg() may be connected blocking: the save waits for
/// it.
///
/// Every save ends in one SigEndThread(), which is its last signal; SigRefresh() comes before it when the
/// camera may look different now. A terminated one emits nothing more, gives the camera back and leaves no
/// trace.
class QSaveThread : public QThread
{
    Q_OBJECT

public:
    QSaveThread();
    /// Terminates a running save and returns when its thread is gone, so not while a message of it waits for
    /// this thread. Deletes the device manager.
    ~QSaveThread() override;

    /// What to save: the camera as it was found and as it should be. Called by the owner before each start();
    /// a save that is still running keeps what it has. From the first call on, the manager is this object's.
    void SetThreadInfo(QDeviceManager* pDeviceManager, const QDevice& curDevice,
                       const QDevice& modifiedDevice);

    /// Begins a save. While one is running (the caller may have terminated it) this does not wait: the new
    /// one begins as soon as the owner's event loop hears of the old one's end.
    void start(Priority priority = InheritPriority);

    /// The save. A second one meanwhile ends at once, with SigEndThread().
    void run() override;

    /// Declares the save ended and says so: emits SigEndThread().
    void ExitThread();

    // The camera. Without a node map, all writers return false and do nothing else.

    bool CreateDevice();
    /// Opens the camera and makes its node map; failures are told on the debug output only.
    bool LoadXMLFile();
    /// Gives the camera back and deletes the node map; may be called at any time.
    void ReleaseThread();
    /// A failure only leaves a text in GetErrorText().
    bool SetBooleanNodePropertyValue(const char* pchName, int nValue);
    bool SetStaticIPEnabled(bool bEnabled);
    bool SetDHCPEnabled(bool bEnabled);
    // False also when the value is unchanged; a failure is told by SigShowMsg().
    bool SetSubMask();
    bool SetGateway();
    bool SetUserID();
    bool RestartDevice();

    /// What the save's latest SigShowMsg() was about. May be asked in the worker's thread, as by a receiver
    /// that is connected directly, or blocking, and after SigEndThread().
    SaveMessage LatestMessage() const { return m_LatestMessage; }

    /// The text of the last failed write of a feature; may be looked at when LatestMessage() may be
    /// asked.
    const char* GetErrorText() const { return m_Features.GetErrorText(); }

    // Whether the camera as it should be differs from the one that was found.

    bool CheckIpChanged() const;
    bool CheckIPTypeChanged() const;
    bool CheckSubMaskChanged() const;
    bool CheckGatewayChanged() const;
    bool CheckUserIdChanged() const;

    /// "a.b.c.d" as a number, which is 32 bits with their sign extended: from 128.0.0.0 on the upper half is
    /// all ones. A part that is no number counts 0, one above 255 spills over; false, and no value, without
    /// four parts.
    static bool QStringToDword(const QString& strText, unsigned long& nValue);

    /// Whether a camera of the manager's list has the new address.
    bool CheckIpUsed() const;
    /// One echo request, which has 100 ms for its answer.
    static bool PingIPAddr(const QString& strIPAddress);
    /// Switches the camera to the new type. False also when the type is unchanged.
    bool SetDeviceIPType();
    /// Forces the addresses, unless a new address belongs to somebody else.
    bool SetIPAddr();

signals:
    void SigShowMsg(QString strTitle, QString strText);
    void SigRefresh();
    void SigEndThread();

private:
    struct ThreadInfo
    {
        QDeviceManager* pDeviceManager;
        QDevice curDevice;
        QDevice modifiedDevice;
    };

    void Save();
    void End();
    void ShowMsg(SaveMessage about, const QString& strTitle, const QString& strText);
    void TakeNextInfo();

    bool m_bRunning = false; ///< The worker's.
    QDevice m_CurDevice;
    QDevice m_ModifiedDevice;
    QDeviceManager* m_pDeviceManager = nullptr;
    QCameraAccess m_Camera;
    QFeatureWriter m_Features; ///< Has the error text.
    SaveMessage m_LatestMessage = SaveMessage::None;

    // The owner's thread's alone: the next save, while one is running.
    std::optional<ThreadInfo> m_stNextInfo;
    bool m_bStartAgain = false;
    Priority m_nNextPriority = InheritPriority;
};
