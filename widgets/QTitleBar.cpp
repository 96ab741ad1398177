// SPDX-License-Identifier: Apache-2.0
#include "widgets/QTitleBar.h"

#include "widgets/Frame.h"
#include "widgets/QImageButton.h"
#include "widgets/StyleRules.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>

namespace {

constexpr int Height = 32;
constexpr int MaximiseCode = 0;
constexpr int RestoreCode = 1;
constexpr int MinimiseCode = 2;
constexpr int CloseCode = 3;

QRect AvailableGeometry()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

} // namespace

QTitleBar::QTitleBar(QWidget* /*pParent*/, bool bShowMinButton)
    : m_bUbuntu(IsUbuntuSystem()),
      m_bShowMinButton(bShowMinButton)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(62, 134, 227));
    setPalette(palette);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setWindowFlags(Qt::FramelessWindowHint);
    CreateCtrl();
    CreateLayout();
    ConnectSlot();
}

void QTitleBar::CreateCtrl()
{
    setFixedHeight(Height);
    m_pButtonContainer = new QWidget;
    m_pButtonContainer->setFixedHeight(Height);
    m_pButtonContainer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    CreateButtons();
    CreateMenuBar();

    m_pTitle = new QLabel;
    m_pTitle->setTextFormat(Qt::PlainText);
    m_pTitle->setFixedHeight(Height);
    m_pTitle->setStyleSheet(QStringLiteral("QLabel{%1}").arg(TextLook("white", 14, SegoeFamily, 33)));
    m_pFiller = new QLabel;
    m_pFiller->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_pBackground = new QLabel;
    m_pBackground->setObjectName(QStringLiteral("mainback"));
    m_pBackground->setFixedHeight(Height);
    m_pBackground->setStyleSheet(
        QStringLiteral("#mainback{border-image: url(:/Dorn/Resources/dialog/dialog_title_middle.png);}"));
}

void QTitleBar::CreateButtons()
{
    m_pBtnMax = CreateFrameButton(QStringLiteral("recovery"));
    m_pBtnMax->SetCheckable(false, QStringLiteral(":/Dorn/Resources/dialog/max.png"),
                            QStringLiteral(":/Dorn/Resources/dialog/max_hov.png"),
                            QStringLiteral(":/Dorn/Resources/dialog/max_sel.png"));
    m_pBtnMax->setParent(this);
    m_pBtnMax->hide();
    m_pBtnMin = CreateFrameButton(QStringLiteral("min"));
    m_pBtnClose = CreateFrameButton(QStringLiteral("title_close"));
    RefreshTexts();
}

void QTitleBar::RefreshTexts()
{
    m_pBtnMin->setAccessibleName(tr("Minimize"));
    m_pBtnClose->setAccessibleName(tr("Close"));
}

void QTitleBar::CreateMenuBar()
{
    m_pMenuBar = new QMenuBar(this);
    m_pMenuBar->setFixedHeight(22);
    m_pMenuBar->setObjectName(QStringLiteral("menubar"));
    m_pMenuBar->setStyleSheet(QStringLiteral("#menubar{background-color:#3e86e3;}#menubar::item{color:white; "
                                             "                                      "
                                             "background-color:#3e86e3}#menubar::item:selected{background: "
                                             "#4c9ce8;}#menubar::item:pressed{background: #2979c5;}"));
}

void QTitleBar::CreateLayout()
{
    auto* const pButtons = CreateFrameRow({});
    if (m_bUbuntu)
        pButtons->addWidget(m_pBtnClose);
    else
        pButtons->addStretch();
    if (m_bShowMinButton)
        pButtons->addWidget(m_pBtnMin);
    if (!m_bUbuntu)
        pButtons->addWidget(m_pBtnClose);

    // What comes later lies above: the buttons above the filler in their column, all above the background,
    // and that above the menu bar for as long as the owner has not placed it.
    auto* const pContainer = new QGridLayout(m_pButtonContainer);
    pContainer->setContentsMargins(0, 0, 0, 0);
    pContainer->addWidget(m_pFiller, 0, m_bUbuntu ? 2 : 1, 1, 2);
    pContainer->addWidget(m_pTitle, 0, m_bUbuntu ? 1 : 0);
    pContainer->addLayout(pButtons, 0, m_bUbuntu ? 0 : 2);

    auto* const pBar = new QGridLayout(this);
    pBar->setContentsMargins(0, 0, 0, 0);
    pBar->addWidget(m_pBackground, 0, 0);
    pBar->addWidget(m_pButtonContainer, 0, 0);
}

void QTitleBar::ConnectSlot()
{
    connect(m_pBtnMin, &QImageButton::clicked, this, &QTitleBar::OnClickedMinSize);
    connect(m_pBtnMax, &QImageButton::clicked, this, &QTitleBar::OnClickedMaxSize);
    connect(m_pBtnClose, &QImageButton::clicked, this, &QTitleBar::OnClickedClose);
    connect(m_pBtnMin, &QImageButton::SigButtonPressed, this, &QTitleBar::OnPressedMinSize);
    connect(m_pBtnMax, &QImageButton::SigButtonPressed, this, &QTitleBar::OnPressedMaxSize);
    connect(m_pBtnClose, &QImageButton::SigButtonPressed, this, &QTitleBar::OnPressedClose);
}

void QTitleBar::SetTitleText(QString& strText)
{
    m_pTitle->setText(strText);
    setWindowTitle(strText);
}

QMenuBar* QTitleBar::MenuBar() const
{
    return m_pMenuBar;
}

bool QTitleBar::IsMaximized() const
{
    return window()->geometry() == AvailableGeometry();
}

void QTitleBar::OnClickedMinSize()
{
    emit SigTitleButtonClicked(MinimiseCode);
}

void QTitleBar::OnClickedMaxSize()
{
    QWidget* const pOwner = window();
    if (IsMaximized()) {
        emit SigTitleButtonClicked(RestoreCode);
        pOwner->showNormal();
        pOwner->setGeometry(m_normalGeometry);
        m_pBtnMax->SetCheck(true);
    } else {
        emit SigTitleButtonClicked(MaximiseCode);
        m_normalGeometry = pOwner->geometry();
        pOwner->setGeometry(AvailableGeometry());
        m_pBtnMax->SetCheck(false);
    }
}

void QTitleBar::OnClickedClose()
{
    emit SigTitleButtonClicked(CloseCode);
    window()->close();
}

void QTitleBar::OnPressedMinSize(int /*iButtonIndex*/)
{
    m_bMove = false;
    window()->showMinimized();
}

void QTitleBar::OnPressedMaxSize(int /*iButtonIndex*/)
{
    m_bMove = false;
}

void QTitleBar::OnPressedClose(int /*iButtonIndex*/)
{
    m_bMove = false;
}

void QTitleBar::changeEvent(QEvent* pEvent)
{
    QWidget::changeEvent(pEvent);
    if (pEvent->type() == QEvent::LanguageChange)
        RefreshTexts();
}

void QTitleBar::mousePressEvent(QMouseEvent* pEvent)
{
    m_pressPosition = pEvent->localPos().toPoint();
    m_bMove = rect().contains(m_pressPosition);
}

void QTitleBar::mouseMoveEvent(QMouseEvent* pEvent)
{
    QWidget* const pOwner = window();
    if (!m_bMove || pOwner->isMaximized())
        return;
    if (DragByCompositor(*pOwner))
        m_bMove = false; // The compositor does not tell when the button is released.
    else
        pOwner->move(pEvent->globalPos() - m_pressPosition);
}

void QTitleBar::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    m_pressPosition = pEvent->localPos().toPoint();
}

void QTitleBar::showEvent(QShowEvent* pEvent)
{
    // The press on this button minimised the window, which therefore got neither the release nor the
    // pointer's leaving. Without them the button would be shown pressed.
    m_pBtnMin->setDown(false);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_pBtnMin, &leave);
    QWidget::showEvent(pEvent);
}
