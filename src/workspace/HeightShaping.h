#pragma once

#include "levels/Terrain.h"
#include "levels/ValueRuns.h"
#include "workspace/MapInteraction.h"

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace vardenix {

// Heights that a stroke has changed already, as they were before it, by serials.
using HeightsBefore = std::unordered_map<int32_t, int16_t>;

// What a tool makes of the heights of `spans` (each height once, all on the grid);
// nothing is changed yet. Feet that would leave 16 bits stop at their ends. Smooth takes
// the mean of a height and its eight neighbours as far as the grid has them, halves to
// the even number. A height in `before` stays: a stroke changes each only once, and what
// it smooths is the ground as the stroke found it.
std::vector<HeightRun> ShapedRuns(const ElevationLayer& layer,
                                  std::span<const RowSpan> spans, HeightTool tool,
                                  int16_t feet, const HeightsBefore& before);

} // namespace vardenix
