// SPDX-License-Identifier: Apache-2.0
#include "tests/translations/TranslationFile.h"

#include <QFile>
#include <QXmlStreamReader>

#include <stdexcept>

std::vector<Message> readTranslationFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no file " + path.toStdString());

    std::vector<Message> messages;
    std::string context;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("name")) {
            context = reader.readElementText().toStdString();
        } else if (reader.name() == QLatin1String("message")) {
            messages.push_back({context, {}, {}, {}});
        } else if (reader.name() == QLatin1String("source")) {
            messages.back().source = reader.readElementText().toStdString();
        } else if (reader.name() == QLatin1String("translation")) {
            messages.back().state = reader.attributes().value(QLatin1String("type")).toString().toStdString();
            messages.back().translation = reader.readElementText().toStdString();
        }
    }
    if (reader.hasError())
        throw std::runtime_error(path.toStdString() + ": " + reader.errorString().toStdString());
    return messages;
}
