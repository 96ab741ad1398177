// SPDX-License-Identifier: Apache-2.0
#include "app/StartUp.h"

#include "app/Language.h"

#include <QApplication>
#include <QDebug>
#include <QFontDatabase>

void InstallApplicationFont(const QString& strFile)
{
    const int id = QFontDatabase::addApplicationFont(strFile);
    if (id == -1) {
        qDebug() << "addApplicationFont failed" << Qt::endl;
        QFont font;
        font.setFamily(QStringLiteral("Segoe UI"));
        QApplication::setFont(font);
        return;
    }
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (!families.isEmpty()) {
        QFont font(families.first());
        font.setPointSize(13);
        QApplication::setFont(font);
    }
    qDebug() << "addApplicationFont success" << Qt::endl;
}

void ChooseLanguage(int argc, const char* const* argv)
{
    int language = 0;
    if (GetCurLanguageVersion(language))
        SetLanguageVersion(language);

    if (argc > 1) {
        const QString strArgument(argv[1]);
        if (strArgument == QLatin1String("CH"))
            SetLanguageVersion(1);
        else if (strArgument == QLatin1String("ENG"))
            SetLanguageVersion(0);
    }
}

void InitializeCodec()
{
    QCoreApplication::addLibraryPath(QStringLiteral("./plugins"));
}
