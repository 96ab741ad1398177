// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"
#include "ui/QCaptionedEdit.h"
#include "widgets/QMainWindowEx.h"

#include <QVector>

#include <memory>

class QLabel;
class QNoteLabel;
class QPingThread;
class QPushButtonEx;
class QPushButtonExColor;
class QVBoxLayout;

/// Asks for a new address of a camera, typically one that the host cannot reach where it is.
///
/// For each use: SetCurDevice(), exec(), and on SigSetIpDlgOk() GetModifiedDevice(). A changed address is
/// pinged before it is accepted; what comes of a ping after the dialog was closed is not looked at. Used on
/// the user-interface thread alone.
class QSetIpAddrDlg : public QMainWindowEx
{
    Q_OBJECT

public:
    explicit QSetIpAddrDlg(QWidget* pParent);

    void SetCurDevice(const QDevice& device);
    /// Puts the three texts into the device; nothing else of it changes.
    void GetModifiedDevice(QDevice& device) const;

    /// Shows which addresses fit the adapter that heard the camera.
    void ShowValidArea(const QVector<_NETWORK_INFO>& vecAdapter, const QDevice& device);
    /// Without a static address only the address may be edited.
    void SetEnabledCtrls(const QDevice& device);
    void EnabledIpAddrCtrl(bool bEnable);
    void EnabledSubnetMaskCtrl(bool bEnable);
    void EnabledGatewayCtrl(bool bEnable);

    bool IsChanged() const;
    bool IsIPChanged() const;

    // What is typed, see ui/AddressRules.h.
    static bool CheckIpAble(const QString& strText);
    static bool CheckSubnetMask(const QString& strText);
    static bool CheckGateWay(const QString& strText);

    /// Returns when the user has closed the message.
    void ShowMsg(const QString& strTitle, const QString& strText);

    /// Sets every fixed text again, in the language of now. The range stays as it is until the next use.
    void RefreshWidgetInfo();

    /// Deletes what is in the dialog; nothing reacts any more.
    void Release();

signals:
    /// The user wants these values and the address, if it changed, is free.
    void SigSetIpDlgOk();

public slots:
    void OnIpAddrChanged(const QString& strText);
    void OnSubnetMaskChanged(const QString& strText);
    void OnGatewayChanged(const QString& strText);
    void OnOkBtn();
    void OnCancelBtn();
    void OnPingThreadEnd();

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;

private:
    struct Field
    {
        explicit Field(QWidget* pParent) : edit(pParent) {}

        QCaptionedEdit edit;
        QString strInitial;
        bool bValid = true;
    };

    bool InitWidget();
    bool CreatCtrls();
    bool InitSlots();
    bool InitLayout();
    bool CreatePingThread();
    /// The fields keep their texts until the ping has been answered or given up.
    void SetPinging(bool bPinging);
    void ShowValidity(Field& field, bool bValid);

    QNoteLabel* m_pNote = nullptr;
    QLabel* m_pValidRange = nullptr;
    std::unique_ptr<Field> m_pIpAddr;
    std::unique_ptr<Field> m_pSubnetMask;
    std::unique_ptr<Field> m_pGateway;
    QPushButtonExColor* m_pOkBtn = nullptr;
    QPushButtonEx* m_pCancelBtn = nullptr;
    QVBoxLayout* m_pMainColumn = nullptr;
    QPingThread* m_pPingThread = nullptr;
    bool m_bPinging = false; ///< The user waits for a ping's answer.
};
