// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "device/QDevice.h"

#include <string>
#include <vector>

/// What the user calls the camera: by its name, or else its serial number, or else its MAC address.
std::string NameOf(const QDevice& device);

/// "6 cameras on 2 adapters".
base::Sentence CountOf(const QVector<QDevice>& devices);

/// What became of a save, as the list made after it tells: "Right has the address 192.168.10.30".
std::vector<base::Sentence> OutcomeOf(const QDevice& before, const QDevice& asked,
                                      const QVector<QDevice>& listed);
