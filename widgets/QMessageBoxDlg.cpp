// SPDX-License-Identifier: Apache-2.0
#include "widgets/QMessageBoxDlg.h"

#include "widgets/QPushButtonEx.h"
#include "widgets/StyleRules.h"

#include <QBoxLayout>
#include <QLabel>
#include <QRegularExpression>

namespace {

constexpr QSize ButtonSize(82, 27);
constexpr int SmallestPixelSize = 8;
constexpr QChar ZeroWidthSpace(0x200b);
constexpr QChar Dots(0x2026);

/// The text with invisible places to break words that do not fit into a line.
QString Breakable(const QString& strText, const QFontMetrics& metrics, int nWidth)
{
    static const QRegularExpression blank(QStringLiteral("(?<=\\s)|(?=\\s)"));
    QString strBreakable;
    for (const QString& strWord : strText.split(blank)) {
        const bool bFits = metrics.horizontalAdvance(strWord) <= nWidth;
        strBreakable += bFits ? strWord : strWord.split(QString(), Qt::SkipEmptyParts).join(ZeroWidthSpace);
    }
    return strBreakable;
}

QPushButtonEx* CreateButton(const QString& strText)
{
    auto* const pButton = new QPushButtonEx;
    pButton->setText(strText);
    pButton->setFixedSize(ButtonSize);
    return pButton;
}

} // namespace

QMessageBoxDlg::QMessageBoxDlg(QWidget* pParent, const QString& strTitle, const QString& strText,
                               bool bShowCancel)
    : QDialogEx(0, pParent),
      m_strTitle(strTitle),
      m_strText(strText),
      m_bShowCancel(bShowCancel)
{
    CreateCtrl();
    CreateLayout();
    SetTitleText(m_strTitle);
    setFixedSize(400, 200);
    FitMessage();
}

void QMessageBoxDlg::CreateCtrl()
{
    m_pBtnOk = CreateButton(tr("OK"));
    m_pBtnOk->setDefault(true);
    connect(m_pBtnOk, &QPushButtonEx::clicked, this, &QMessageBoxDlg::OnOkBtnClicked);
    if (m_bShowCancel) {
        m_pBtnCancel = CreateButton(tr("Cancel"));
        connect(m_pBtnCancel, &QPushButtonEx::clicked, this, &QMessageBoxDlg::OnCancelBtnClicked);
    }

    m_pMessage = new QLabel;
    m_pMessage->setTextFormat(Qt::PlainText);
    // Not the desktop's colour: the text stands on the frame's own ground.
    QPalette palette;
    palette.setColor(m_pMessage->foregroundRole(), QColor(DarkTextColor));
    m_pMessage->setPalette(palette);
    m_pMessage->setText(m_strText);
    m_pMessage->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    m_pMessage->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_pMessage->setWordWrap(true);
}

void QMessageBoxDlg::CreateLayout()
{
    m_pButtonRow = new QHBoxLayout;
    m_pButtonRow->addStretch();
    m_pButtonRow->addWidget(m_pBtnOk);
    if (m_pBtnCancel)
        m_pButtonRow->addWidget(m_pBtnCancel);
    m_pButtonRow->addStretch();

    m_pMainLayout = new QVBoxLayout;
    m_pMainLayout->addWidget(m_pMessage);
    m_pMainLayout->addLayout(m_pButtonRow);
    SetLayoutEx(m_pMainLayout);
}

void QMessageBoxDlg::FitMessage()
{
    // The window less the frame, the margins and the buttons below.
    const QMargins margins = m_pMainLayout->contentsMargins();
    const QRect room(0, 0, width() - 2 - margins.left() - margins.right(),
                     height() - 31 - margins.top() - margins.bottom() - m_pMainLayout->spacing() -
                         ButtonSize.height());
    m_pMessage->setMaximumSize(room.size()); // Else it would push the buttons out.

    QString strShown = Breakable(m_strText, m_pMessage->fontMetrics(), room.width());
    QFont font = m_pMessage->font();
    const auto fits = [&] {
        return room.contains(
            QFontMetrics(font).boundingRect(room, Qt::AlignTop | Qt::TextWordWrap, strShown));
    };
    for (int nPixels = QFontInfo(font).pixelSize(); nPixels > SmallestPixelSize && !fits();)
        font.setPixelSize(--nPixels);
    while (!fits()) {
        strShown.chop(strShown.size() / 10 + 2); // With the dots of the round before.
        strShown += Dots;
    }
    m_pMessage->setFont(font);
    m_pMessage->setText(strShown);
}

void QMessageBoxDlg::OnOkBtnClicked()
{
    accept();
}

void QMessageBoxDlg::OnCancelBtnClicked()
{
    reject();
}
