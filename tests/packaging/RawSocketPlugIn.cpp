// SPDX-License-Identifier: Apache-2.0
// What a user may have his own copy of Qt load into the window: tries to open a raw socket, says what came of
// it, and ends the program.
#include <QGenericPlugin>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

class RawSocketPlugIn : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "RawSocketPlugIn.json")

public:
    QObject* create(const QString& name, const QString& arguments) override;
};

QObject* RawSocketPlugIn::create(const QString&, const QString&)
{
    const bool hasOne = socket(AF_PACKET, SOCK_RAW, 0) >= 0 || socket(AF_INET, SOCK_RAW, IPPROTO_UDP) >= 0;
    std::printf("plug-in: %s\n", hasOne ? "a raw socket" : std::strerror(errno));
    std::fflush(stdout);
    _exit(0);
}

#include "RawSocketPlugIn.moc"
