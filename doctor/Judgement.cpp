// SPDX-License-Identifier: Apache-2.0
#include "doctor/Families.h"

#include <algorithm>

namespace doctor {

Judgement judge(const Evidence& evidence)
{
    // In the order in which one would repair: what is wrong further down shows in what comes behind it.
    inventory::FreeAddresses free(evidence.inventory, evidence.taken);
    Judgement judgement;
    findInAdapters(evidence, free, judgement.findings);
    findInAddresses(evidence, free, judgement.findings);
    findInHearing(evidence, judgement.findings);
    findInUse(evidence, judgement.findings);
    findSilentDevices(evidence, judgement.findings);
    std::ranges::stable_sort(judgement.findings, {}, &Finding::severity);
    judgement.proposals = free.given();
    return judgement;
}

} // namespace doctor
