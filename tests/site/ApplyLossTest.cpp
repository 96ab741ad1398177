// SPDX-License-Identifier: Apache-2.0
#include "tests/site/AppliedLine.h"

namespace {

constexpr int Cameras = 100 / Slowness;
constexpr int Loss = 30; ///< Percent of the frames, each way.

class ApplyLoss : public AppliedLine
{};

} // namespace

TEST_F(ApplyLoss, LeavesEachCameraAsIsSaid)
{
    std::vector<LineCamera> cameras;
    for (int i = 1; i <= Cameras; ++i) {
        const std::string number = std::to_string(i);
        cameras.push_back({R"("mask": "255.255.0.0", "rebootTime": 300, "userName": "Old)" + number +
                               R"(", "address": "192.168.3.)" + number + '"',
                           inventory::IpMethod::Static, "192.168.2." + number, "New" + number,
                           "frames were lost"});
    }
    build(cameras);
    for (int run = 0; run < 2; ++run) {
        apply(Loss);
        RecordProperty("results" + std::to_string(run), tally());
        judgeAll();
    }
    apply();
    for (std::size_t i = 0; i < count(); ++i)
        expectAsPlanned(i);
}
