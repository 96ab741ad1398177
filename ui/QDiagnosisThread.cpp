// SPDX-License-Identifier: Apache-2.0
#include "ui/QDiagnosisThread.h"

#include "doctor/Doctor.h"

Examiner DoctorsExaminer()
{
    return [] { return std::make_shared<const doctor::Diagnosis>(doctor::examine()); };
}
