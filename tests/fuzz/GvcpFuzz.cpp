// SPDX-License-Identifier: Apache-2.0
// Feeds bytes of any kind to everything that reads what came in a datagram.
#include "gvcp/DiscoveryAck.h"
#include "gvcp/ForceIp.h"
#include "gvcp/Memory.h"
#include "gvcp/Packet.h"
#include "gvcp/PendingAck.h"
#include "sdk/description/DescriptionCompletion.h"
#include "sdk/description/DescriptionUrl.h"
#include "tests/fuzz/Require.h"

#include <string_view>

using namespace base;
using namespace gvcp;

namespace {

/// What was read and is written again reads the same.
void readPayload(ByteView payload)
{
    if (const auto ack = parseDiscoveryAck(payload))
        require(parseDiscoveryAck(encodeDiscoveryAck(*ack)) == ack);
    if (const auto command = parseForceIp(payload))
        require(parseForceIp(encodeForceIp(*command)) == command);
    if (const auto words = parseWords(payload))
        require(parseWords(encodeWords(*words)) == words);
    if (const auto values = parseRegisterValues(payload))
        require(parseRegisterValues(encodeRegisterValues(*values)) == values);
    if (const auto range = parseMemoryRange(payload))
        require(parseMemoryRange(encodeMemoryRange(*range)) == range);
    if (const auto time = parsePendingAck(payload))
        require(parsePendingAck(encodePendingAck(*time)) == time);
    if (const auto block = parseMemoryBlock(payload)) {
        const Bytes again = encodeMemoryBlock(*block);
        require(again == Bytes(payload.begin(), payload.end()));
    }
}

void readDatagram(ByteView datagram)
{
    if (const auto command = parseCommand(datagram)) {
        require(command->payload.size() + HeaderSize <= datagram.size());
        readPayload(command->payload);
    }
    if (const auto acknowledge = parseAcknowledge(datagram)) {
        require(acknowledge->payload.size() + HeaderSize <= datagram.size());
        readPayload(acknowledge->payload);
    }
}

/// What a camera's memory holds where its description is to be found.
void readDescription(ByteView memory)
{
    const auto url = sdk::parseDescriptionUrl({reinterpret_cast<const char*>(memory.data()), memory.size()});
    if (url && url->isLocal)
        require(url->length > 0 && url->length - 1 <= UINT32_MAX - url->address);

    const Bytes file(memory.begin(), memory.end());
    constexpr std::size_t MaxSize = 100'000;
    const Bytes completed = sdk::completedDescription(file, true, 0, MaxSize);
    // What has been completed lacks nothing more.
    require(completed == file || (completed.size() <= MaxSize &&
                                  sdk::completedDescription(completed, true, 0, MaxSize) == completed));
    const Bytes ofAnother = sdk::completedDescription(file, true, 1, MaxSize);
    require(ofAnother == file || ofAnother.size() <= MaxSize);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ByteView bytes(data, size);
    readDatagram(bytes);
    readDescription(bytes);
    return 0;
}
