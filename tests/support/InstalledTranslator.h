// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QTranslator>

#include <functional>

/// A language for as long as it lives: what the function says of a context and of a text in it. Needs an
/// application object.
class InstalledTranslator : public QTranslator
{
public:
    using Function = std::function<QString(const QString& context, const QString& text)>;

    explicit InstalledTranslator(Function translated) : m_translated(std::move(translated))
    {
        QCoreApplication::installTranslator(this);
    }
    InstalledTranslator(const InstalledTranslator&) = delete;
    InstalledTranslator& operator=(const InstalledTranslator&) = delete;
    ~InstalledTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return m_translated(QString::fromUtf8(context), QString::fromUtf8(text));
    }

private:
    const Function m_translated;
};
