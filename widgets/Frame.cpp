// SPDX-License-Identifier: Apache-2.0
#include "widgets/Frame.h"

#include "widgets/QImageButton.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QProcess>
#include <QWindow>

namespace {

template <typename Layout>
Layout* CreateBare()
{
    auto* const pLayout = new Layout;
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    return pLayout;
}

} // namespace

bool IsUbuntuSystem()
{
    constexpr int WaitMilliseconds = 30000;
    QProcess process;
    process.start(QStringLiteral("uname"), {QStringLiteral("-a")}, QIODevice::ReadWrite);
    process.waitForStarted(WaitMilliseconds);
    process.waitForFinished(WaitMilliseconds);
    return QString::fromLocal8Bit(process.readAllStandardOutput()).contains(QLatin1String("Ubuntu"));
}

QWidget* CreateFramePiece(const QString& strName, const QString& strSheet, const QSize& size)
{
    auto* const pPiece = new QWidget;
    pPiece->setObjectName(strName);
    pPiece->setStyleSheet(strSheet);
    if (size.width() > 0)
        pPiece->setFixedWidth(size.width());
    if (size.height() > 0)
        pPiece->setFixedHeight(size.height());
    return pPiece;
}

QImageButton* CreateFrameButton(const QString& strPicture)
{
    const QString strFile = QStringLiteral(":/Dorn/Resources/dialog/%1%2.png");
    auto* const pButton = new QImageButton(false);
    pButton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    pButton->setFixedSize(30, 30);
    pButton->SetBtnImage(strFile.arg(strPicture, QString()), strFile.arg(strPicture, QStringLiteral("_hov")),
                         strFile.arg(strPicture, QStringLiteral("_sel")),
                         strFile.arg(strPicture, QStringLiteral("_dis")));
    pButton->setFocusPolicy(Qt::NoFocus);
    return pButton;
}

void KeepAboveOwner(QWidget& window, const QWidget& owner)
{
    QWindow& native = *window.windowHandle();
    native.setFlags(Qt::Dialog | Qt::FramelessWindowHint);
    native.setTransientParent(owner.window()->windowHandle());
}

bool DragByCompositor(const QWidget& window)
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) &&
           window.windowHandle()->startSystemMove();
}

QHBoxLayout* CreateFrameRow(std::initializer_list<QWidget*> pieces)
{
    auto* const pRow = CreateBare<QHBoxLayout>();
    for (QWidget* const pPiece : pieces)
        pRow->addWidget(pPiece);
    return pRow;
}

QVBoxLayout* CreateFrameColumn(std::initializer_list<QBoxLayout*> rows)
{
    auto* const pColumn = CreateBare<QVBoxLayout>();
    for (QBoxLayout* const pRow : rows)
        pColumn->addLayout(pRow);
    return pColumn;
}
