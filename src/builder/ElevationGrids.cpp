#include "builder/ElevationGrids.h"

#include "companion/Vardenix.h"

namespace vardenix {

ElevationGrids::ElevationGrids(int32_t mapWidth) {
    widths_[0] = 4 * mapWidth;
    for (size_t level = 1; level < widths_.size(); ++level)
        widths_[level] = widths_[level - 1] / 2;
    grids_[0] = HeightArray(int64_t{widths_[0]} * widths_[0]);
}

void ElevationGrids::DownsampleLevel(int32_t level, Downsampling method) {
    const size_t to = Index(level);
    if (to >= 2)
        grids_.at(to - 2) = HeightArray();
    grids_.at(to) = HeightArray(int64_t{widths_.at(to)} * widths_[to]);
    const HeightArray& source = grids_[to - 1];
    if (widths_[to] > 0)
        BreakElv(source.Values().data(), source.UpperBound(), widths_[to - 1],
                 static_cast<int32_t>(method), grids_[to].Values().data());
}

} // namespace vardenix
