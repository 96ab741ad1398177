// SPDX-License-Identifier: Apache-2.0
#include "ui/QRowTable.h"

#include "ui/ShownText.h"
#include "ui/Spoken.h"
#include "widgets/FocusRing.h"
#include "widgets/StyleRules.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

constexpr const char* SelectedGround = "#d0e0f9";
constexpr int HeaderHeight = 34;
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

/// Shows each text in one line, or as many as the table wraps it into, as a whole in a tool tip if it was
/// cut, where the remarks on the row are too, and draws the ring of the focus round the selected row.
class RowDelegate : public QStyledItemDelegate
{
public:
    explicit RowDelegate(QRowTable* pTable) : QStyledItemDelegate(pTable), m_pTable(pTable) {}

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
        const QFontMetrics metrics(cell.font);
        const bool bCut =
            m_pTable->wordWrap()
                ? metrics.boundingRect(room, Qt::TextWordWrap, cell.text).height() > room.height()
                : metrics.horizontalAdvance(cell.text) > room.width();
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
        if (!m_pTable->wordWrap() &&
            pOption->fontMetrics.horizontalAdvance(pOption->text) > pOption->rect.width() - 2 * TextMargin)
            pOption->font.setLetterSpacing(QFont::AbsoluteSpacing, -0.6);
    }

private:
    static constexpr int TextMargin = 3;
    const QRowTable* const m_pTable;
};

} // namespace

QRowTable::QRowTable(int nColumns, int nRowHeight, QWidget* pParent) : QTableWidget(0, nColumns, pParent)
{
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTabKeyNavigation(false); // Tab leaves the table.
    setWordWrap(false);
    setItemDelegate(new RowDelegate(this));

    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setFixedHeight(HeaderHeight);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(
        nRowHeight); // Else a large application font makes the rows higher.
    verticalHeader()->setDefaultSectionSize(nRowHeight);

    setShowGrid(false);
    setAlternatingRowColors(true);
    setFrameShape(NoFrame);
    setMinimumHeight(HeaderHeight + FewestRows * nRowHeight + ScrollBarHeight);
    setStyleSheet(Sheet());
}

void QRowTable::SetEmptyText(std::vector<base::Sentence> text)
{
    m_emptyText = std::move(text);
    TellEmptyText();
}

QString QRowTable::RemarkAt(int /*nRow*/) const
{
    return {};
}

void QRowTable::TellEmptyText()
{
    setAccessibleDescription(rowCount() == 0 ? Spoken(m_emptyText) : QString());
    viewport()->update();
}

void QRowTable::paintEvent(QPaintEvent* pEvent)
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
