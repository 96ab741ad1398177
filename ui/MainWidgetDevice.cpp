// SPDX-License-Identifier: Apache-2.0
// What the window shows of the cameras, and what of it may be edited.
#include "ui/MainWidget.h"

#include "device/QDeviceManager.h"
#include "ui/MainAddressRules.h"
#include "ui/QDetailPanel.h"
#include "ui/QDeviceTable.h"
#include "ui/QEditPanel.h"
#include "widgets/QLineEditEx.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"

#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

bool MainWidget::CheckIsNumber(const QString& strText)
{
    return MainAddressRules::IsNumber(strText);
}

bool MainWidget::CheckIpAble(const QString& strText)
{
    return MainAddressRules::IsCameraAddress(strText);
}

bool MainWidget::CheckSubnetMask(const QString& strText)
{
    return MainAddressRules::IsSubnetMask(strText);
}

bool MainWidget::CheckGatewayAble(const QString& strText)
{
    return MainAddressRules::IsGateway(strText);
}

void MainWidget::OnIpAddrChanged(const QString& strText)
{
    if (!m_pEditPanel)
        return;
    m_bIpValid = CheckIpAble(strText);
    ShowValidity(m_pEditPanel->m_IpAddr, m_bIpValid);
}

void MainWidget::OnSubnetMaskChanged(const QString& strText)
{
    if (!m_pEditPanel)
        return;
    m_bMaskValid = CheckSubnetMask(strText);
    ShowValidity(m_pEditPanel->m_SubnetMask, m_bMaskValid);
}

void MainWidget::OnGatewayChanged(const QString& strText)
{
    if (!m_pEditPanel)
        return;
    m_bGatewayValid = CheckGatewayAble(strText);
    ShowValidity(m_pEditPanel->m_Gateway, m_bGatewayValid);
}

void MainWidget::ShowValidity(QCaptionedEdit& field, bool bValid)
{
    field.ShowValid(bValid);
    if (!bValid)
        EnabledSaveBtn(false);
    else if (m_bIpValid && m_bMaskValid && m_bGatewayValid)
        EnabledSaveBtn(true);
}

void MainWidget::ShowHostIp()
{
    if (!m_pEditPanel || !m_pDeviceTable || !m_pDeviceManager)
        return;
    const auto nAdapter = static_cast<quint32>(CurrentDevice().GetNetExport());
    const QString strNetwork =
        QString::asprintf("%u.%u.%u.", nAdapter >> 24, (nAdapter >> 16) & 0xFF, (nAdapter >> 8) & 0xFF);
    ShowAddresses(strNetwork, QStringLiteral("255.255.255.0"), strNetwork + QStringLiteral("254"));
}

void MainWidget::ShowAddresses(const QString& strIp, const QString& strMask, const QString& strGateway)
{
    m_pEditPanel->m_IpAddr.Edit()->setText(strIp);
    m_pEditPanel->m_SubnetMask.Edit()->setText(strMask);
    m_pEditPanel->m_Gateway.Edit()->setText(strGateway);
}

QDevice MainWidget::DeviceAt(int nRow)
{
    QDevice device = m_NoDevice;
    if (!m_pDeviceTable || !m_pDeviceManager)
        return device;
    // At the end of a refresh the manager's list is newer than the table for a moment, and the camera that
    // the user sees in this row may have another one there.
    QVector<QDevice> devices;
    m_pDeviceManager->GetAllDevices(devices);
    const QString strMac = m_pDeviceTable->MacAddressAt(nRow);
    const auto found = std::find_if(devices.begin(), devices.end(), [&strMac](const QDevice& listed) {
        return listed.m_strMacAddress == strMac;
    });
    if (found != devices.end())
        m_pDeviceManager->GetOneDevice(static_cast<int>(found - devices.begin()), device);
    return device;
}

QDevice MainWidget::CurrentDevice()
{
    return DeviceAt(m_pDeviceTable ? m_pDeviceTable->currentRow() : -1);
}

void MainWidget::UpdateListShow()
{
    if (!m_pDeviceManager || !m_pDeviceTable)
        return;
    const QPoint scrolledTo(m_pDeviceTable->horizontalScrollBar()->value(),
                            m_pDeviceTable->verticalScrollBar()->value());
    {
        // The rows that go are no choice of the user's; neither is what Qt selects while they go.
        const QSignalBlocker blocker(m_pDeviceTable);
        m_pDeviceTable->clearContents();
        m_pDeviceTable->setRowCount(0);
    }
    QVector<QDevice> devices;
    m_pDeviceManager->GetAllDevices(devices);
    if (devices.isEmpty()) {
        ShowNoDevices();
        return;
    }
    for (const QDevice& device : devices)
        AddListRow(&device);
    m_pDeviceTable->selectRow(m_pDeviceManager->GetTheOperaDevice());
    m_pDeviceTable->horizontalScrollBar()->setValue(scrolledTo.x());
    m_pDeviceTable->verticalScrollBar()->setValue(scrolledTo.y());
}

void MainWidget::AddListRow(const QDevice* pDevice)
{
    if (pDevice && m_pDeviceTable)
        m_pDeviceTable->AddRow(*pDevice);
}

void MainWidget::ShowNoDevices()
{
    if (!m_pEditPanel || !m_pDetailPanel)
        return;
    m_pEditPanel->m_pStaticIpRadio->setChecked(true);
    m_pDetailPanel->Clear();
    ShowAddresses(QString(), QString(), QString());
    m_pEditPanel->m_UserId.Edit()->clear();
    EnabledRadio(false);
    EnabledUserIDEdit(false);
    EnabledSaveBtn(false);
    EnabledEditIPBtn(false);
    EnabledStaticIPCtrls(false);
}

void MainWidget::ShowDeviceInfo(const QDevice* pDevice)
{
    SelectRadioCtrl(pDevice);
    ShowDeviceUserId(pDevice);
    ShowDetailedInfo(pDevice);
}

void MainWidget::SelectRadioCtrl(const QDevice* pDevice)
{
    if (!pDevice || !m_pEditPanel)
        return;
    if (pDevice->ConfigType() == IpConfigType::Static) {
        m_pEditPanel->m_pStaticIpRadio->setChecked(true);
        ShowAddresses(pDevice->m_strIpAddress, pDevice->m_strSubnetMask, pDevice->m_strDefaultGateway);
        return;
    }
    const bool bDhcp = pDevice->ConfigType() == IpConfigType::Dhcp;
    (bDhcp ? m_pEditPanel->m_pDhcpRadio : m_pEditPanel->m_pLlaRadio)->setChecked(true);
    ShowHostIp();
}

void MainWidget::ShowDeviceUserId(const QDevice* pDevice)
{
    if (pDevice && m_pEditPanel)
        m_pEditPanel->m_UserId.Edit()->setText(pDevice->m_strUserDefinedName);
}

void MainWidget::ShowDetailedInfo(const QDevice* pDevice)
{
    if (pDevice && m_pDetailPanel)
        m_pDetailPanel->ShowDevice(*pDevice);
}

void MainWidget::OnSelectItemChanged()
{
    const QDevice device = CurrentDevice();
    ShowDeviceInfo(&device);
    SetEnableCtrls(&device);
}

void MainWidget::OnItemClicked(QTableWidgetItem* pItem)
{
    if (!pItem)
        return;
    const QDevice device = DeviceAt(pItem->row());
    // Other than after a selection: what may be edited still follows the kind of address chosen before.
    SetEnableCtrls(&device);
    ShowDeviceInfo(&device);
}

void MainWidget::OnSelectStaticIp()
{
    if (!m_pEditPanel)
        return;
    const QDevice device = CurrentDevice();
    if (device.ConfigType() == IpConfigType::Static)
        ShowAddresses(device.m_strIpAddress, device.m_strSubnetMask, device.m_strDefaultGateway);
    else
        ShowHostIp();
    SetEnableCtrls(&device);
    OnIpAddrChanged(m_pEditPanel->m_IpAddr.Edit()->text());
}

void MainWidget::OnSelectDHCP()
{
    const QDevice device = CurrentDevice();
    SetEnableCtrls(&device);
    EnabledStaticIPCtrls(false);
}

void MainWidget::OnSelectLLA()
{
    OnSelectDHCP();
}

void MainWidget::SetEnableCtrls(const QDevice* pDevice)
{
    if (!pDevice || !m_pEditPanel)
        return;
    const bool bStaticIp = m_pEditPanel->m_pStaticIpRadio->isChecked();
    if (pDevice->Status() == CameraStatus::Free) {
        EnabledStaticIPCtrls(bStaticIp);
        EnabledRadio(true);
        EnabledUserIDEdit(true);
        EnabledSaveBtn(true);
        EnabledEditIPBtn(true);
    } else if (pDevice->Status() == CameraStatus::Unreachable) {
        EnabledIPAddr(bStaticIp);
        EnabledSubMask(false);
        EnabledGateway(false);
        EnabledSaveBtn(bStaticIp);
        EnabledRadio(false);
        EnabledUserIDEdit(false);
        EnabledEditIPBtn(true);
    } else if (pDevice->Status() == CameraStatus::InUse) {
        EnabledRadio(false);
        EnabledUserIDEdit(false);
        EnabledSaveBtn(false);
        EnabledStaticIPCtrls(false);
        EnabledEditIPBtn(false);
    }
}

void MainWidget::EnabledIPAddr(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_IpAddr.SetEnabled(bEnable);
}

void MainWidget::EnabledSubMask(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_SubnetMask.SetEnabled(bEnable);
}

void MainWidget::EnabledGateway(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_Gateway.SetEnabled(bEnable);
}

void MainWidget::EnabledStaticIPCtrls(bool bEnable)
{
    EnabledIPAddr(bEnable);
    EnabledSubMask(bEnable);
    EnabledGateway(bEnable);
}

void MainWidget::EnabledRadio(bool bEnable)
{
    if (!m_pEditPanel)
        return;
    m_pEditPanel->m_pStaticIpRadio->setEnabled(bEnable);
    m_pEditPanel->m_pDhcpRadio->setEnabled(bEnable);
    m_pEditPanel->m_pLlaRadio->setEnabled(bEnable);
}

void MainWidget::EnabledUserIDEdit(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_UserId.SetEnabled(bEnable);
}

void MainWidget::EnabledSaveBtn(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_pSaveBtn->setEnabled(bEnable && !m_bSaving);
}

void MainWidget::EnabledEditIPBtn(bool bEnable)
{
    if (m_pModifyIpBtn)
        m_pModifyIpBtn->setEnabled(bEnable && !m_bSaving);
}

void MainWidget::EnabledRefreshBtn(bool bEnable)
{
    if (m_pRefreshBtn)
        m_pRefreshBtn->setEnabled(bEnable && !m_bSaving && m_nRefreshes == 0 && !m_bRefreshAgain);
}
