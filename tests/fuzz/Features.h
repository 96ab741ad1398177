// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/GenApi.h"

/// Uses all features that the tool uses, as whatever they are. A feature may be unusable, but must say so by
/// an exception of GenICam's; any other leaves.
void useFeatures(const GenApi::INodeMap& map);

/// From now on a complaint of the engine's (GLib's criticals and warnings) ends the program. In a call, which
/// then fails as any other, it may complain; this is about those that nobody hears.
void abortOnComplaints();
