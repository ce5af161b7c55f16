#include "builder/PostsUnder.h"

#include "companion/Vardenix.h"

namespace vardenix {

PostsUnder::PostsUnder(const Terrain& terrain, const LevelGeometry& geometry)
    : terrain_(terrain), side_(geometry.Coarser),
      serials_(static_cast<size_t>(side_) * static_cast<size_t>(side_)) {}

void PostsUnder::Look(int32_t column, int32_t row) {
    const auto posts = terrain_.LxArr.Values();
    empty_ = true;
    blank_ = true;
    size_t k = 0;
    for (int32_t j = 1; j <= side_; ++j) {
        int32_t serial =
            XYToSerial(side_ * column + 1, side_ * row + j, terrain_.MapWidth);
        for (int32_t i = 0; i < side_; ++i, ++serial) {
            const TerrainPost& post = posts[static_cast<size_t>(serial) - 1];
            empty_ = empty_ && post.TileOffset == 0;
            blank_ = blank_ && post.TileOffset == 0 && post.Elevation == 0;
            serials_[k++] = serial;
        }
    }
}

} // namespace vardenix
