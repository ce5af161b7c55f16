#include "grounds/BrushPart.h"

#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

void RequireLearned(const LearnedLand& land) {
    if (!land.Refusal().empty())
        throw RuntimeError(ErrorNumber::InvalidCall, land.Refusal());
}

LandPart PostsOf(const LearnedLand& land, const Terrain& terrain, const PostBox& box) {
    const PostBox cut = CutToGrid(box, terrain.MapWidth);
    LandPart part{{cut.X1, cut.Y1}, {cut.X2 - cut.X1 + 1, cut.Y2 - cut.Y1 + 1, {}}};
    for (int32_t y = cut.Y1; y <= cut.Y2; ++y)
        for (int32_t x = cut.X1; x <= cut.X2; ++x)
            part.Posts.Tiles.push_back(land.Tiles().IndexOf(
                terrain.LxArr(int64_t{y} * terrain.MapWidth + x + 1).TileOffset));
    return part;
}

BrushPart PartRound(const LearnedLand& land, const Terrain& terrain,
                    std::span<const RowSpan> spans, int32_t reach) {
    PostBox box{spans.front().X1, spans.front().Y, spans.front().X2, spans.front().Y};
    for (const RowSpan& span : spans)
        box = {std::min(box.X1, span.X1), std::min(box.Y1, span.Y),
               std::max(box.X2, span.X2), std::max(box.Y2, span.Y)};
    LandPart round = PostsOf(
        land, terrain, {box.X1 - reach, box.Y1 - reach, box.X2 + reach, box.Y2 + reach});
    BrushPart part{round.Origin, std::move(round.Posts), {}};
    part.Marked.resize(part.Posts.Tiles.size());
    for (const RowSpan& span : spans)
        for (int32_t x = span.X1; x <= span.X2; ++x)
            part.Marked[part.Posts.At(x - part.Origin.X, span.Y - part.Origin.Y)] = 1;
    return part;
}

int64_t SeamsThatDoNotFit(const LearnedLand& land, const LandGrid& posts, int32_t x,
                          int32_t y, Meeting meeting) {
    const int32_t nextX = meeting == Meeting::Eastward ? x + 1 : x;
    const int32_t nextY = meeting == Meeting::Eastward ? y : y + 1;
    if (!posts.Has(x, y) || !posts.Has(nextX, nextY) || posts(x, y) < 0 ||
        posts(nextX, nextY) < 0)
        return 0;
    return land.Fits(meeting).Fit(static_cast<size_t>(posts(x, y)),
                                  static_cast<size_t>(posts(nextX, nextY)))
               ? 0
               : 1;
}

BrushResult ResultOf(const LearnedLand& land, const Terrain& terrain,
                     const BrushPart& before, const LandGrid& after, int64_t unfilled) {
    BrushResult result;
    result.Unfilled = unfilled;
    const auto changed = [&](int32_t x, int32_t y) {
        return after.Has(x, y) && after(x, y) != before.Posts(x, y);
    };
    RunWriter<int32_t> runs;
    for (int32_t y = 0; y < after.Height; ++y) {
        runs.BreakRow();
        for (int32_t x = 0; x < after.Width; ++x) {
            const bool here = changed(x, y);
            if (here || changed(x + 1, y))
                result.OpenSeams +=
                    SeamsThatDoNotFit(land, after, x, y, Meeting::Eastward);
            if (here || changed(x, y + 1))
                result.OpenSeams +=
                    SeamsThatDoNotFit(land, after, x, y, Meeting::Northward);
            if (!here)
                continue;
            result.Outside += before.Marked[after.At(x, y)] == 0 ? 1 : 0;
            const int32_t serial =
                (before.Origin.Y + y) * terrain.MapWidth + before.Origin.X + x + 1;
            runs.Add(serial, terrain.LxArr(serial).TileOffset,
                     land.Tiles().Numbers[static_cast<size_t>(after(x, y))]);
        }
    }
    result.Runs = runs.Take();
    return result;
}

} // namespace vardenix
