// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"

#include "cli/Cameras.h"
#include "cli/Failure.h"
#include "cli/IpSettings.h"
#include "cli/Session.h"

#include <ostream>

namespace cli {
namespace {

[[noreturn]] void refuse(const QString& address, const std::string& owner)
{
    throw Failure(ExitStatus::Failed,
                  address.toStdString() + " is in use: " + owner + "; nothing was sent to the camera");
}

} // namespace

void requireUnusedAddress(const QDevice& camera, const QVector<QDevice>& cameras, quint32 address,
                          const Session& session)
{
    const QString text = dotted(address);
    if (camera.m_strIpAddress == text)
        return;
    for (const QDevice& other : cameras)
        if (other.m_strMacAddress != camera.m_strMacAddress && other.m_strIpAddress == text)
            refuse(text, "the camera " + describe(other) + " has it");
    for (const _NETWORK_INFO& adapter : camera.m_vecHostAdapter)
        if (adapter.nIpAddress == address)
            refuse(text, "an adapter of this computer has it");

    const PingResult result = session.ping(text.toStdString());
    if (result.answered)
        refuse(text, "a device with this address answers ping");
    if (!result.failure.empty())
        session.err << "note: whether another device uses " << text.toStdString() << " could not be checked ("
                    << result.failure << ")\n";
}

bool isOutsideAdapterSubnet(const QDevice& camera, quint32 address)
{
    quint32 mask = 0xFFFFFF00;
    for (const _NETWORK_INFO& adapter : camera.m_vecHostAdapter)
        if (adapter.nIpAddress == camera.m_nNetExport)
            mask = adapter.nSubnetMask;
    return ((camera.m_nNetExport ^ address) & mask) != 0;
}

void noteOutsideAdapterSubnet(const QDevice& camera, quint32 address, std::ostream& err)
{
    if (isOutsideAdapterSubnet(camera, address))
        err << "note: the new address is outside the subnet of the adapter that hears the camera ("
            << dotted(camera.m_nNetExport).toStdString() << "); the camera will be listed as Unreachable\n";
}

} // namespace cli
