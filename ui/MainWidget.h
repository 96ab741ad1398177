// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"
#include "widgets/QMainWindowEx.h"

#include <QBoxLayout>

#include <optional>

class QCaptionedEdit;
class QDetailPanel;
class QDeviceManager;
class QDeviceTable;
class QEditPanel;
class QPushButtonEx;
class QRefreshThread;
class QSaveThread;
class QSetIpAddrDlg;
class QTableWidgetItem;

/// The program's window: the cameras that were found, the selected one in detail, and the controls that
/// change its address and name. The first search begins with construction.
///
/// Used on the user-interface thread alone; the workers report by queued signals. Workers, dialog and device
/// manager are neither stopped nor destroyed with the window: a job that is under way may still need them, so
/// they live until the process ends.
class MainWidget : public QMainWindowEx
{
    Q_OBJECT

public:
    explicit MainWidget(QWidget* pParent = nullptr);

    // What is typed, see ui/MainAddressRules.h.
    static bool CheckIsNumber(const QString& strText);
    static bool CheckIpAble(const QString& strText);
    static bool CheckSubnetMask(const QString& strText);
    static bool CheckGatewayAble(const QString& strText);

    /// Suggests an address in the /24 of the adapter that heard the selected camera, its last octet left to
    /// the user.
    void ShowHostIp();

    /// Shows the manager's list of now and selects the camera last worked on.
    void UpdateListShow();
    void AddListRow(const QDevice* pDevice);
    void ShowNoDevices();
    void ShowDeviceInfo(const QDevice* pDevice);
    void SelectRadioCtrl(const QDevice* pDevice);
    void ShowDeviceUserId(const QDevice* pDevice);
    void ShowDetailedInfo(const QDevice* pDevice);

    /// Enables what the camera's status and the chosen kind of address allow; leaves everything for a status
    /// that it does not know.
    void SetEnableCtrls(const QDevice* pDevice);
    void EnabledIPAddr(bool bEnable);
    void EnabledSubMask(bool bEnable);
    void EnabledGateway(bool bEnable);
    void EnabledStaticIPCtrls(bool bEnable);
    void EnabledRadio(bool bEnable);
    void EnabledUserIDEdit(bool bEnable);
    void EnabledSaveBtn(bool bEnable);
    void EnabledEditIPBtn(bool bEnable);
    void EnabledRefreshBtn(bool bEnable);

    /// Sets every fixed text again, in the language of now.
    void RefreshWidgetInfo();

    /// Deletes the controls and the device manager; nothing reacts any more. Only while no worker runs.
    void Release();

public slots:
    void OnSelectStaticIp();
    void OnSelectDHCP();
    void OnSelectLLA();
    void OnSelectItemChanged();
    void OnItemClicked(QTableWidgetItem* pItem);
    void OnIpAddrChanged(const QString& strText);
    void OnSubnetMaskChanged(const QString& strText);
    void OnGatewayChanged(const QString& strText);
    void OnBtnRefresh();
    void OnEndRefreshThread();
    void OnBtnSave();
    void OnEndSaveThread();
    void OnForceIpBtn();
    void OnSetIpDlgBtnOk();
    /// Returns when the user has closed the message.
    void OnShowMsg(const QString& strTitle, const QString& strText);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    bool InitWidget();
    bool CreatCtrls();
    bool InitSlots();
    bool InitLayout();
    void InitTableWidget();
    static QBoxLayout* createLayout(Qt::Orientation orientation);

    /// The camera that the row shows, which becomes the operated one; an empty device without such a row.
    QDevice DeviceAt(int nRow);
    QDevice CurrentDevice();
    void ShowAddresses(const QString& strIp, const QString& strMask, const QString& strGateway);
    void ShowValidity(QCaptionedEdit& field, bool bValid);
    void StartRefresh();
    void StartSave(const QDevice& current, const QDevice& modified);

    QDeviceTable* m_pDeviceTable = nullptr;
    QEditPanel* m_pEditPanel = nullptr;
    QDetailPanel* m_pDetailPanel = nullptr;
    QPushButtonEx* m_pModifyIpBtn = nullptr;
    QPushButtonEx* m_pRefreshBtn = nullptr;
    QSaveThread* m_pSaveThread = nullptr;
    QRefreshThread* m_pRefreshThread = nullptr;
    QDeviceManager* m_pDeviceManager = nullptr;
    QSetIpAddrDlg* m_pSetIpAddrDlg = nullptr;
    std::optional<QDevice>
        m_deviceInDialog;     ///< As it was when the dialog was opened; empty while it is closed.
    const QDevice m_NoDevice; ///< To be copied: making one costs a walk over the host's adapters.
    bool m_bIpValid = false;
    bool m_bMaskValid = true;
    bool m_bGatewayValid = true;
    bool m_bIdle = true;          ///< Return in an address field saves.
    bool m_bSaving = false;       ///< The three buttons are out of use.
    int m_nRefreshes = 0;         ///< That were started and are not shown yet; so is Refresh.
    bool m_bRefreshAgain = false; ///< Asked for while a refresh was running.
};
