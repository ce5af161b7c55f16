#pragma once

#include "grounds/LearnedLand.h"
#include "levels/Posts.h"
#include "levels/ValueRuns.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

struct BrushOptions {
    bool Inside = false;   // transitions lie on painted posts, none outside changes
    bool KeepWays = false; // posts with a river, road or railroad are not painted
    uint32_t Seed = 0;     // of what is drawn among tiles that are as good
};

// What the brush makes of some posts; nothing is changed yet.
struct BrushResult {
    std::vector<TileRun> Runs;
    int64_t Outside = 0;   // posts that change and were not asked for
    int64_t OpenSeams = 0; // seams of posts that change that do not fit
    int64_t Unfilled = 0;  // posts that no tile could be found for
};

// Paints the ground of a tile, by its number, over posts of level 2 and joins it to what
// lies round them. Each post of `spans` is given once and lies on the terrain. Error 5
// with the reason where the land could not be learned or the tile is not of it.
BrushResult PaintGround(const LearnedLand& land, const Terrain& terrain,
                        std::span<const RowSpan> spans, int32_t tile,
                        const BrushOptions& options = {});

// Gives posts other tiles where their seams do not fit. The same errors.
BrushResult MendSeams(const LearnedLand& land, const Terrain& terrain,
                      std::span<const RowSpan> spans, const BrushOptions& options = {});

// A seam between a post, counted from 0, and its neighbour in the east or in the north.
struct Seam {
    PostPlace Post;
    Meeting How = Meeting::Eastward;

    bool operator==(const Seam&) const = default;
};

// The seams inside a box, and those of its posts to neighbours beyond it, that do not
// fit; row by row. A post without a known tile has none.
std::vector<Seam> BadSeams(const LearnedLand& land, const Terrain& terrain,
                           const PostBox& box);

// The same on posts by their index, which they change; `origin` is where the lower left
// one lies on the terrain. `marked` posts, by LandGrid::At, are painted or mended; what
// is round them is looked at as far as ReachOfBrush. Gives the posts that no tile could
// be found for.
int64_t PaintGrid(const LearnedLand& land, LandGrid& posts,
                  const std::vector<uint8_t>& marked, int32_t tileIndex, PostPlace origin,
                  const BrushOptions& options);
int64_t MendGrid(const LearnedLand& land, LandGrid& posts,
                 const std::vector<uint8_t>& marked, PostPlace origin,
                 const BrushOptions& options);
int32_t ReachOfBrush(const LearnedLand& land);

} // namespace vardenix
