// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// Puts every text in angle brackets, as long as it lives. Needs an application object.
class MarkingTranslator : public QTranslator
{
public:
    MarkingTranslator() { QCoreApplication::installTranslator(this); }
    MarkingTranslator(const MarkingTranslator&) = delete;
    MarkingTranslator& operator=(const MarkingTranslator&) = delete;
    ~MarkingTranslator() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char*, const char* text, const char*, int) const override
    {
        return QLatin1Char('<') + QString::fromUtf8(text) + QLatin1Char('>');
    }
    bool isEmpty() const override { return false; }
};
