#include "grounds/LandCover.h"

#include "grounds/BrushPart.h"
#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

int64_t PostsIn(const CoveredPosts& cover) {
    int64_t count = 0;
    for (const RowSpan& span : cover.Posts)
        count += span.X2 - span.X1 + 1;
    return count;
}

std::vector<const CoveredPosts*> WidestFirst(std::span<const CoveredPosts> cover) {
    std::vector<const CoveredPosts*> order;
    for (const CoveredPosts& each : cover)
        if (!each.Posts.empty())
            order.push_back(&each);
    std::ranges::stable_sort(order, std::ranges::greater(),
                             [](const CoveredPosts* each) { return PostsIn(*each); });
    return order;
}

} // namespace

BrushResult PaintCover(const LearnedLand& land, const Terrain& terrain,
                       std::span<const CoveredPosts> cover, const BrushOptions& options) {
    RequireLearned(land);
    const std::vector<const CoveredPosts*> order = WidestFirst(cover);
    std::vector<RowSpan> all;
    for (const CoveredPosts* each : order) {
        if (land.Tiles().IndexOf(each->Tile) < 0)
            throw RuntimeError(ErrorNumber::InvalidCall,
                               "the catalogue has no tile " + std::to_string(each->Tile));
        all.insert(all.end(), each->Posts.begin(), each->Posts.end());
    }
    if (all.empty())
        return {};
    const BrushPart part = PartRound(land, terrain, all, ReachOfBrush(land));
    LandGrid posts = part.Posts;
    int64_t unfilled = 0;
    for (const CoveredPosts* each : order) {
        std::vector<uint8_t> marked(posts.Tiles.size());
        for (const RowSpan& span : each->Posts)
            for (int32_t x = span.X1; x <= span.X2; ++x)
                marked[posts.At(x - part.Origin.X, span.Y - part.Origin.Y)] = 1;
        unfilled += PaintGrid(land, posts, marked, land.Tiles().IndexOf(each->Tile),
                              part.Origin, options);
    }
    return ResultOf(land, terrain, part, posts, unfilled);
}

} // namespace vardenix
