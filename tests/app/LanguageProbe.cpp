// SPDX-License-Identifier: Apache-2.0
// language-probe LANGUAGE...: sets one language after the other and prints after each what that gave, a text
// of the program's and one of Qt's.
#include "app/Language.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    for (const QString& strLanguage : QCoreApplication::arguments().mid(1)) {
        const int loaded = SetLanguageVersion(strLanguage.toInt());
        std::printf("%d %s %s\n", loaded,
                    qUtf8Printable(QCoreApplication::translate("MainWidget", "Modify IP")),
                    qUtf8Printable(QCoreApplication::translate("QPlatformTheme", "Cancel")));
    }
    return 0;
}
