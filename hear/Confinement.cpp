// SPDX-License-Identifier: Apache-2.0
#include "hear/Confinement.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <linux/audit.h>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <net/ethernet.h>
#include <netinet/in.h>
#include <netpacket/packet.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#if defined(__x86_64__)
constexpr std::uint32_t Architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__) && defined(__AARCH64EL__)
constexpr std::uint32_t Architecture = AUDIT_ARCH_AARCH64;
#else
#error The system calls of this architecture have not been looked at.
#endif

// The steps of both filters. A test goes past so many of those behind it.
constexpr auto load = [](int what, unsigned at) -> sock_filter { return BPF_STMT(BPF_LD | what, at); };
constexpr auto give = [](unsigned verdict) -> sock_filter { return BPF_STMT(BPF_RET, verdict); };
constexpr auto test = [](int how, unsigned value, std::uint8_t ifSo, std::uint8_t ifNot) -> sock_filter {
    return BPF_JUMP(BPF_JMP | how, value, ifSo, ifNot);
};

const char* hear::hearOnly(int socket, int adapter, int port)
{
    const bool arrivals = port == 0;
    constexpr unsigned Ip = ETH_HLEN; // Always: the kernel has taken the tag of a VLAN out.
    constexpr sock_filter Drop = give(0), Pass = give(0xFFFFFFFF);
    constexpr auto is = [](unsigned value) { return test(BPF_JEQ, value, 1, 0); };
    // clang-format off
    sock_filter code[] = {
        // Behind each test stands its way out, which it steps over when it holds. A frame of a VLAN or a macvlan on this
        // adapter comes by with the other one's index; or earlier, on its way there, with its tag (0 has a priority only).
        load(BPF_W | BPF_ABS, SKF_AD_OFF + SKF_AD_IFINDEX), is(adapter), Drop,
        load(BPF_W | BPF_ABS, SKF_AD_OFF + SKF_AD_VLAN_TAG), test(BPF_JSET, 0x0FFF, 0, 1), Drop,
        // From there on, what is sent to other hosts, and what this one sends.
        load(BPF_W | BPF_ABS, SKF_AD_OFF + SKF_AD_PKTTYPE), test(BPF_JGE, PACKET_OTHERHOST, 0, 1), Drop,
        load(BPF_H | BPF_ABS, Ip - 2), test(BPF_JEQ, ETHERTYPE_ARP, 0, 1), arrivals ? Pass : Drop,
        is(ETHERTYPE_IP), Drop,
        load(BPF_B | BPF_ABS, Ip + 9), is(IPPROTO_UDP), Drop,
        // The bit of more fragments, and the offset: none in a whole packet.
        load(BPF_H | BPF_ABS, Ip + 6), test(BPF_JSET, 0x3FFF, 0, 1), Drop,
        BPF_STMT(BPF_LDX | BPF_B | BPF_MSH, Ip), // The ports stand behind a header of any length.
        load(BPF_H | BPF_IND, Ip), is(arrivals ? 68 : 3956), Drop,
        load(BPF_H | BPF_IND, Ip + 2), is(arrivals ? 67 : port), Drop,
        Pass,
    };
    // clang-format on
    const sock_fprog filter{sizeof code / sizeof code[0], code};
    const int locked = 1;
    if (setsockopt(socket, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter) != 0)
        return "SO_ATTACH_FILTER";
    if (setsockopt(socket, SOL_SOCKET, SO_LOCK_FILTER, &locked, sizeof locked) != 0)
        return "SO_LOCK_FILTER";
    return nullptr;
}

const char* hear::confineTo(int socket)
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct held[_LINUX_CAPABILITY_U32S_3]{}, none[_LINUX_CAPABILITY_U32S_3]{};
    if (syscall(SYS_capget, &header, held) != 0)
        return "capget";
    if (prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL, 0, 0, 0) != 0)
        return "PR_CAP_AMBIENT_CLEAR_ALL";
    // An ordinary user's process may not narrow what later programs could be given; it will start none.
    const bool mayNarrow = (held[0].effective & CAP_TO_MASK(CAP_SETPCAP)) != 0;
    for (unsigned long each = 0; prctl(PR_CAPBSET_READ, each, 0, 0, 0) >= 0; ++each)
        if (prctl(PR_CAPBSET_DROP, each, 0, 0, 0) != 0 && (mayNarrow || errno != EPERM))
            return "PR_CAPBSET_DROP";
    if (getegid() != getgid() && setresgid(getgid(), getgid(), getgid()) != 0)
        return "setresgid";
    if (geteuid() != getuid() && setresuid(getuid(), getuid(), getuid()) != 0)
        return "setresuid";
    if (syscall(SYS_capset, &header, none) != 0)
        return "capset";
    if (syscall(SYS_capget, &header, held) != 0 || std::memcmp(held, none, sizeof none) != 0)
        return "capget after capset";
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return "PR_SET_NO_NEW_PRIVS";
    if (prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) != 0)
        return "PR_SET_DUMPABLE";

    constexpr sock_filter Allow = give(SECCOMP_RET_ALLOW), Kill = give(SECCOMP_RET_KILL_PROCESS);
    constexpr sock_filter Call = load(BPF_W | BPF_ABS, offsetof(seccomp_data, nr));
    // The kernel itself looks at no more than the low word of a descriptor.
    constexpr sock_filter Descriptor = load(BPF_W | BPF_ABS, offsetof(seccomp_data, args));
    // clang-format off
    sock_filter code[] = {
        load(BPF_W | BPF_ABS, offsetof(seccomp_data, arch)), test(BPF_JEQ, Architecture, 1, 0), Kill,
        Call, test(BPF_JEQ, SYS_ppoll, 0, 1), Allow,
        Call, test(BPF_JEQ, SYS_exit_group, 0, 1), Allow,
        Call, test(BPF_JEQ, SYS_recvfrom, 0, 3), Descriptor, test(BPF_JEQ, socket, 0, 1), Allow,
        Call, test(BPF_JEQ, SYS_read, 0, 3), Descriptor, test(BPF_JEQ, STDIN_FILENO, 0, 1), Allow,
        // To the socket never: what is written to it is sent.
        Call, test(BPF_JEQ, SYS_write, 0, 3), Descriptor, test(BPF_JEQ, STDOUT_FILENO, 0, 1), Allow,
        Kill,
    };
    // clang-format on
    const sock_fprog filter{sizeof code / sizeof code[0], code};
    return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter, 0, 0) == 0 ? nullptr : "PR_SET_SECCOMP";
}
