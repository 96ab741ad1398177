// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMutex>
#include <QString>

#include <string>
#include <vector>

/// What comes on Qt's debug output as long as this lives, from any thread, instead of being printed. One at a
/// time.
class DebugLines
{
public:
    DebugLines() { m_before = qInstallMessageHandler(take); }
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;
    ~DebugLines()
    {
        qInstallMessageHandler(m_before);
        forget();
    }

    std::vector<std::string> lines() const
    {
        const QMutexLocker lock(&s_mutex);
        return s_lines;
    }

    void forget()
    {
        const QMutexLocker lock(&s_mutex);
        s_lines.clear();
    }

private:
    static void take(QtMsgType type, const QMessageLogContext&, const QString& text)
    {
        if (type != QtDebugMsg)
            return;
        const QMutexLocker lock(&s_mutex);
        s_lines.push_back(text.toStdString());
    }

    static inline QMutex s_mutex;
    static inline std::vector<std::string> s_lines;
    QtMessageHandler m_before;
};
