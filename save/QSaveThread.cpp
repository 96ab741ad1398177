// SPDX-License-Identifier: Apache-2.0
#include "save/QSaveThread.h"

#include "device/PingProcess.h"
#include "device/QDeviceManager.h"
#include "save/DottedText.h"
#include "save/Termination.h"
#include "sdk/RzCameraSdk.h"

#include <QDateTime>
#include <QDebug>
#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>

#include <algorithm>

namespace {

constexpr int PingMilliseconds = 100;
constexpr qint64 SettleMilliseconds = 1000;

/// Whether two devices differ in one text; a device that is none differs from nothing.
bool differ(const QDevice* pCur, const QDevice* pModified, QString QDevice::*pstrText)
{
    return pCur && pModified && pCur->*pstrText != pModified->*pstrText;
}

/// The type of that name, by this thread's own translation; a name that is none is no failure.
std::optional<IpConfigType> typeOf(const QString& strType)
{
    if (strType == QThread::tr("Static IP"))
        return IpConfigType::Static;
    if (strType == QThread::tr("DHCP"))
        return IpConfigType::Dhcp;
    if (strType == QThread::tr("LLA"))
        return IpConfigType::LinkLocal;
    return std::nullopt;
}

/// The camera needs this long before it is looked for anew. A spin, which may be terminated at any time. The
/// clock on the wall may be set back meanwhile; a save is not to last until it has caught up.
void SleepEx()
{
    const QDateTime begin = QDateTime::currentDateTimeUtc();
    QElapsedTimer timer;
    timer.start();
    while (begin.msecsTo(QDateTime::currentDateTimeUtc()) < SettleMilliseconds &&
           timer.elapsed() < SettleMilliseconds)
        TerminationPoint();
}

} // namespace

QSaveThread::QSaveThread()
    : m_Features([this](const QString& strText) {
          ShowMsg(SaveMessage::FeatureNotWritten, QThread::tr("Error"), strText);
      })
{
    connect(this, &QThread::finished, this, [this] {
        if (m_bStartAgain)
            start(m_nNextPriority);
    });
}

QSaveThread::~QSaveThread()
{
    quit();
    terminate();
    // Qt ends the whole process when a QThread is destroyed before its thread is gone.
    wait();
    delete m_pDeviceManager;
}

void QSaveThread::SetThreadInfo(QDeviceManager* pDeviceManager, const QDevice& curDevice,
                                const QDevice& modifiedDevice)
{
    if (!pDeviceManager)
        return;
    m_stNextInfo = {pDeviceManager, curDevice, modifiedDevice};
    if (!isRunning())
        TakeNextInfo();
}

void QSaveThread::start(Priority priority)
{
    m_bStartAgain = isRunning();
    if (m_bStartAgain) {
        m_nNextPriority = priority;
        return;
    }
    TakeNextInfo();
    QThread::start(priority);
}

void QSaveThread::TakeNextInfo()
{
    if (!m_stNextInfo)
        return;
    m_pDeviceManager = m_stNextInfo->pDeviceManager;
    m_CurDevice = m_stNextInfo->curDevice;
    m_ModifiedDevice = m_stNextInfo->modifiedDevice;
    m_stNextInfo.reset();
}

void QSaveThread::run()
{
    HoldTermination();
    m_LatestMessage = SaveMessage::None;
    // Runs while a terminated thread unwinds.
    auto giveUp = qScopeGuard([this] {
        ReleaseThread();
        m_bRunning = false;
    });
    Save();
    giveUp.dismiss();
}

void QSaveThread::Save()
{
    if (!CreateDevice())
        return ExitThread();
    if (m_bRunning)
        return End();
    m_bRunning = true;
    if (!SetIPAddr())
        return End();

    unsigned long nIp = 0;
    if (!QStringToDword(m_ModifiedDevice.m_strIpAddress, nIp)) {
        qDebug() << "QStringToDword false";
        return; // Without an end: the next save finds this one unfinished and clears up.
    }
    // The next handle is to find the camera where it is now. The record is read on other threads meanwhile.
    __atomic_store_n(&m_CurDevice.m_pDeviceInfo->stGigEInfo.nDeviceIp, static_cast<quint32>(nIp),
                     __ATOMIC_RELAXED);
    m_Camera.Destroy();
    if (!CreateDevice()) {
        qDebug() << "!CreateDevice";
        return End();
    }

    TerminationPoint();
    if (!LoadXMLFile()) {
        SleepEx();
        emit SigRefresh();
        End();
        qDebug() << "!LoadXMLFile";
        return;
    }

    TerminationPoint();
    const bool bTypeChanged = SetDeviceIPType();
    SetUserID();
    if (bTypeChanged) {
        ShowMsg(SaveMessage::Restarting, QThread::tr("Information"),
                QThread::tr("Modified. The device will reboot automatically."));
        TerminationPoint();
        RestartDevice();
    }
    ReleaseThread();
    SleepEx();
    emit SigRefresh();
    ExitThread();
}

void QSaveThread::End()
{
    ReleaseThread();
    ExitThread();
}

void QSaveThread::ShowMsg(SaveMessage about, const QString& strTitle, const QString& strText)
{
    m_LatestMessage = about;
    emit SigShowMsg(strTitle, strText);
}

void QSaveThread::ExitThread()
{
    m_bRunning = false;
    emit SigEndThread();
}

bool QSaveThread::CreateDevice()
{
    return m_Camera.Create(m_CurDevice.m_pDeviceInfo);
}

bool QSaveThread::LoadXMLFile()
{
    return m_Camera.Load();
}

void QSaveThread::ReleaseThread()
{
    m_Camera.Release();
}

bool QSaveThread::SetBooleanNodePropertyValue(const char* pchName, int nValue)
{
    return pchName && m_Camera.GetNodeMap() &&
           m_Features.WriteBoolean(*m_Camera.GetNodeMap(), pchName, nValue != 0);
}

bool QSaveThread::SetStaticIPEnabled(bool bEnabled)
{
    return SetBooleanNodePropertyValue("GevCurrentIPConfigurationPersistentIP", bEnabled);
}

bool QSaveThread::SetDHCPEnabled(bool bEnabled)
{
    return SetBooleanNodePropertyValue("GevCurrentIPConfigurationDHCP", bEnabled);
}

bool QSaveThread::SetSubMask()
{
    return m_Camera.GetNodeMap() && CheckSubMaskChanged() &&
           m_Features.WriteAddress(*m_Camera.GetNodeMap(), "GevPersistentSubnetMask", "Set SubMask",
                                   m_ModifiedDevice.m_strSubnetMask);
}

bool QSaveThread::SetGateway()
{
    return m_Camera.GetNodeMap() && CheckGatewayChanged() &&
           m_Features.WriteAddress(*m_Camera.GetNodeMap(), "GevPersistentDefaultGateway", "Set Gateway",
                                   m_ModifiedDevice.m_strDefaultGateway);
}

bool QSaveThread::SetUserID()
{
    return m_Camera.GetNodeMap() && CheckUserIdChanged() &&
           m_Features.WriteRegister(*m_Camera.GetNodeMap(), "DeviceUserID", "Set UserID",
                                    m_ModifiedDevice.m_strUserDefinedName.toLocal8Bit());
}

bool QSaveThread::RestartDevice()
{
    return m_Camera.GetNodeMap() &&
           m_Features.Execute(*m_Camera.GetNodeMap(), "DeviceReset", "Restart Device");
}

bool QSaveThread::CheckIPTypeChanged() const
{
    return differ(&m_CurDevice, &m_ModifiedDevice, &QDevice::m_strIpConfigType);
}

bool QSaveThread::CheckIpChanged() const
{
    return differ(&m_CurDevice, &m_ModifiedDevice, &QDevice::m_strIpAddress);
}

bool QSaveThread::CheckSubMaskChanged() const
{
    return differ(&m_CurDevice, &m_ModifiedDevice, &QDevice::m_strSubnetMask);
}

bool QSaveThread::CheckGatewayChanged() const
{
    return differ(&m_CurDevice, &m_ModifiedDevice, &QDevice::m_strDefaultGateway);
}

bool QSaveThread::CheckUserIdChanged() const
{
    return differ(&m_CurDevice, &m_ModifiedDevice, &QDevice::m_strUserDefinedName);
}

bool QSaveThread::QStringToDword(const QString& strText, unsigned long& nValue)
{
    return DottedToDword(strText, nValue);
}

bool QSaveThread::CheckIpUsed() const
{
    if (!m_pDeviceManager)
        return false;
    QVector<QDevice> devices;
    m_pDeviceManager->GetAllDevices(devices);
    return std::any_of(devices.cbegin(), devices.cend(), [this](const QDevice& device) {
        return device.m_strIpAddress == m_ModifiedDevice.m_strIpAddress;
    });
}

bool QSaveThread::PingIPAddr(const QString& strIPAddress)
{
    QStringList command = QProcess::splitCommand(QStringLiteral("ping -c 1 %1").arg(strIPAddress));
    const QString program = command.takeFirst();
    return PingAnswers(program, command, PingMilliseconds);
}

bool QSaveThread::SetIPAddr()
{
    const bool bIpChanged = CheckIpChanged();
    if (bIpChanged && (CheckIpUsed() || PingIPAddr(m_ModifiedDevice.m_strIpAddress))) {
        ShowMsg(SaveMessage::AddressInUse, QThread::tr("Information"),
                QThread::tr("The IP address has been used by other devices."));
        return false;
    }

    unsigned long nIp = 0;
    unsigned long nSubnetMask = 0;
    unsigned long nGateway = 0;
    if (!QStringToDword(m_ModifiedDevice.m_strIpAddress, nIp) ||
        !QStringToDword(m_ModifiedDevice.m_strSubnetMask, nSubnetMask) ||
        !QStringToDword(m_ModifiedDevice.m_strDefaultGateway, nGateway))
        return false;

    TerminationPoint();
    if (RZ_GIGE_ForceIpEx(m_Camera.GetHandle(), static_cast<quint32>(nIp), static_cast<quint32>(nSubnetMask),
                          static_cast<quint32>(nGateway)) != RZ_OK) {
        ShowMsg(SaveMessage::AddressNotForced, QThread::tr("Error"),
                bIpChanged
                    ? QThread::tr("Failed to modify the IP address.The camera may be in use at present.")
                    : QThread::tr("Failed to modify."));
        return false;
    }
    return true;
}

bool QSaveThread::SetDeviceIPType()
{
    if (!CheckIPTypeChanged()) {
        qDebug() << "CheckIPTypeChanged false";
        return false;
    }

    const std::optional<IpConfigType> type = typeOf(m_ModifiedDevice.m_strIpConfigType);
    bool bDone = true;
    if (type) {
        const bool bStatic = type == IpConfigType::Static;
        bDone = SetStaticIPEnabled(bStatic);
        if (!bStatic)
            bDone = SetDHCPEnabled(type == IpConfigType::Dhcp) && bDone;
    }
    if (!bDone)
        ShowMsg(SaveMessage::TypeNotChanged, QThread::tr("Information"),
                QThread::tr("Failed to change the IP configuration type."));
    return bDone;
}
