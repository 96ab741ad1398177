// SPDX-License-Identifier: Apache-2.0
#include "tests/widgets/ScriptedUname.h"

#include <QFile>

#include <stdexcept>

ScriptedUname::ScriptedUname(const QByteArray& output) : m_path(qgetenv("PATH"))
{
    QFile script(m_folder.filePath("uname"));
    if (!script.open(QIODevice::WriteOnly) ||
        script.write("#!/bin/sh\n[ \"$*\" = -a ] && echo '" + output + "'\n") < 0 ||
        !script.setPermissions(QFile::ReadOwner | QFile::ExeOwner))
        throw std::runtime_error("cannot write " + script.fileName().toStdString());
    qputenv("PATH", m_folder.path().toLocal8Bit() + ':' + m_path);
}

ScriptedUname::~ScriptedUname()
{
    qputenv("PATH", m_path);
}

ScriptedUname ScriptedUname::ubuntu()
{
    return ScriptedUname("Linux host 6.8.0-45-generic #45-Ubuntu SMP x86_64 GNU/Linux");
}

ScriptedUname ScriptedUname::other()
{
    return ScriptedUname("Linux host 6.1.0-25-amd64 #1 SMP Debian x86_64 GNU/Linux");
}
