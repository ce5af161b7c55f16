#pragma once

#include "levels/ValueRuns.h"
#include "program/ProgramState.h"

#include <vector>

namespace vardenix {

class LearnedLand;

// What fits with what in the opened theater; error 5 with the reason where nothing can be
// painted.
LearnedLand LearnLand(const ProgramState& state);

// Without the posts beyond the last whole segment: they are not saved, and so not
// changed.
std::vector<TileRun> KeptRuns(const std::vector<TileRun>& runs, int32_t mapWidth);

} // namespace vardenix
