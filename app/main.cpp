// SPDX-License-Identifier: Apache-2.0
#include "app/SingleInstance.h"
#include "app/StartUp.h"
#include "resources/Fonts.h"
#include "ui/MainWidget.h"
#include "ui/Placement.h"

#include <QApplication>
#include <QIcon>

#include <cstdio>

int main(int argc, char** argv)
{
    if (!runSingleInstance()) {
        std::puts("Process is already running");
        return 1;
    }

    const QApplication application(argc, argv);
    const QString strFont = QCoreApplication::applicationDirPath() + QStringLiteral("/segoeui.ttf");
    InstallFontSubstitutes();
    InstallApplicationFont(strFont);
    // Before the window exists: it takes its texts when it is made.
    ChooseLanguage(argc, argv);
    InitializeCodec();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/Dorn_Ip_Configrator/Resources/IPConfig.ico")));

    MainWidget window;
    MoveToDesktopCentre(window);
    window.show();
    return QApplication::exec();
}
