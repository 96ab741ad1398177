// SPDX-License-Identifier: Apache-2.0
#include "ui/QCameraWindow.h"

#include "device/QDeviceManager.h"
#include "ui/Editability.h"
#include "ui/QDetailPanel.h"
#include "ui/QDeviceTable.h"
#include "ui/QEditPanel.h"
#include "ui/QPictureButton.h"
#include "widgets/QLineEditEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"

#include <algorithm>

// The widgets are made in the order in which Tab goes through them.
QCameraWindow::QCameraWindow(QWidget* pParent)
    : QMainWindowEx(pParent, true),
      m_pDeviceManager(new QDeviceManager),
      m_pModifyIpBtn(new QPictureButton("forceip", QSize(120, 26), this)),
      m_pDeviceTable(new QDeviceTable(this)),
      m_pEditPanel(new QEditPanel(this)),
      m_pDetailPanel(new QDetailPanel(this))
{
    const auto& edit = *m_pEditPanel;
    connect(m_pDeviceTable, &QTableWidget::itemSelectionChanged, this, &QCameraWindow::OnSelectItemChanged);
    connect(m_pDeviceTable, &QTableWidget::itemClicked, this, &QCameraWindow::OnItemClicked);
    connect(edit.m_pStaticIpRadio, &QRadioButton::clicked, this, &QCameraWindow::OnSelectStaticIp);
    connect(edit.m_pDhcpRadio, &QRadioButton::clicked, this, &QCameraWindow::OnSelectDHCP);
    connect(edit.m_pLlaRadio, &QRadioButton::clicked, this, &QCameraWindow::OnSelectLLA);
    connect(edit.m_IpAddr.Edit(), &QLineEdit::textChanged, this, &QCameraWindow::OnIpAddrChanged);
    connect(edit.m_SubnetMask.Edit(), &QLineEdit::textChanged, this, &QCameraWindow::OnSubnetMaskChanged);
    connect(edit.m_Gateway.Edit(), &QLineEdit::textChanged, this, &QCameraWindow::OnGatewayChanged);
}

void QCameraWindow::OnIpAddrChanged(const QString& strText)
{
    if (!m_pEditPanel)
        return;
    m_bIpValid = CheckIpAble(strText);
    ShowValidity(m_pEditPanel->m_IpAddr, m_bIpValid);
}

void QCameraWindow::OnSubnetMaskChanged(const QString& strText)
{
    if (!m_pEditPanel)
        return;
    m_bMaskValid = CheckSubnetMask(strText);
    ShowValidity(m_pEditPanel->m_SubnetMask, m_bMaskValid);
}

void QCameraWindow::OnGatewayChanged(const QString& strText)
{
    if (!m_pEditPanel)
        return;
    m_bGatewayValid = CheckGatewayAble(strText);
    ShowValidity(m_pEditPanel->m_Gateway, m_bGatewayValid);
}

void QCameraWindow::ShowValidity(QCaptionedEdit& field, bool bValid)
{
    field.ShowValid(bValid);
    if (!bValid)
        EnabledSaveBtn(false);
    else if (m_bIpValid && m_bMaskValid && m_bGatewayValid)
        EnabledSaveBtn(true);
}

void QCameraWindow::ShowHostIp()
{
    if (!m_pEditPanel || !m_pDeviceTable || !m_pDeviceManager)
        return;
    const auto nAdapter = static_cast<quint32>(CurrentDevice().GetNetExport());
    const QString strNetwork =
        QString::asprintf("%u.%u.%u.", nAdapter >> 24, (nAdapter >> 16) & 0xFF, (nAdapter >> 8) & 0xFF);
    m_pEditPanel->ShowAddresses(strNetwork, QStringLiteral("255.255.255.0"),
                                strNetwork + QStringLiteral("254"));
}

void QCameraWindow::ShowAddressesFor(const QDevice& device)
{
    if (device.ConfigType() == IpConfigType::Static)
        m_pEditPanel->ShowAddresses(device.m_strIpAddress, device.m_strSubnetMask,
                                    device.m_strDefaultGateway);
    else
        ShowHostIp();
}

QDevice QCameraWindow::DeviceAt(int nRow)
{
    QDevice device = m_NoDevice;
    if (!m_pDeviceTable || !m_pDeviceManager)
        return device;
    // At the end of a refresh the manager's list is newer than the table for a moment: the camera that the
    // user sees in this row may have another index there.
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

QDevice QCameraWindow::CurrentDevice()
{
    return DeviceAt(m_pDeviceTable ? m_pDeviceTable->currentRow() : -1);
}

void QCameraWindow::UpdateListShow()
{
    if (!m_pDeviceManager || !m_pDeviceTable)
        return;
    QVector<QDevice> devices;
    m_pDeviceManager->GetAllDevices(devices);
    m_pDeviceTable->ShowDevices(devices, m_pDeviceManager->GetTheOperaDevice());
    if (devices.isEmpty())
        ShowNoDevices();
}

void QCameraWindow::AddListRow(const QDevice* pDevice)
{
    if (pDevice && m_pDeviceTable)
        m_pDeviceTable->AddRow(*pDevice);
}

void QCameraWindow::ShowNoDevices()
{
    if (!m_pEditPanel || !m_pDetailPanel)
        return;
    m_pEditPanel->ChooseType(IpConfigType::Static);
    m_pDetailPanel->Clear();
    m_pEditPanel->ShowAddresses(QString(), QString(), QString());
    m_pEditPanel->m_UserId.Edit()->clear();
    EnabledRadio(false);
    EnabledUserIDEdit(false);
    EnabledSaveBtn(false);
    EnabledEditIPBtn(false);
    EnabledStaticIPCtrls(false);
}

void QCameraWindow::ShowDeviceInfo(const QDevice* pDevice)
{
    SelectRadioCtrl(pDevice);
    ShowDeviceUserId(pDevice);
    ShowDetailedInfo(pDevice);
}

void QCameraWindow::SelectRadioCtrl(const QDevice* pDevice)
{
    if (!pDevice || !m_pEditPanel)
        return;
    m_pEditPanel->ChooseType(pDevice->ConfigType().value_or(IpConfigType::LinkLocal));
    ShowAddressesFor(*pDevice);
}

void QCameraWindow::ShowDeviceUserId(const QDevice* pDevice)
{
    if (pDevice && m_pEditPanel)
        m_pEditPanel->m_UserId.Edit()->setText(pDevice->m_strUserDefinedName);
}

void QCameraWindow::ShowDetailedInfo(const QDevice* pDevice)
{
    if (pDevice && m_pDetailPanel)
        m_pDetailPanel->ShowDevice(*pDevice);
}

void QCameraWindow::OnSelectItemChanged()
{
    const QDevice device = CurrentDevice();
    ShowDeviceInfo(&device);
    SetEnableCtrls(&device);
}

void QCameraWindow::OnItemClicked(QTableWidgetItem* pItem)
{
    if (!pItem)
        return;
    const QDevice device = DeviceAt(pItem->row());
    // The other way round than OnSelectItemChanged(): controls are enabled by the radio button that was
    // checked before the click.
    SetEnableCtrls(&device);
    ShowDeviceInfo(&device);
}

void QCameraWindow::OnSelectStaticIp()
{
    if (!m_pEditPanel)
        return;
    const QDevice device = CurrentDevice();
    ShowAddressesFor(device);
    SetEnableCtrls(&device);
    OnIpAddrChanged(m_pEditPanel->m_IpAddr.Edit()->text());
}

void QCameraWindow::OnSelectDHCP()
{
    const QDevice device = CurrentDevice();
    SetEnableCtrls(&device);
    EnabledStaticIPCtrls(false);
}

void QCameraWindow::OnSelectLLA()
{
    OnSelectDHCP();
}

void QCameraWindow::SetEnableCtrls(const QDevice* pDevice)
{
    if (!pDevice || !m_pEditPanel)
        return;
    const auto allowed = EditabilityOf(pDevice->Status(), m_pEditPanel->ChosenType());
    if (!allowed)
        return;
    // The order decides where the keyboard goes from a control that falls out of use: to the next one that is
    // in use at that moment.
    EnabledIPAddr(allowed->bAddress);
    EnabledSubMask(allowed->bMask);
    EnabledGateway(allowed->bGateway);
    EnabledSaveBtn(allowed->bSave);
    EnabledRadio(allowed->bRadios);
    EnabledUserIDEdit(allowed->bUserName);
    EnabledEditIPBtn(allowed->bModifyIp);
}

void QCameraWindow::EnabledIPAddr(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_IpAddr.SetEnabled(bEnable);
}

void QCameraWindow::EnabledSubMask(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_SubnetMask.SetEnabled(bEnable);
}

void QCameraWindow::EnabledGateway(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_Gateway.SetEnabled(bEnable);
}

void QCameraWindow::EnabledStaticIPCtrls(bool bEnable)
{
    EnabledIPAddr(bEnable);
    EnabledSubMask(bEnable);
    EnabledGateway(bEnable);
}

void QCameraWindow::EnabledRadio(bool bEnable)
{
    if (!m_pEditPanel)
        return;
    m_pEditPanel->m_pStaticIpRadio->setEnabled(bEnable);
    m_pEditPanel->m_pDhcpRadio->setEnabled(bEnable);
    m_pEditPanel->m_pLlaRadio->setEnabled(bEnable);
}

void QCameraWindow::EnabledUserIDEdit(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_UserId.SetEnabled(bEnable);
}

void QCameraWindow::EnabledSaveBtn(bool bEnable)
{
    if (m_pEditPanel)
        m_pEditPanel->m_pSaveBtn->setEnabled(bEnable);
}

void QCameraWindow::EnabledEditIPBtn(bool bEnable)
{
    if (m_pModifyIpBtn)
        m_pModifyIpBtn->setEnabled(bEnable);
}
