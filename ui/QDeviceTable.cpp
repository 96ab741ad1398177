// SPDX-License-Identifier: Apache-2.0
#include "ui/QDeviceTable.h"

#include "device/QDevice.h"
#include "ui/Spoken.h"

#include <QIconEngine>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>

#include <array>

namespace {

enum Column
{
    ModelName,
    DeviceUserId,
    SerialNumber,
    MacAddress,
    Status,
    IpConfiguration,
    IpAddress,
    SubnetMask,
    ColumnCount
};

constexpr std::array<int, ColumnCount> ColumnWidths = {110, 100, 100, 120, 120, 120, 100, 80};
constexpr int RowHeight = 37;

/// The icon of a status. It keeps its colours in a selected row, and on a screen that is scaled up it is
/// drawn from a picture of twice the size: Qt's icons from files do so only if the whole application is set
/// to.
class StatusPicture : public QIconEngine
{
public:
    static constexpr QSize Size{16, 16};

    explicit StatusPicture(const char* name) : m_plain(Load(name, "")), m_fine(Load(name, "@2x")) {}

    void paint(QPainter* pPainter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        pPainter->setRenderHint(QPainter::SmoothPixmapTransform);
        pPainter->drawPixmap(rect, pPainter->device()->devicePixelRatioF() > 1 ? m_fine : m_plain);
    }

    QPixmap pixmap(const QSize& /*size*/, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return m_plain;
    }

    QIconEngine* clone() const override { return new StatusPicture(*this); }

private:
    static QPixmap Load(const char* name, const char* ratio)
    {
        return QPixmap(
            QStringLiteral(":/Dorn/Resources/%1%2.png").arg(QLatin1String(name), QLatin1String(ratio)));
    }

    QPixmap m_plain;
    QPixmap m_fine;
};

} // namespace

QDeviceTable::QDeviceTable(QWidget* pParent)
    : QRowTable(ColumnCount, RowHeight, pParent),
      m_freeIcon(new StatusPicture("use")),
      m_inUseIcon(new StatusPicture("notuse")),
      m_unreachableIcon(new StatusPicture("notreach"))
{
    setIconSize(StatusPicture::Size); // Else Qt enlarges them on a screen of high resolution.
    for (int nColumn = 0; nColumn < ColumnCount; ++nColumn)
        setColumnWidth(nColumn, ColumnWidths[static_cast<std::size_t>(nColumn)]);
    RefreshTexts();
}

void QDeviceTable::RefreshTexts()
{
    setHorizontalHeaderLabels({tr("Model Name"), tr("Device User ID"), tr("Serial Number"), tr("MAC Address"),
                               tr("Status"), tr("IP Configuration"), tr("IP Address"), tr("Subnet Mask")});
    setAccessibleName(tr("Cameras"));
    TellEmptyText();
}

void QDeviceTable::SetRemarks(std::map<std::string, std::vector<base::Sentence>> remarks)
{
    m_remarks = std::move(remarks);
}

QString QDeviceTable::RemarkAt(int nRow) const
{
    const auto found = m_remarks.find(MacAddressAt(nRow).toStdString());
    return found == m_remarks.end() ? QString() : Spoken(found->second);
}

void QDeviceTable::ShowDevices(const QVector<QDevice>& devices, int nSelectedRow)
{
    const QPoint scrolledTo(horizontalScrollBar()->value(), verticalScrollBar()->value());
    {
        // Neither the removal of rows nor what Qt selects meanwhile is a choice of the user's.
        const QSignalBlocker blocker(this);
        clearContents();
        setRowCount(0);
    }
    if (devices.isEmpty())
        return;
    for (const QDevice& device : devices)
        AddRow(device);
    selectRow(nSelectedRow);
    horizontalScrollBar()->setValue(scrolledTo.x());
    verticalScrollBar()->setValue(scrolledTo.y());
}

void QDeviceTable::AddRow(const QDevice& device)
{
    const std::array<QString, ColumnCount> texts = {
        device.m_strModelName, device.m_strUserDefinedName, device.m_strSerialNumber, device.m_strMacAddress,
        device.m_strStatus,    device.m_strIpConfigType,    device.m_strIpAddress,    device.m_strSubnetMask};
    const int nRow = rowCount();
    insertRow(nRow);
    for (int nColumn = 0; nColumn < ColumnCount; ++nColumn) {
        auto* const pItem = new QTableWidgetItem(texts[static_cast<std::size_t>(nColumn)]);
        pItem->setFlags(pItem->flags() & ~Qt::ItemIsEditable);
        if (nColumn == Status)
            pItem->setIcon(StatusIcon(device));
        setItem(nRow, nColumn, pItem);
    }
}

QString QDeviceTable::MacAddressAt(int nRow) const
{
    const QTableWidgetItem* const pItem = item(nRow, MacAddress);
    return pItem ? pItem->text() : QString();
}

QIcon QDeviceTable::StatusIcon(const QDevice& device) const
{
    const std::optional<CameraStatus> status = device.Status();
    if (status == CameraStatus::Free)
        return m_freeIcon;
    return status == CameraStatus::Unreachable ? m_unreachableIcon : m_inUseIcon;
}
