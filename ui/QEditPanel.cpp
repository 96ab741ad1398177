// SPDX-License-Identifier: Apache-2.0
#include "ui/QEditPanel.h"

#include "widgets/QLineEditEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"
#include "widgets/QStaticLabel.h"
#include "widgets/StyleRules.h"

#include <QGridLayout>

#include <algorithm>

// In the order in which Tab goes through them.
QEditPanel::QEditPanel(QWidget* pParent)
    : QWidget(pParent),
      m_pStaticIpRadio(new QRadioButtonEx(tr("Static IP"), this)),
      m_IpAddr(this),
      m_SubnetMask(this),
      m_Gateway(this),
      m_pDhcpRadio(new QRadioButtonEx(tr("DHCP"), this)),
      m_pLlaRadio(new QRadioButtonEx(tr("LLA"), this)),
      m_UserId(this),
      m_pSaveBtn(new QPushButtonExColor(tr("Save"), this))
{
    m_pSaveBtn->setFixedSize(90, 30);
    for (auto* pRadio : {m_pStaticIpRadio, m_pDhcpRadio, m_pLlaRadio})
        pRadio->setStyleSheet(pRadio->styleSheet() + QStringLiteral("#QRadioButtonEx{padding-right:4px;}"
                                                                    "#QRadioButtonEx:disabled{color:%1;}")
                                                         .arg(QLatin1String(DisabledTextColor)));
    RefreshTexts();
    CreateLayout();
}

void QEditPanel::RefreshTexts()
{
    m_pStaticIpRadio->setText(tr("Static IP"));
    m_IpAddr.SetCaption(tr("IP Address:"));
    m_SubnetMask.SetCaption(tr("Subnet Mask:"));
    m_Gateway.SetCaption(tr("Default Gateway:"));
    m_pDhcpRadio->setText(tr("DHCP"));
    m_pLlaRadio->setText(tr("LLA"));
    m_UserId.SetCaption(tr("Device User ID:"));
    m_pSaveBtn->setText(tr("Save"));
}

IpConfigType QEditPanel::ChosenType() const
{
    if (m_pStaticIpRadio->isChecked())
        return IpConfigType::Static;
    return m_pDhcpRadio->isChecked() ? IpConfigType::Dhcp : IpConfigType::LinkLocal;
}

void QEditPanel::ChooseType(IpConfigType type)
{
    switch (type) {
    case IpConfigType::Static:
        return m_pStaticIpRadio->setChecked(true);
    case IpConfigType::Dhcp:
        return m_pDhcpRadio->setChecked(true);
    case IpConfigType::LinkLocal:
        return m_pLlaRadio->setChecked(true);
    }
}

void QEditPanel::ShowAddresses(const QString& strIp, const QString& strMask, const QString& strGateway)
{
    m_IpAddr.Edit()->setText(strIp);
    m_SubnetMask.Edit()->setText(strMask);
    m_Gateway.Edit()->setText(strGateway);
}

void QEditPanel::ReadInto(QDevice& device) const
{
    device.m_strIpConfigType = ToText(ChosenType());
    if (ChosenType() == IpConfigType::Static) {
        device.m_strIpAddress = m_IpAddr.Edit()->text();
        device.m_strSubnetMask = m_SubnetMask.Edit()->text();
        device.m_strDefaultGateway = m_Gateway.Edit()->text();
    }
    device.m_strUserDefinedName = CutUserName(m_UserId.Edit()->text());
}

QString QEditPanel::CutUserName(const QString& strName)
{
    constexpr int MaxBytes = 15;
    const QByteArray utf8 = strName.toUtf8();
    return utf8.size() > MaxBytes ? QString::fromLatin1(utf8.left(MaxBytes)) : strName;
}

bool QEditPanel::HasFocusInAddress() const
{
    return m_Gateway.Edit()->hasFocus() || m_IpAddr.Edit()->hasFocus() || m_SubnetMask.Edit()->hasFocus();
}

bool QEditPanel::IsBeingTypedIn() const
{
    const auto fields = {m_IpAddr.Edit(), m_SubnetMask.Edit(), m_Gateway.Edit(), m_UserId.Edit()};
    return std::any_of(fields.begin(), fields.end(),
                       [](const QLineEdit* pEdit) { return pEdit->hasFocus() || pEdit->isModified(); });
}

void QEditPanel::CreateLayout()
{
    constexpr int IndentColumn = 0; // What belongs to a radio button stands under its text.
    constexpr int CaptionColumn = 1;
    constexpr int EditColumn = 2;
    constexpr int RadioTextX = 22;
    constexpr int GroupGap = 8;

    auto* const pGrid = new QGridLayout(this);
    pGrid->setContentsMargins(0, 8, 0, 0);
    pGrid->setHorizontalSpacing(0);
    pGrid->setVerticalSpacing(8);
    pGrid->setColumnMinimumWidth(IndentColumn, RadioTextX);
    int nRow = 0;
    const auto addRadio = [&](QRadioButtonEx* pRadio) {
        pGrid->addWidget(pRadio, nRow++, IndentColumn, 1, 3,
                         Qt::AlignLeft); // Not stretched: the focus is shown round its text.
    };
    const auto addEdit = [&](const QCaptionedEdit& field, int nColumn) {
        pGrid->addWidget(field.Caption(), nRow, nColumn, 1, CaptionColumn - nColumn + 1);
        pGrid->addWidget(field.Edit(), nRow, EditColumn);
        field.Caption()->setContentsMargins(0, 0, 12, 0);
        ++nRow;
    };
    addRadio(m_pStaticIpRadio);
    addEdit(m_IpAddr, CaptionColumn);
    addEdit(m_SubnetMask, CaptionColumn);
    addEdit(m_Gateway, CaptionColumn);
    addRadio(m_pDhcpRadio);
    addRadio(m_pLlaRadio);
    pGrid->setRowMinimumHeight(nRow++, GroupGap);
    addEdit(m_UserId, IndentColumn);
    pGrid->addWidget(m_pSaveBtn, nRow++, EditColumn, Qt::AlignRight | Qt::AlignTop);
    pGrid->setRowStretch(nRow, 1);
    pGrid->setColumnStretch(EditColumn + 1, 1);
}
