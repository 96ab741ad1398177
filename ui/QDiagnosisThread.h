// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/QJobThread.h"

namespace doctor {
struct Diagnosis;
}

/// Finds out what is wrong on the networks, which takes some seconds.
using QDiagnosisThread = QJobThread<doctor::Diagnosis>;
using Examiner = QDiagnosisThread::Job;

/// The one that looks at this computer's networks.
Examiner DoctorsExaminer();
