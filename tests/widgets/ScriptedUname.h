// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QTemporaryDir>

/// While it lives, what this process starts as `uname` is a script of the test's own.
class ScriptedUname
{
public:
    /// It prints this when it is called as `uname -a`, else nothing.
    explicit ScriptedUname(const QByteArray& output);
    ScriptedUname(const ScriptedUname&) = delete;
    ScriptedUname& operator=(const ScriptedUname&) = delete;
    ~ScriptedUname();

    static ScriptedUname ubuntu();
    static ScriptedUname other();

private:
    QTemporaryDir m_folder;
    QByteArray m_path; ///< To be put back.
};
