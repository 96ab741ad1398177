// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"
#include "sdk/network/Exchange.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace sdk {

/// Asks one camera for the registers that tell who holds it and what it will do next, one question after the
/// other, and for an optional one only when its capability register says that it has that. Takes control of
/// nothing. The owner passes it what the network receives and gives it the time.
class RegisterSurvey
{
public:
    struct Subject
    {
        std::size_t adapter = 0;
        base::Ipv4 source; ///< The adapter's address from which to ask.
        base::Ipv4 camera;
        bool isRefusing = false; ///< It has refused one register, so that there is no point in others.
    };

    /// At its end it asks so many questions more, to tell how many get lost.
    RegisterSurvey(Network& network, RequestIds& ids, const Subject& subject, unsigned lossQuestions);
    RegisterSurvey(const RegisterSurvey&) = delete;
    RegisterSurvey& operator=(const RegisterSurvey&) = delete;
    ~RegisterSurvey() = default;

    /// A camera of this MAC says that it has the address.
    void expect(const base::MacAddress& mac, bool canStoreAddress);

    bool take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge);
    void proceed();
    Clock::time_point nextStep() const;

    /// Nothing more is to be found out but losses.
    bool isSettled() const { return m_isSettled; }
    bool isPending() const { return nextStep() != Clock::time_point::max(); }

    /// The register of the camera as a whole; nothing when it has not told.
    std::optional<std::uint32_t> value(std::uint32_t address) const;
    /// Of the network interface with this MAC, given the first one's register.
    std::optional<std::uint32_t> valueOf(const base::MacAddress& mac, std::uint32_t ofFirst) const;
    /// Somebody answers at the address, and it is not the camera with this MAC.
    bool isOther(const base::MacAddress& mac) const;

    /// Questions of one datagram each, and how many of them were answered; one that may still be is not among
    /// them.
    unsigned lossQuestions() const;
    unsigned lossReplies() const;

private:
    struct LossQuestion
    {
        std::uint16_t id;
        Clock::time_point time;
        bool isAnswered;
    };

    std::vector<std::uint32_t> wanted() const;
    std::optional<unsigned> interfaceOf(const base::MacAddress& mac) const;
    std::optional<base::MacAddress> macOf(unsigned interface) const;
    void takeAnswer();
    void askNext();
    void askForLoss();

    Network& m_network;
    RequestIds& m_ids;
    const Subject m_subject;
    const unsigned m_mostLossQuestions;
    std::map<base::MacAddress, bool> m_expected; ///< And whether it can store an address.
    std::map<std::uint32_t, std::uint32_t> m_values;
    std::set<std::uint32_t> m_asked;
    std::vector<std::uint32_t> m_asking; ///< By m_exchange.
    std::optional<Exchange> m_exchange;
    bool m_asksSeveral = false; ///< At once: the camera can do that.
    bool m_isSettled = false;
    int m_silences = 0;
    std::vector<LossQuestion> m_lossQuestions;
};

} // namespace sdk
