// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

/// A program that the test writes, first in PATH as long as this lives.
class ScriptedProgram
{
public:
    explicit ScriptedProgram(const char* name) : m_name(name)
    {
        if (!m_directory.isValid())
            throw std::runtime_error("no temporary directory");
        qputenv("PATH", directory().toLocal8Bit() + ':' + m_path);
    }
    ScriptedProgram(const ScriptedProgram&) = delete;
    ScriptedProgram& operator=(const ScriptedProgram&) = delete;
    ~ScriptedProgram() { qputenv("PATH", m_path); }

    /// The program becomes this shell script; before, there is none.
    void set(const QByteArray& script)
    {
        QFile program(m_directory.filePath(m_name));
        if (!program.open(QIODevice::WriteOnly))
            throw std::runtime_error("no script can be written");
        program.write("#!/bin/sh\n" + script + '\n');
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// What the script left in a file of its directory, which it finds as $(dirname "$0"); empty without one.
    QByteArray file(const char* name) const
    {
        QFile file(m_directory.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString directory() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
    QString m_name;
    QByteArray m_path = qgetenv("PATH");
};
