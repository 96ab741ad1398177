// SPDX-License-Identifier: Apache-2.0
#include "ui/QDeviceTable.h"

#include "device/QDevice.h"
#include "ui/ShownText.h"
#include "ui/Spoken.h"
#include "widgets/FocusRing.h"
#include "widgets/StyleRules.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QIconEngine>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

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
constexpr const char* SelectedGround = "#d0e0f9";
constexpr int HeaderHeight = 34;
constexpr int RowHeight = 37;
constexpr int ScrollBarHeight = 10;
constexpr int FewestRows = 3;
constexpr int EmptyTextMargin = 40;

QString Sheet()
{
    return QStringLiteral(
               "QTableWidget{%1background-color:white;alternate-background-color:#f7f7f7;outline:none;"
               "selection-color:%2;selection-background-color:%3;}"
               "QTableWidget::item:selected{color:%2;background-color:%3;}"
               "QHeaderView{background-color:%4;}"
               "QHeaderView::section{%5background-color:%4;padding-left:2px;"
               "border-left:1px solid white;border-right:1px solid white;"
               "border-top:1px solid %4;border-bottom:1px solid %4;}")
               .arg(TextLook(TextColor), QLatin1String(HighlightColor), QLatin1String(SelectedGround),
                    QLatin1String(HeaderColor), TextLook("white")) +
           ScrollBarRules(Qt::Vertical) + ScrollBarRules(Qt::Horizontal) +
           QStringLiteral("QScrollBar::handle:vertical{min-height:24px;}"
                          "QScrollBar::handle:horizontal{min-width:24px;}"
                          "QScrollBar::add-line,QScrollBar::sub-line{width:0;height:0;}") +
           ToolTipSheet();
}

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

/// Shows each text in one line, as a whole in a tool tip if it was cut, where the remarks on the row are too,
/// and draws the ring of the focus round the selected row.
class RowDelegate : public QStyledItemDelegate
{
public:
    explicit RowDelegate(QDeviceTable* pTable) : QStyledItemDelegate(pTable), m_pTable(pTable) {}

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(pPainter, option, index);
        if (!(option.state & QStyle::State_Selected) || !option.widget || !option.widget->hasFocus())
            return;
        const QHeaderView& columns = *static_cast<const QTableView*>(option.widget)->horizontalHeader();
        pPainter->save();
        pPainter->setClipRect(option.rect);
        DrawFocusRing(*pPainter, QRect(columns.sectionViewportPosition(0), option.rect.y(), columns.length(),
                                       option.rect.height()));
        pPainter->restore();
    }

    bool helpEvent(QHelpEvent* pEvent, QAbstractItemView* pView, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (pEvent->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(pEvent, pView, option, index);
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QRect room = pView->style()
                               ->subElementRect(QStyle::SE_ItemViewItemText, &cell, pView)
                               .adjusted(TextMargin, 0, -TextMargin, 0);
        const bool bCut = QFontMetrics(cell.font).horizontalAdvance(cell.text) > room.width();
        QStringList texts;
        if (bCut)
            texts << index.data().toString();
        if (const QString strRemark = m_pTable->RemarkAt(index.row()); !strRemark.isEmpty())
            texts << strRemark;
        ShowToolTip(*pEvent, *pView->viewport(), texts.join(QStringLiteral("\n\n")));
        return true;
    }

    QString displayText(const QVariant& value, const QLocale& /*locale*/) const override
    {
        return InOneLine(value.toString());
    }

protected:
    void initStyleOption(QStyleOptionViewItem* pOption, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(pOption, index);
        // An address of full length is some pixels wider than its column.
        if (pOption->fontMetrics.horizontalAdvance(pOption->text) > pOption->rect.width() - 2 * TextMargin)
            pOption->font.setLetterSpacing(QFont::AbsoluteSpacing, -0.6);
    }

private:
    static constexpr int TextMargin = 3;
    const QDeviceTable* const m_pTable;
};

} // namespace

QDeviceTable::QDeviceTable(QWidget* pParent)
    : QTableWidget(0, ColumnCount, pParent),
      m_freeIcon(new StatusPicture("use")),
      m_inUseIcon(new StatusPicture("notuse")),
      m_unreachableIcon(new StatusPicture("notreach"))
{
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTabKeyNavigation(false); // Tab leaves the table.
    setWordWrap(false);
    setIconSize(StatusPicture::Size); // Else Qt enlarges them on a screen of high resolution.
    setItemDelegate(new RowDelegate(this));

    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setFixedHeight(HeaderHeight);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setStretchLastSection(true);
    for (int nColumn = 0; nColumn < ColumnCount; ++nColumn)
        setColumnWidth(nColumn, ColumnWidths[static_cast<std::size_t>(nColumn)]);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(
        RowHeight); // Else a large application font makes the rows higher.
    verticalHeader()->setDefaultSectionSize(RowHeight);

    setShowGrid(false);
    setAlternatingRowColors(true);
    setFrameShape(NoFrame);
    setMinimumHeight(HeaderHeight + FewestRows * RowHeight + ScrollBarHeight);
    setStyleSheet(Sheet());
    RefreshTexts();
}

void QDeviceTable::RefreshTexts()
{
    setHorizontalHeaderLabels({tr("Model Name"), tr("Device User ID"), tr("Serial Number"), tr("MAC Address"),
                               tr("Status"), tr("IP Configuration"), tr("IP Address"), tr("Subnet Mask")});
    setAccessibleName(tr("Cameras"));
    setAccessibleDescription(rowCount() == 0 ? Spoken(m_emptyText) : QString());
    viewport()->update();
}

void QDeviceTable::SetEmptyText(std::vector<base::Sentence> text)
{
    m_emptyText = std::move(text);
    RefreshTexts();
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

void QDeviceTable::paintEvent(QPaintEvent* pEvent)
{
    QTableWidget::paintEvent(pEvent);
    if (rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(QColor(TextColor));
    painter.drawText(
        viewport()->rect().adjusted(EmptyTextMargin, EmptyTextMargin, -EmptyTextMargin, -EmptyTextMargin),
        Qt::AlignCenter | Qt::TextWordWrap, Spoken(m_emptyText));
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
