// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"

#include "cli/Cameras.h"
#include "cli/Failure.h"
#include "cli/IpSettings.h"
#include "cli/Session.h"
#include "device/HearingAdapter.h"

#include <ostream>

namespace cli {
namespace {

[[noreturn]] void refuse(const QString& address, const std::string& owner)
{
    throw Failure(ExitStatus::Failed,
                  address.toStdString() + " is in use: " + owner + "; nothing was sent to the camera");
}

OwnerQuestion questionFor(const QDevice& camera, const QVector<QDevice>& cameras, quint32 address)
{
    OwnerQuestion question{address, HearingAdapterIndex(camera), camera.m_strMacAddress, {}};
    for (const QDevice& other : cameras)
        if (other.m_strMacAddress != camera.m_strMacAddress)
            question.otherCameras.insert(other.m_strMacAddress);
    return question;
}

std::string describeOwner(const AddressOwner& owner, const QVector<QDevice>& cameras)
{
    const QDevice* const camera = cameraByMac(cameras, owner.macAddress);
    const std::string who = camera                       ? "the camera " + describe(*camera)
                            : owner.macAddress.isEmpty() ? "a device with this address"
                                                         : "the device " + owner.macAddress.toStdString();
    if (owner.answersPing)
        return who + " answers ping";
    if (!owner.lastHeard)
        return who + " answers ARP";
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*owner.lastHeard).count();
    return who + " was heard there " + std::to_string(seconds) +
           " seconds ago; if it has just been taken away, the address counts as free in a minute";
}

void noteWhatWasNotAsked(const std::string& address, const OwnerAnswer& answer, std::ostream& err)
{
    const std::string& ping = answer.pingFailure;
    const std::string& arp = answer.arpFailure;
    if (!ping.empty() && !arp.empty())
        err << "note: whether another device uses " << address << " could not be checked ("
            << (ping == arp ? ping : ping + "; " + arp) << ")\n";
    else if (!ping.empty())
        err << "note: whether another device uses " << address
            << " was asked by ARP alone, as ping does not work (" << ping << ")\n";
    else if (!arp.empty())
        err << "note: whether another device uses " << address
            << " was asked by ping alone, as ARP could not be watched (" << arp << ")\n";
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

    if (session.interactive)
        session.err << "Asking whether anybody has " << text.toStdString()
                    << ", which takes 6 seconds if nobody does and 15 if somebody had it lately ...\n"
                    << std::flush;
    const OwnerAnswer answer = session.findOwner(questionFor(camera, cameras, address));
    if (answer.owner)
        refuse(text, describeOwner(*answer.owner, cameras));
    noteWhatWasNotAsked(text.toStdString(), answer, session.err);
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
