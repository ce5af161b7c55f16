#pragma once

#include "cli/Arguments.h"
#include "mapview/MapView.h"

#include <cstdint>

namespace vardenix {

// How the layers relief and contours look; at first as in the editor.
struct ReliefOptions {
    int32_t Strength = MapView().ReliefStrength; // percent
    int32_t ContourStep = MapView().ContourStep; // feet
};

void AddReliefOptions(Command& command, ReliefOptions& options);

} // namespace vardenix
