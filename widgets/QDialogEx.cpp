// SPDX-License-Identifier: Apache-2.0
#include "widgets/QDialogEx.h"

#include "widgets/Frame.h"
#include "widgets/QImageButton.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

#include <array>

namespace {

/// Object name and style sheet of a piece.
struct Piece
{
    const char* name;
    const char* sheet;
};

/// Left, middle and right by bottom style. The sheets of the dark strip select the names of the light strip's
/// pieces, so that the dark strip shows no picture; this is intended.
constexpr std::array<std::array<Piece, 3>, 3> BottomStrips = {{
    {{
        {"bottomleftNon", "#bottomleftNon{background-color:rgb(195, 195, 195);}"},
        {"bottommidnon", "#bottommidnon{background-color:rgb(195, 195, 195);}"},
        {"bottomrightnon", "#bottomrightnon{background-color:rgb(195, 195, 195);}"},
    }},
    {{
        {"bottomleftdark",
         "#bottomleftlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom2_left.png);}"},
        {"bottommiddark",
         "#bottommidlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom2_middle.png);}"},
        {"bottomrightdark",
         "#bottomrightlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom2_right.png);}"},
    }},
    {{
        {"bottomleftlight",
         "#bottomleftlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom_left.png);}"},
        {"bottommidlight",
         "#bottommidlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom_middle.png);}"},
        {"bottomrightlight",
         "#bottomrightlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom_right.png);}"},
    }},
}};

constexpr int TitleHeight = 30;
constexpr int ThinBottom = 0;
constexpr int ActiveGrey = 195;
constexpr int InactiveGrey = 200;

QWidget* CreatePiece(const Piece& piece, const QSize& size)
{
    return CreateFramePiece(QLatin1String(piece.name), QLatin1String(piece.sheet), size);
}

QLabel* CreateTitleCorner(const QString& strPicture)
{
    auto* const pCorner = new QLabel;
    pCorner->setFixedSize(6, TitleHeight);
    pCorner->setPixmap(QPixmap(strPicture));
    return pCorner;
}

QString BorderSheet(const QString& strName, int nGrey)
{
    return QStringLiteral("#%1{background-color:rgb(%2, %2, %2);}").arg(strName).arg(nGrey);
}

} // namespace

QDialogEx::QDialogEx(int nBottomStyle, QWidget* pParent)
    : m_nBottomStyle(nBottomStyle),
      m_bUbuntu(IsUbuntuSystem())
{
    // A parent makes a plain widget of it; the flags make it a window again.
    setParent(pParent);
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    CreateCtrl();
    CreateLayout();
    connect(m_pBtnClose, &QImageButton::clicked, this, &QDialogEx::OnClickedClose);
    connect(m_pBtnClose, &QImageButton::SigButtonPressed, this, &QDialogEx::OnPressedClose);
    installEventFilter(this);
}

void QDialogEx::CreateCtrl()
{
    CreateTitle();
    const QString strLeft = QStringLiteral("ContentLeft");
    const QString strRight = QStringLiteral("ContentRight");
    m_pContentLeft = CreateFramePiece(strLeft, BorderSheet(strLeft, ActiveGrey), QSize(1, 0));
    m_pContentMiddle =
        CreateFramePiece(QStringLiteral("ContentMid"),
                         QStringLiteral("#ContentMid{background-color:rgb(244, 244, 244);}"), QSize());
    m_pContentRight = CreateFramePiece(strRight, BorderSheet(strRight, ActiveGrey), QSize(1, 0));
    CreateBottom();
}

void QDialogEx::CreateTitle()
{
    m_pTitleLeft = CreateTitleCorner(QStringLiteral(":/Dorn/Resources/dialog/dialog_title_left.png"));
    m_pTitleRight = CreateTitleCorner(QStringLiteral(":/Dorn/Resources/dialog/dialog_title_right.png"));

    m_pTitleMiddle = new QLabel;
    m_pTitleMiddle->setFixedHeight(TitleHeight);
    QPalette palette;
    palette.setBrush(backgroundRole(),
                     QPixmap(QStringLiteral(":/Dorn/Resources/dialog/dialog_title_middle.png")));
    m_pTitleMiddle->setPalette(palette);
    m_pTitleMiddle->setAutoFillBackground(true);

    m_pBtnClose = CreateFrameButton(QStringLiteral("title_close"));
    m_pBtnClose->setAccessibleName(tr("Close"));
    m_pTitle = new QLabel;
    m_pTitle->setTextFormat(Qt::PlainText);
    // The application's font has a size in points and may be higher than the strip, which has one in pixels.
    QFont font = m_pTitle->font();
    for (int nPixels = QFontInfo(font).pixelSize(); QFontMetrics(font).height() > TitleHeight;)
        font.setPixelSize(--nPixels);
    m_pTitle->setFont(font);
    // White, as in the other windows. The label has a palette of its own because it would lose one that it
    // inherits as soon as the strip gets another style sheet.
    palette = m_pTitle->palette();
    palette.setColor(m_pTitle->foregroundRole(), Qt::white);
    m_pTitle->setPalette(palette);
}

void QDialogEx::CreateBottom()
{
    if (m_nBottomStyle < 0 || m_nBottomStyle >= static_cast<int>(BottomStrips.size()))
        return;

    const auto& [left, middle, right] = BottomStrips.at(static_cast<size_t>(m_nBottomStyle));
    const QSize corner = m_nBottomStyle == ThinBottom ? QSize(1, 1) : QSize(6, 52);
    m_pBottomLeft = CreatePiece(left, corner);
    m_pBottomMiddle = CreatePiece(middle, QSize(0, corner.height()));
    m_pBottomRight = CreatePiece(right, corner);
}

void QDialogEx::CreateLayout()
{
    m_pTitleBarLayout = new QHBoxLayout(m_pTitleMiddle);
    m_pTitleBarLayout->setContentsMargins(0, 0, 0, 0);
    if (m_bUbuntu)
        m_pTitleBarLayout->addWidget(m_pBtnClose);
    m_pTitleBarLayout->addWidget(m_pTitle);
    m_pTitleBarLayout->addStretch();
    if (!m_bUbuntu)
        m_pTitleBarLayout->addWidget(m_pBtnClose);

    QHBoxLayout* const pBottomRow = m_pBottomMiddle
                                        ? CreateFrameRow({m_pBottomLeft, m_pBottomMiddle, m_pBottomRight})
                                        : CreateFrameRow({});
    setLayout(
        CreateFrameColumn({CreateFrameRow({m_pTitleLeft, m_pTitleMiddle, m_pTitleRight}),
                           CreateFrameRow({m_pContentLeft, m_pContentMiddle, m_pContentRight}), pBottomRow}));
}

void QDialogEx::SetTitleText(QString& strText)
{
    strText.prepend(QLatin1Char(' '));
    m_pTitle->setText(strText);
    setWindowTitle(strText);
}

void QDialogEx::SetLayoutEx(QLayout* pLayout)
{
    if (pLayout)
        m_pContentMiddle->setLayout(pLayout);
}

QRect QDialogEx::geometryEx() const
{
    m_pContentMiddle->setFixedSize(width() - 6, height() - 32);
    return m_pContentMiddle->geometry();
}

WId QDialogEx::winIdEx() const
{
    return m_pContentMiddle->winId();
}

void QDialogEx::SetMoveable(bool bMoveable)
{
    m_bMove = bMoveable;
}

QHBoxLayout* QDialogEx::GetBtnLayout() const
{
    return m_pTitleBarLayout;
}

QImageButton* QDialogEx::GetCloseBtn() const
{
    return m_pBtnClose;
}

QWidget* QDialogEx::GetBottomWidget() const
{
    return m_pBottomMiddle;
}

int QDialogEx::exec(bool bApplicationModal)
{
    setWindowModality(bApplicationModal ? Qt::ApplicationModal : Qt::WindowModal);
    return QDialog::exec();
}

void QDialogEx::SetActivateDialg()
{
    Restyle(QStringLiteral("1"), ActiveGrey);
}

void QDialogEx::SetDeactivateDilog()
{
    Restyle(QString(), InactiveGrey);
}

void QDialogEx::SetChangeTitleColor(bool bChange)
{
    m_bChangeTitleColor = bChange;
}

// The title's pieces have no names, so that their sheets select nothing: only the border is seen to change.
void QDialogEx::Restyle(const QString& strTitleSuffix, int nBorderGrey)
{
    if (!m_bChangeTitleColor)
        return;

    const auto titleSheet = [&](const char* name, const char* picture) {
        return QStringLiteral(
                   "#%1{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_%2%3.png);}")
            .arg(QLatin1String(name), QLatin1String(picture), strTitleSuffix);
    };
    m_pTitleLeft->setStyleSheet(titleSheet("titleleft", "left"));
    m_pTitleMiddle->setStyleSheet(titleSheet("titlemid", "middle"));
    m_pTitleRight->setStyleSheet(titleSheet("titleright", "right"));
    for (QWidget* const pBorder : {m_pContentLeft, m_pContentRight})
        pBorder->setStyleSheet(BorderSheet(pBorder->objectName(), nBorderGrey));
}

bool QDialogEx::IsUbuntuSystem()
{
    return ::IsUbuntuSystem();
}

bool QDialogEx::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pWatched == this && pEvent->type() == QEvent::WindowActivate)
        SetActivateDialg();
    else if (pWatched == this && pEvent->type() == QEvent::WindowDeactivate)
        SetDeactivateDilog();
    return false;
}

void QDialogEx::OnClickedClose()
{
    close();
}

void QDialogEx::OnPressedClose(int /*iButtonIndex*/)
{
    m_bMove = false;
}

void QDialogEx::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() != Qt::Key_Escape)
        QDialog::keyPressEvent(pEvent);
}

void QDialogEx::changeEvent(QEvent* pEvent)
{
    QDialog::changeEvent(pEvent);
    if (pEvent->type() == QEvent::LanguageChange)
        m_pBtnClose->setAccessibleName(tr("Close"));
}

void QDialogEx::mousePressEvent(QMouseEvent* pEvent)
{
    m_pressPosition = pEvent->localPos().toPoint();
    m_bMove = m_pTitleMiddle->rect().contains(m_pressPosition);
}

void QDialogEx::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (isMaximized())
        return;

    if (m_pBtnClose->rect().contains(m_pressPosition))
        m_bMove = false;
    const QPoint position = pEvent->globalPos() - m_pressPosition;
    emit SigMoveDialog(position);
    if (!m_bMove)
        return;
    if (DragByCompositor(*this))
        m_bMove = false; // The compositor does not tell when the button is released.
    else
        move(position);
}

void QDialogEx::mouseReleaseEvent(QMouseEvent* /*pEvent*/)
{
    m_bMove = false;
}

void QDialogEx::showEvent(QShowEvent* pEvent)
{
    if (parentWidget())
        KeepAboveOwner(*this, *parentWidget());
    QDialog::showEvent(pEvent);
}
