// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"
#include "ui/AddressRules.h"
#include "widgets/QMainWindowEx.h"

class QCaptionedEdit;
class QDetailPanel;
class QDeviceManager;
class QDeviceTable;
class QEditPanel;
class QPictureButton;
class QTableWidgetItem;

/// A window that shows the cameras of a device manager: the list of them, the selected one in detail, and the
/// controls in which its address and name are edited, as far as the camera allows it. What the buttons do and
/// where everything stands is up to the window that derives from it.
///
/// Used on the user-interface thread alone.
class QCameraWindow : public QMainWindowEx
{
    Q_OBJECT

public:
    // What is typed, see ui/AddressRules.h.
    static bool CheckIsNumber(const QString& strText) { return MainAddressRules::IsNumber(strText); }
    static bool CheckIpAble(const QString& strText) { return MainAddressRules::IsCameraAddress(strText); }
    static bool CheckSubnetMask(const QString& strText) { return MainAddressRules::IsSubnetMask(strText); }
    static bool CheckGatewayAble(const QString& strText) { return MainAddressRules::IsGateway(strText); }

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
    virtual void EnabledSaveBtn(bool bEnable);
    virtual void EnabledEditIPBtn(bool bEnable);

public slots:
    void OnSelectStaticIp();
    void OnSelectDHCP();
    void OnSelectLLA();
    void OnSelectItemChanged();
    void OnItemClicked(QTableWidgetItem* pItem);
    void OnIpAddrChanged(const QString& strText);
    void OnSubnetMaskChanged(const QString& strText);
    void OnGatewayChanged(const QString& strText);

protected:
    explicit QCameraWindow(QWidget* pParent);

    /// An empty device when no camera is selected.
    QDevice CurrentDevice();

    // All of them are null once the deriving window has deleted them; nothing reacts then any more.
    QDeviceManager* m_pDeviceManager; ///< Not destroyed with the window: workers may still need it.
    QPictureButton* m_pModifyIpBtn;
    QDeviceTable* m_pDeviceTable;
    QEditPanel* m_pEditPanel;
    QDetailPanel* m_pDetailPanel;

private:
    /// The camera that the row shows, which becomes the operated one; an empty device without such a row.
    QDevice DeviceAt(int nRow);
    /// The camera's own addresses if it has a static one, else a suggestion.
    void ShowAddressesFor(const QDevice& device);
    void ShowValidity(QCaptionedEdit& field, bool bValid);

    const QDevice m_NoDevice; ///< To be copied: making one costs a walk over the host's adapters.
    bool m_bIpValid = false;
    bool m_bMaskValid = true;
    bool m_bGatewayValid = true;
};
