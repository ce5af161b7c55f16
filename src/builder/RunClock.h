#pragma once

#include "builder/RebuildView.h"

#include <cstdint>
#include <string>

namespace vardenix {

// How far a run has come.
struct RunState {
    int Step = 0; // from 1
    int Steps = 0;
    int64_t Seconds = 0;     // of the whole run
    int64_t StepSeconds = 0; // of this step
    RebuildBar Bar;          // of this step
};

// "Step 3 of 6, 1:05 so far, about 0:40 left in this step": the rest of a step takes as
// long for each share as what is done of it. Nothing is said of it in the first second.
std::string TextOfRun(const RunState& run);

// "0:05", "12:40", "1:02:03".
std::string TextOfDuration(int64_t seconds);

} // namespace vardenix
