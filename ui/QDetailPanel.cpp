// SPDX-License-Identifier: Apache-2.0
#include "ui/QDetailPanel.h"

#include "device/QDevice.h"
#include "ui/QElidedLabel.h"
#include "ui/ShownText.h"
#include "widgets/QStaticLabel.h"
#include "widgets/StyleRules.h"

#include <QGridLayout>
#include <QPainter>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

#include <algorithm>

namespace {

constexpr int SmallestWidth = 280; // The widest captions and an address.
constexpr int TitleMargin = 16;    // The title's distance from both sides of the frame, its padding included.

} // namespace

QDetailPanel::QDetailPanel(QWidget* pParent) : QGroupBox(pParent)
{
    // A long title would otherwise widen the panel at the cost of its neighbours.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setMinimumWidth(SmallestWidth);
    setStyleSheet(QStringLiteral("QGroupBox{%1border:1px solid #d5dbe2;border-radius:3px;margin-top:8px;}"
                                 "QGroupBox::title{subcontrol-origin:margin;left:12px;padding:0 4px;}")
                      .arg(TextLook(DarkTextColor)));

    m_pGrid = new QGridLayout(this);
    m_pGrid->setContentsMargins(16, 16, 16, 12);
    m_pGrid->setHorizontalSpacing(12);
    m_pGrid->setVerticalSpacing(4);
    m_pGrid->setColumnStretch(1, 1);
    int nRow = 0;
    for (auto& pCaption : m_captions) {
        pCaption = new QStaticLabel(this);
        auto* const pValue = new QElidedLabel(this);
        m_values[static_cast<std::size_t>(nRow)] = pValue;
        m_pGrid->addWidget(pCaption, nRow, 0);
        m_pGrid->addWidget(pValue, nRow, 1);
        m_pGrid->setRowStretch(nRow, 1);
        ++nRow;
    }
}

void QDetailPanel::RefreshTexts()
{
    const std::array<QString, RowCount> texts = {
        tr("Model Name:"),      tr("Device User ID:"), tr("Serial Number:"), tr("MAC Address:"),
        tr("IP Configurator:"), tr("IP Address:"),     tr("Subnet Mask:"),   tr("Default Gateway:")};
    int nWidth = 0;
    for (std::size_t nRow = 0; nRow < RowCount; ++nRow) {
        m_captions[nRow]->setText(texts[nRow]);
        m_captions[nRow]->ensurePolished();
        nWidth = std::max(nWidth, m_captions[nRow]->sizeHint().width());
    }
    // The captions keep their room also while nothing is shown.
    m_pGrid->setColumnMinimumWidth(0, nWidth);
}

void QDetailPanel::ShowDevice(const QDevice& device)
{
    // A group box takes "&" for the mark of a shortcut.
    setTitle(QStringLiteral("%1(%2)")
                 .arg(device.m_strUserDefinedName, device.m_strSerialNumber)
                 .replace(QLatin1Char('&'), QLatin1String("&&")));
    RefreshTexts();
    const std::array<QString, RowCount> values = {device.m_strModelName,    device.m_strUserDefinedName,
                                                  device.m_strSerialNumber, device.m_strMacAddress,
                                                  device.m_strIpConfigType, device.m_strIpAddress,
                                                  device.m_strSubnetMask,   device.m_strDefaultGateway};
    for (std::size_t nRow = 0; nRow < RowCount; ++nRow)
        m_values[nRow]->setText(values[nRow]);
}

void QDetailPanel::Clear()
{
    setTitle(QString());
    for (std::size_t nRow = 0; nRow < RowCount; ++nRow) {
        m_captions[nRow]->clear();
        m_values[nRow]->clear();
    }
}

void QDetailPanel::paintEvent(QPaintEvent* /*pEvent*/)
{
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    option.text = fontMetrics().elidedText(InOneLine(option.text), Qt::ElideRight, width() - 2 * TitleMargin,
                                           Qt::TextShowMnemonic);
    QStylePainter(this).drawComplexControl(QStyle::CC_GroupBox, option);
}
