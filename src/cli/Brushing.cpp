#include "cli/Brushing.h"

#include "grounds/LearnedLand.h"
#include "texts/RuntimeError.h"
#include "workspace/PostFields.h"

#include <algorithm>

namespace vardenix {

LearnedLand LearnLand(const ProgramState& state) {
    LearnedTiles tiles = TilesToLearn(state.Terrain, state.Catalogue);
    const LandGrid map = GridOf(state.Terrain, tiles);
    LearnedLand land(std::move(tiles), map);
    if (!land.Refusal().empty())
        throw RuntimeError(ErrorNumber::InvalidCall, land.Refusal());
    return land;
}

std::vector<TileRun> KeptRuns(const std::vector<TileRun>& runs, int32_t mapWidth) {
    const int32_t saved = SavedWidth(mapWidth);
    std::vector<TileRun> kept;
    for (TileRun run : runs) {
        const int32_t x = (run.Serial - 1) % mapWidth;
        run.Count = std::min(run.Count, saved - x);
        if (run.Count > 0 && (run.Serial - 1) / mapWidth < saved)
            kept.push_back(run);
    }
    return kept;
}

} // namespace vardenix
