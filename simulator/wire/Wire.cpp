// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/Wire.h"

#include "simulator/wire/Frame.h"

#include <cerrno>
#include <linux/if_packet.h>
#include <pcap/pcap.h>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <tins/sniffer.h>

namespace simulator {

namespace {

// Not "inbound and": libpcap evaluates the first frames' filter by itself, and that word drops them there.
constexpr char Filter[] = "arp or icmp or udp dst port 3956 or udp dst port 68";
constexpr unsigned FrameLimit = 2048;     // bytes; also the size of a slot in the capture's buffer
constexpr unsigned BufferSize = 16 << 20; // bytes: thousands of frames, for bursts

Tins::SnifferConfiguration captureSettings()
{
    Tins::SnifferConfiguration settings;
    settings.set_filter(Filter);
    settings.set_snap_len(FrameLimit);
    settings.set_buffer_size(BufferSize);
    settings.set_promisc_mode(true);
    settings.set_immediate_mode(true);
    return settings;
}

} // namespace

class Wire::Capture
{
public:
    explicit Capture(const std::string& interface) : sniffer(interface, captureSettings())
    {
        char error[PCAP_ERRBUF_SIZE] = "";
        if (pcap_setnonblock(handle(), 1, error) != 0)
            throw std::runtime_error(error);
        // The farm's own frames would take up the buffer that bursts need.
        const int on = 1;
        if (::setsockopt(pcap_fileno(handle()), SOL_PACKET, PACKET_IGNORE_OUTGOING, &on, sizeof on) != 0)
            throw std::system_error(errno, std::generic_category(), "PACKET_IGNORE_OUTGOING");
        // Looks once at what is there; the library's own way is to wait for a frame.
        sniffer.set_pcap_sniffing_method(&Capture::dispatch);
    }

    pcap_t* handle() { return sniffer.get_pcap_handle(); }

    static int dispatch(pcap_t* handle, int count, pcap_handler handler, u_char* user)
    {
        const int result = pcap_dispatch(handle, count, handler, user);
        if (result == PCAP_ERROR)
            throw std::runtime_error(pcap_geterr(handle));
        return result;
    }

    Tins::Sniffer sniffer;
};

Wire::Wire(const std::string& interface)
try : m_capture(std::make_unique<Capture>(interface)) {
    if (pcap_datalink(m_capture->handle()) != DLT_EN10MB)
        throw std::runtime_error("it is no Ethernet interface");
} catch (const std::exception& error) {
    throw std::runtime_error("cannot open the interface " + interface + ": " + error.what());
}

Wire::~Wire() = default;

int Wire::fd() const
{
    return pcap_get_selectable_fd(m_capture->handle());
}

std::optional<std::chrono::milliseconds> Wire::recheckTime() const
{
    const timeval* const time = pcap_get_required_select_timeout(m_capture->handle());
    if (!time)
        return std::nullopt;
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::seconds(time->tv_sec) +
                                                        std::chrono::microseconds(time->tv_usec));
}

std::optional<Frame> Wire::receive()
{
    for (;;) {
        const std::unique_ptr<Tins::PDU> pdu(m_capture->sniffer.next_packet().pdu());
        if (!pdu)
            return std::nullopt;
        if (auto frame = frameOf(*pdu))
            return frame;
    }
}

void Wire::send(const Frame& frame)
{
    const base::Bytes bytes = bytesOf(frame);
    pcap_inject(m_capture->handle(), bytes.data(), bytes.size());
}

} // namespace simulator
