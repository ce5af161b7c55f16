#include "builder/LevelSaving.h"

#include "builder/PostsUnder.h"
#include "texts/RuntimeError.h"

#include <limits>
#include <string>

namespace vardenix {

namespace {

int32_t Raised(int32_t tile, const LevelGeometry& geometry) {
    if (tile > std::numeric_limits<int32_t>::max() - geometry.Base)
        throw RuntimeError(ErrorNumber::Overflow, "tile number " + std::to_string(tile) +
                                                      " has none for level " +
                                                      std::to_string(geometry.Level));
    return tile + geometry.Base;
}

// The level 2 posts along row i of fine block (x, y), all from 0.
std::span<const TerrainPost> SourceRow(const Terrain& terrain,
                                       const LevelGeometry& geometry, int32_t y,
                                       int32_t x, int32_t i) {
    const int32_t posts = SegmentSide / geometry.Finer;
    const int64_t row = int64_t{y} * posts + i / geometry.Finer;
    return terrain.LxArr.Values().subspan(
        static_cast<size_t>(row * terrain.MapWidth + int64_t{x} * posts),
        static_cast<size_t>(posts));
}

// Hands out the far tiles of one level.
class FartileNumbers {
public:
    FartileNumbers(Fartiles& fartiles, int32_t level)
        : fartiles_(fartiles), level_(level) {}

    int32_t NumberOf(const PostsUnder& posts) {
        if (posts.Empty() && firstBlankFartile_ != -1)
            return firstBlankFartile_;
        if (posts.Empty())
            firstBlankFartile_ = fartiles_.FartileCount;
        fartiles_.FartileList.Add(posts.Serials(), level_);
        return fartiles_.FartileCount++;
    }

private:
    Fartiles& fartiles_;
    int32_t level_;
    int32_t firstBlankFartile_ = -1;
};

} // namespace

bool MakeFineBlock(const Terrain& terrain, const LevelGeometry& geometry, int32_t y,
                   int32_t x, bool wholePosts, std::span<TerrainPost> block) {
    bool blank = true;
    for (int32_t i = 0; i < SegmentSide; ++i) {
        const int32_t first = i * SegmentSide;
        TerrainPost* post = &block[static_cast<size_t>(first)];
        for (const TerrainPost& from : SourceRow(terrain, geometry, y, x, i)) {
            const int32_t tile = Raised(from.TileOffset, geometry);
            for (int32_t j = 0; j < geometry.Finer; ++j, ++post) {
                if (wholePosts)
                    *post = from;
                post->TileOffset = tile;
                blank = blank && from.TileOffset == 0 && post->Elevation == 0;
            }
        }
    }
    return blank;
}

void SaveFineLevel(const LevelParts& parts, int32_t level, bool notExists) {
    const LevelGeometry geometry = GeometryOf(level, parts.Terrain.MapWidth);
    RewriteLevel(parts, PairOfLevel(parts.LxFolder, level), geometry, notExists,
                 [&](int32_t y, int32_t x, std::span<TerrainPost> block) {
                     return MakeFineBlock(parts.Terrain, geometry, y, x, notExists,
                                          block);
                 });
}

void SaveFarLevel(const LevelParts& parts, Fartiles& fartiles, int32_t level,
                  bool notExists) {
    const LevelGeometry geometry = GeometryOf(level, parts.Terrain.MapWidth);
    FartileNumbers numbers(fartiles, level);
    PostsUnder posts(parts.Terrain, geometry);
    RewriteLevel(
        parts, PairOfLevel(parts.LxFolder, level), geometry, notExists,
        [&](int32_t y, int32_t x, std::span<TerrainPost> block) {
            if (notExists)
                throw MissingFarLevel(parts.LxFolder, level);
            bool blank = true;
            for (int32_t i = 0; i < PostsPerSegment; ++i) {
                posts.Look(x * SegmentSide + i % SegmentSide,
                           y * SegmentSide + i / SegmentSide);
                blank = blank && posts.Blank();
                block[static_cast<size_t>(i)].TileOffset = numbers.NumberOf(posts);
                parts.View.SetLabel2("FT: " + std::to_string(fartiles.FartileCount));
                parts.View.GoOn();
            }
            return blank;
        });
}

} // namespace vardenix
