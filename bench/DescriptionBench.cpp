// SPDX-License-Identifier: Apache-2.0
// How long a large description takes to load: unpacked, checked and handed to the engine, beside the engine
// alone with nothing checked. Exits with 1 when the checks more than double it.
#include "genapi/GenApi/GenApi.h"

#include <algorithm>
#include <arv.h>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr std::size_t DescriptionSize = 1'300'000; ///< As large as the largest real ones.
constexpr int Runs = 11;
constexpr double MostTimes = 2;

/// Features as cameras describe them, each a switch or a number over a register, some with a formula.
std::string makeDescription()
{
    std::string text = "<RegisterDescription SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
                       "SchemaSubMinorVersion=\"0\">\n<Port Name=\"Device\"/>\n";
    for (int i = 0; text.size() < DescriptionSize; ++i) {
        const auto name = "Feature" + std::to_string(i);
        text += "<Integer Name=\"" + name + "\" NameSpace=\"Custom\"><ToolTip>Sets number " +
                std::to_string(i) + " of the camera.</ToolTip><Visibility>Expert</Visibility><pValue>" +
                name + "Reg</pValue>" + "<Min>0</Min><pMax>" + name +
                "Max</pMax></Integer>\n<IntReg Name=\"" + name + "Reg\"><Address>" +
                std::to_string(0x10000 + 4 * i) +
                "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</"
                "Sign>" +
                "<Endianess>BigEndian</Endianess></IntReg>\n<IntSwissKnife Name=\"" + name +
                "Max\"><pVariable Name=\"N\">" + name + "Reg</pVariable><Formula>N &gt; 4 ? N * 2 : N / 2" +
                "</Formula></IntSwissKnife>\n";
    }
    return text + "</RegisterDescription>\n";
}

/// Milliseconds, the median of all runs.
double measure(const std::function<void()>& action)
{
    std::vector<double> times;
    for (int run = 0; run < Runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        action();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + Runs / 2, times.end());
    return times[Runs / 2];
}

} // namespace

int main()
{
    const auto text = makeDescription();
    const double checked = measure([&text] {
        GenApi::CNodeMapFactory(GenApi::ContentType_Xml, text.data(), text.size()).CreateNodeMap();
    });
    // The engine never asks its camera while it loads.
    const double unchecked =
        measure([&text] { g_object_unref(arv_gc_new(nullptr, text.data(), text.size())); });

    std::printf("Loading a description of %zu bytes\n\n| | ms |\n|---|---|\n", text.size());
    std::printf("| the engine alone | %.1f |\n| checked | %.1f |\n| ratio | %.2f |\n", unchecked, checked,
                checked / unchecked);
    return checked <= MostTimes * unchecked ? 0 : 1;
}
