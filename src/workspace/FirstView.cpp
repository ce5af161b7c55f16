#include "workspace/FirstView.h"

#include "catalogue/TypeNames.h"
#include "workspace/FirstLayout.h"

#include <algorithm>
#include <vector>

namespace vardenix {

namespace {

bool IsLand(const TerrainPost& post, const TileLookup& lookup) {
    if (post.Elevation > 0)
        return true;
    const int32_t tile = post.TileOffset;
    return tile >= 0 && static_cast<size_t>(tile) < lookup.size() &&
           lookup[static_cast<size_t>(tile)].Terrain > TerrainWater;
}

// Posts of land in each segment, by rows from below; the last ones may be cut by the
// edge.
struct LandCounts {
    int32_t Side = 0; // segments
    std::vector<int32_t> Counts;

    int32_t At(int32_t x, int32_t y) const {
        return Counts[static_cast<size_t>(y) * static_cast<size_t>(Side) +
                      static_cast<size_t>(x)];
    }
};

LandCounts CountLand(const Terrain& terrain, const TileLookup& lookup) {
    LandCounts land;
    const int32_t width = terrain.MapWidth;
    land.Side = (width + SegmentSide - 1) / SegmentSide;
    land.Counts.resize(static_cast<size_t>(land.Side) * static_cast<size_t>(land.Side));
    const TerrainPost* post = terrain.LxArr.Values().data();
    for (int32_t y = 0; y < width; ++y) {
        int32_t* row = &land.Counts[static_cast<size_t>(y / SegmentSide) *
                                    static_cast<size_t>(land.Side)];
        for (int32_t x = 0; x < width; ++x, ++post)
            row[x / SegmentSide] += IsLand(*post, lookup) ? 1 : 0;
    }
    return land;
}

} // namespace

PostPlace FirstView(const Terrain& terrain, const TileLookup& lookup, int32_t viewPosts) {
    const int64_t posts = int64_t{terrain.MapWidth} * terrain.MapWidth;
    if (terrain.MapWidth <= 0 || terrain.LxArr.UpperBound() < posts)
        return {};
    const LandCounts land = CountLand(terrain, lookup);
    double all = 0;
    double sumX = 0;
    double sumY = 0;
    for (int32_t y = 0; y < land.Side; ++y)
        for (int32_t x = 0; x < land.Side; ++x) {
            all += land.At(x, y);
            sumX += 1.0 * x * land.At(x, y);
            sumY += 1.0 * y * land.At(x, y);
        }
    if (all == 0)
        return {};
    const int32_t most = *std::max_element(land.Counts.begin(), land.Counts.end());
    PostPlace best;
    double nearest = -1;
    for (int32_t y = 0; y < land.Side; ++y)
        for (int32_t x = 0; x < land.Side; ++x) {
            const double dx = x - sumX / all;
            const double dy = y - sumY / all;
            const double distance = dx * dx + dy * dy;
            if (land.At(x, y) == most && (nearest < 0 || distance < nearest)) {
                nearest = distance;
                best = {x, y};
            }
        }
    const auto begin = [&](int32_t segment) {
        return segment * SegmentSide + SegmentSide / 2 - viewPosts / 2;
    };
    return ClampToScroll({begin(best.X), begin(best.Y)}, terrain.MapWidth);
}

void BeginWhereLandIs(Configuration& settings, const Terrain& terrain,
                      const TileLookup& lookup, int32_t viewPosts) {
    if (!NeverPlaced(settings) || settings.X != 0 || settings.Y != 0)
        return;
    const PostPlace position = FirstView(terrain, lookup, viewPosts);
    settings.X = position.X;
    settings.Y = position.Y;
}

} // namespace vardenix
