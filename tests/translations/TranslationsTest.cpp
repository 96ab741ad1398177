// SPDX-License-Identifier: Apache-2.0
#include "tests/translations/TranslationFile.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTranslator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAreArray;

namespace {

std::vector<Message> translated()
{
    return readTranslationFile(QStringLiteral(TRANSLATION_FILE));
}

/// What the sources ask to have translated, each as "context | text".
std::vector<std::string> asked(const std::vector<Message>& messages)
{
    std::vector<std::string> result;
    for (const Message& message : messages)
        result.push_back(message.context + " | " + message.source);
    return result;
}

/// The text's tags, in order, with their attributes.
std::vector<std::string> tags(const std::string& text)
{
    std::vector<std::string> result;
    auto match = QRegularExpression(QStringLiteral("<[^>]*>")).globalMatch(QString::fromStdString(text));
    while (match.hasNext())
        result.push_back(match.next().captured().toStdString());
    return result;
}

bool endsWith(const std::string& text, const std::string& end)
{
    return QString::fromStdString(text).endsWith(QString::fromStdString(end));
}

} // namespace

TEST(Translations, AreOfExactlyTheTextsThatTheSourcesAskFor)
{
    const QTemporaryDir scratch;
    const QString found = scratch.filePath(QStringLiteral("found.ts"));
    QProcess lupdate;
    lupdate.setWorkingDirectory(QStringLiteral(SOURCE_FOLDER));
    QStringList arguments = {
        "-silent", "-locations", "none", "-I", ".", "-tr-function-alias", "QT_TRANSLATE_NOOP+=TRANSLATABLE"};
    arguments += QStringLiteral(SOURCE_FOLDERS).split(':');
    arguments += {"-ts", found};
    lupdate.start(QStringLiteral(LUPDATE), arguments);
    ASSERT_TRUE(lupdate.waitForFinished(100000));
    ASSERT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().constData();

    const std::vector<std::string> wanted = asked(readTranslationFile(found));
    ASSERT_THAT(wanted, Not(IsEmpty()));
    EXPECT_THAT(asked(translated()), UnorderedElementsAreArray(wanted));
}

TEST(Translations, AreComplete)
{
    for (const Message& message : translated()) {
        EXPECT_EQ(message.state, "") << message.source;
        EXPECT_THAT(message.translation, Not(IsEmpty())) << message.source;
    }
}

TEST(Translations, SayTheSameForTheSameTextEverywhere)
{
    std::map<std::string, std::string> first;
    for (const Message& message : translated())
        EXPECT_EQ(first.try_emplace(message.source, message.translation).first->second, message.translation)
            << message.source;
}

TEST(Translations, TellDifferentTextsOfAContextApart)
{
    std::map<std::string, std::string> sources;
    for (const Message& message : translated())
        EXPECT_EQ(sources.try_emplace(message.context + message.translation, message.source).first->second,
                  message.source);
}

TEST(Translations, KeepTheLayoutOfTheText)
{
    for (const Message& message : translated()) {
        EXPECT_EQ(tags(message.translation), tags(message.source));
        EXPECT_EQ(endsWith(message.translation, "："), endsWith(message.source, ":")) << message.source;
    }
}

TEST(Translations, AreInTheFileBesideTheProgram)
{
    QTranslator translator;
    ASSERT_TRUE(translator.load(QStringLiteral(PROGRAM_FOLDER "/Kelo_ip_configurator_en.qm")));
    for (const Message& message : translated())
        EXPECT_EQ(translator.translate(message.context.c_str(), message.source.c_str()).toStdString(),
                  message.translation);
}

TEST(Translations, OfQtsOwnTextsAreInTheFileBesideTheProgram)
{
    // Copied away from the other files of Qt, one of which it might stand for.
    const QTemporaryDir scratch;
    const QString alone = scratch.filePath(QStringLiteral("qt_zh_CN.qm"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(PROGRAM_FOLDER "/qt_zh_CN.qm"), alone));
    QTranslator translator;
    ASSERT_TRUE(translator.load(alone));
    EXPECT_EQ(translator.translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    EXPECT_EQ(translator.translate("QWidgetTextControl", "&Copy"), QStringLiteral("复制(&C)"));
}
