// SPDX-License-Identifier: Apache-2.0
#include "app/Language.h"

#include <QCoreApplication>
#include <QSettings>

QTranslator m_translator;
QTranslator m_translatorSystem;

bool GetCurLanguageVersion(int& language)
{
    try {
        const QString strFile = QCoreApplication::applicationDirPath() + QStringLiteral("/LangConfig.ini");
        const QSettings settings(strFile, QSettings::IniFormat);
        language = settings.value(QStringLiteral("Common/Language"), QVariant(0)).toInt();
        return true;
    } catch (...) {
        return false; // Start-up goes on without a change of language.
    }
}

int SetLanguageVersion(int language)
{
    const QString strFolder = QCoreApplication::applicationDirPath();
    // The file is named after the language of the sources, English, and holds their Chinese translation.
    if (!m_translator.load(strFolder + QStringLiteral("/Kelo_ip_configurator_en.qm")))
        return 0;
    if (!m_translatorSystem.load(strFolder + QStringLiteral("/qt_zh_CN.qm")))
        return 0;

    if (language == 1) {
        QCoreApplication::installTranslator(&m_translator);
        QCoreApplication::installTranslator(&m_translatorSystem);
    } else if (language == 0) {
        QCoreApplication::removeTranslator(&m_translator);
        QCoreApplication::removeTranslator(&m_translatorSystem);
    }
    return 1;
}
