// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// While it lives, every text is translated: into the context that it was asked for in, and itself.
class NamingTranslator : public QTranslator
{
public:
    NamingTranslator() { QCoreApplication::installTranslator(this); }
    NamingTranslator(const NamingTranslator&) = delete;
    NamingTranslator& operator=(const NamingTranslator&) = delete;
    ~NamingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return QStringLiteral("%1: %2").arg(context, text);
    }
};
