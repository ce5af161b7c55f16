#include "world/HeightsPlan.h"

#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

std::string CountedHeights(int64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

void CountIn(HeightsTaken& sum, const HeightsTaken& more) {
    sum.Set += more.Set;
    sum.Clamped += more.Clamped;
    sum.Without += more.Without;
}

// A stretch of a row of the raster, as a raster of its own.
WorldRaster PartOf(const WorldRaster& raster, int32_t row, int32_t first, int32_t last) {
    const auto begin = raster.Values.begin() + int64_t{row} * raster.Columns;
    return {last - first + 1, 1, {begin + first, begin + last + 1}};
}

// The rows of a layer that a plan touches, whole, as they are to be.
template <typename Value, typename Give>
ChangedValues<Value> ChangedRows(const HeightsPlan& plan, std::span<const Value> values,
                                 int32_t width, Give give) {
    if (!LiesOnGrid(plan.Box, width))
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "the heights of a map reach beyond the terrain");
    const int64_t first = int64_t{plan.Box.Y1} * width;
    const int64_t count = (int64_t{plan.Box.Y2} - plan.Box.Y1 + 1) * width;
    const std::span<const Value> before =
        values.subspan(static_cast<size_t>(first), static_cast<size_t>(count));
    std::vector<Value> after(before.begin(), before.end());
    size_t next = 0;
    for (int32_t y = plan.Box.Y1; y <= plan.Box.Y2; ++y)
        for (int32_t x = plan.Box.X1; x <= plan.Box.X2; ++x, ++next)
            if (plan.Given[next] != 0) {
                const int64_t at = int64_t{y} * width + x - first;
                give(after[static_cast<size_t>(at)], plan.Feet[next]);
            }
    return ChangedBetween(before, std::span<const Value>(after),
                          static_cast<int32_t>(first) + 1);
}

} // namespace

std::optional<int16_t> HeightsPlan::At(int32_t x, int32_t y) const {
    if (!Contains(Box, {x, y}))
        return std::nullopt;
    const int64_t index = int64_t{y - Box.Y1} * Columns() + x - Box.X1;
    const auto at = static_cast<size_t>(index);
    if (Given[at] == 0)
        return std::nullopt;
    return Feet[at];
}

HeightsPlan PlanHeights(const WorldRaster& raster, PostPlace corner,
                        const HeightsWish& wish, std::span<const RowSpan> within) {
    HeightsPlan plan;
    plan.Into = wish.Into;
    plan.Box = {corner.X, corner.Y, corner.X + raster.Columns - 1,
                corner.Y + raster.Rows - 1};
    plan.Feet.resize(raster.Values.size());
    plan.Given.resize(raster.Values.size());
    const auto put = [&](PostPlace place, int16_t feet) {
        const int64_t index =
            int64_t{place.Y - corner.Y} * raster.Columns + place.X - corner.X;
        plan.Feet[static_cast<size_t>(index)] = feet;
        plan.Given[static_cast<size_t>(index)] = 1;
    };
    if (within.empty()) {
        plan.Taken = TakeHeights(raster, corner, wish.Units, wish.Without, put);
        return plan;
    }
    for (const RowSpan& span : within) {
        const int32_t first = std::max(span.X1, plan.Box.X1);
        const int32_t last = std::min(span.X2, plan.Box.X2);
        if (span.Y < plan.Box.Y1 || span.Y > plan.Box.Y2 || last < first)
            continue;
        CountIn(plan.Taken, TakeHeights(PartOf(raster, span.Y - corner.Y,
                                               first - corner.X, last - corner.X),
                                        {first, span.Y}, wish.Units, wish.Without, put));
    }
    return plan;
}

PostDelta PostsChangedBy(const HeightsPlan& plan, const Terrain& terrain) {
    return {{},
            ChangedRows(plan, terrain.LxArr.Values(), terrain.MapWidth,
                        [](TerrainPost& post, int16_t feet) { post.Elevation = feet; })};
}

HeightDelta HeightsChangedBy(const HeightsPlan& plan, const Terrain& terrain) {
    return {{},
            ChangedRows(plan, terrain.Elevations.L0ElvArr.Values(),
                        terrain.Elevations.EMapWidth,
                        [](int16_t& height, int16_t feet) { height = feet; })};
}

std::string PlanWords(const HeightsPlan& plan, WithoutData without) {
    const HeightsTaken& taken = plan.Taken;
    std::string words = CountedHeights(taken.Set, "height", "heights");
    int16_t low = 0;
    int16_t high = 0;
    bool any = false;
    for (size_t i = 0; i < plan.Feet.size(); ++i)
        if (plan.Given[i] != 0) {
            low = any ? std::min(low, plan.Feet[i]) : plan.Feet[i];
            high = any ? std::max(high, plan.Feet[i]) : plan.Feet[i];
            any = true;
        }
    if (any)
        words += ", " + std::to_string(low) + " to " + std::to_string(high) + " ft";
    if (taken.Clamped > 0)
        words +=
            "; " + std::to_string(taken.Clamped) + " of them did not fit into 16 bits";
    if (taken.Without > 0)
        words += "; " + CountedHeights(taken.Without, "place has", "places have") +
                 " none and " +
                 (without == WithoutData::Zero ? "become 0"
                  : taken.Without == 1         ? "stays"
                                               : "stay");
    return words;
}

} // namespace vardenix
