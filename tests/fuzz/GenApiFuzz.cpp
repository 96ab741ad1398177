// SPDX-License-Identifier: Apache-2.0
// Loads bytes of any kind as a camera's description and uses the features that the tool uses.
#include "genapi/GenApi/GenApi.h"
#include "tests/fuzz/Features.h"
#include "tests/genapi/MemoryPort.h"

using namespace GenApi;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    abortOnComplaints();
    try {
        const auto map = CNodeMapFactory(ContentType_Xml, data, size).CreateNodeMap();
        MemoryPort port;
        port.put(0, {0x80, 0,    0,    0,    0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,
                     0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 7, 0,    0,    0,    6});
        map->Connect(&port, "Device");
        useFeatures(*map);
    } catch (const GenICam::RuntimeException&) {
        return 0; // Refused.
    }
    return 0;
}
