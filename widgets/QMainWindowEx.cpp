// SPDX-License-Identifier: Apache-2.0
#include "widgets/QMainWindowEx.h"

#include "widgets/Frame.h"
#include "widgets/QTitleBar.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>

namespace {

constexpr int TitleHeight = 32;

QWidget* CreateTitleSide(const char* name, const char* side)
{
    const QString strName = QLatin1String(name);
    return CreateFramePiece(
        strName,
        QStringLiteral("#%1{border-image: url(:/Dorn/Resources/dialog/dialog_title_%2.png);}")
            .arg(strName, QLatin1String(side)),
        QSize(6, TitleHeight));
}

QWidget* CreatePlain(const char* name, const char* color, const QSize& size)
{
    const QString strName = QLatin1String(name);
    return CreateFramePiece(
        strName, QStringLiteral("#%1{background-color: %2;}").arg(strName, QLatin1String(color)), size);
}

constexpr const char* Black = "rgb(0, 0, 0)";
constexpr const char* White = "rgb(255, 255, 255)";

} // namespace

QMainWindowEx::QMainWindowEx(QWidget* pParent, bool bShowMinButton)
    : m_pOwner(pParent),
      m_bShowMinButton(bShowMinButton)
{
    setObjectName(QStringLiteral("QMainWindowEx"));
    setStyleSheet(QStringLiteral("#QMainWindowEx{\t\t\t\t\t background-color: rgb(255, 255, 255);}"));
    setWindowFlags(Qt::FramelessWindowHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowMaximizeButtonHint);
    CreateCtrl();
    CreateLayout();
    // Made last, so that it lies above the content.
    setSizeGripEnabled(true);
}

void QMainWindowEx::CreateCtrl()
{
    m_pTitleBar = new QTitleBar(this, m_bShowMinButton);
    connect(m_pTitleBar, &QTitleBar::SigTitleButtonClicked, this, &QMainWindowEx::OnTitleButtonClicked);
    m_pTitleBar->setFixedHeight(TitleHeight);

    m_pIcon = new QLabel(this);
    m_pIcon->setFixedSize(18, 18);
    m_pIcon->setPixmap(QPixmap(QStringLiteral(":/Dorn/Resources/project2.ico")));
    m_pIcon->hide();

    m_pTitleLeft = CreateTitleSide("maintitleleft", "left");
    m_pTitleRight = CreateTitleSide("maintitleright", "right");
    m_pContentLeft = CreatePlain("MainContentLeft", Black, QSize(1, 0));
    m_pContentMiddle = CreatePlain("MainContentMid", White, QSize());
    m_pContentMiddle->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_pContentRight = CreatePlain("MianContentRight", Black, QSize(1, 0));
    m_pContentRight->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_pBottomLine = CreatePlain("Mainbottommidnon", Black, QSize(0, 1));
    m_pBottomLine->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void QMainWindowEx::CreateLayout()
{
    setLayout(CreateFrameColumn({CreateFrameRow({m_pTitleLeft, m_pTitleBar, m_pTitleRight}),
                                 CreateFrameRow({m_pContentLeft, m_pContentMiddle, m_pContentRight}),
                                 CreateFrameRow({m_pBottomLine})}));
}

void QMainWindowEx::SetTitleText(QString& strText)
{
    m_pTitleBar->SetTitleText(strText);
    setWindowTitle(strText);
}

QMenuBar* QMainWindowEx::MenuBar() const
{
    return m_pTitleBar->MenuBar();
}

void QMainWindowEx::SetLayoutEx(QLayout* pLayout)
{
    if (pLayout)
        m_pContentMiddle->setLayout(pLayout);
}

void QMainWindowEx::OnTitleButtonClicked(int nType)
{
    if (nType == 0 || nType == 1)
        setSizeGripEnabled(nType == 1);
}

void QMainWindowEx::resizeEvent(QResizeEvent* pEvent)
{
    QDialog::resizeEvent(pEvent);
}

void QMainWindowEx::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() != Qt::Key_Escape)
        QDialog::keyPressEvent(pEvent);
}

void QMainWindowEx::showEvent(QShowEvent* pEvent)
{
    if (m_pOwner)
        KeepAboveOwner(*this, *m_pOwner);
    QDialog::showEvent(pEvent);
}
