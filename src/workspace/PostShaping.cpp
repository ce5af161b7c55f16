#include "workspace/PostShaping.h"

#include "texts/Numbers.h"
#include "workspace/GridShapes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <span>
#include <utility>

namespace vardenix {

namespace {

// How much a soft brush does at a distance from its middle: all there, nothing where its
// first post beyond the edge lies.
double SoftShare(double distance, double radius) {
    return distance >= radius ? 0
                              : (1 + std::cos(std::numbers::pi * distance / radius)) / 2;
}

double RadiusOf(int32_t size) { return (size + 1) / 2.0; }

class PostHeights {
public:
    explicit PostHeights(const Terrain& terrain)
        : posts_(terrain.LxArr.Values()), width_(terrain.MapWidth) {}

    int32_t Width() const { return width_; }
    int16_t At(int32_t x, int32_t y) const {
        return posts_[static_cast<size_t>(y) * static_cast<size_t>(width_) +
                      static_cast<size_t>(x)]
            .Elevation;
    }
    double MeanRound(int32_t x, int32_t y) const {
        double sum = 0;
        int32_t count = 0;
        for (int32_t row = std::max(y - 1, 0); row <= std::min(y + 1, width_ - 1); ++row)
            for (int32_t column = std::max(x - 1, 0);
                 column <= std::min(x + 1, width_ - 1); ++column) {
                sum += At(column, row);
                ++count;
            }
        return sum / count;
    }

private:
    std::span<const TerrainPost> posts_;
    int32_t width_;
};

double WantedHeight(const PostHeights& heights, int32_t x, int32_t y, PostShape shape,
                    int16_t feet, double level) {
    const int16_t now = heights.At(x, y);
    switch (shape) {
    case PostShape::Set:
        return feet;
    case PostShape::Raise:
        return now + feet;
    case PostShape::Lower:
        return now - feet;
    case PostShape::Smooth:
        return heights.MeanRound(x, y);
    case PostShape::Flatten:
        return level;
    }
    return now;
}

// Posts with new heights, by rows; a share of 1 is all of the way to what is wanted.
class HeightDeltaWriter {
public:
    explicit HeightDeltaWriter(const Terrain& terrain) : terrain_(terrain) {}

    void Add(int32_t x, int32_t y, double wanted, double share) {
        const int32_t serial = y * terrain_.MapWidth + x + 1;
        const TerrainPost old = terrain_.LxArr(serial);
        TerrainPost changed = old;
        changed.Elevation =
            ClampToInt16(RoundHalfEven(old.Elevation + (wanted - old.Elevation) * share));
        if (changed == old)
            return;
        auto& stretches = delta_.Values.Stretches;
        if (!stretches.empty() &&
            stretches.back().Serial + stretches.back().Count == serial)
            ++stretches.back().Count;
        else
            stretches.push_back({serial, 1});
        delta_.Values.Old.push_back(old);
        delta_.Values.New.push_back(changed);
    }
    PostDelta Take() { return std::move(delta_); }

private:
    const Terrain& terrain_;
    PostDelta delta_;
};

// Calls take(x, y) for the posts of the terrain that lie within `reach` of some places,
// row by row, as far as the bounds let.
template <typename Take>
void ForEachNear(const std::vector<PostPlace>& places, int32_t reach, int32_t width,
                 const Selection* bounds, Take take) {
    std::vector<RowSpan> spans;
    for (const PostPlace& place : places) {
        const PostBox box = CutToGrid(
            {place.X - reach, place.Y - reach, place.X + reach, place.Y + reach}, width);
        for (int32_t y = box.Y1; y <= box.Y2; ++y)
            spans.push_back({y, box.X1, box.X2});
    }
    Selection near(std::move(spans));
    if (bounds != nullptr)
        near = Common(near, *bounds);
    for (const RowSpan& span : near.Spans())
        for (int32_t x = span.X1; x <= span.X2; ++x)
            take(x, span.Y);
}

} // namespace

PostDelta BrushedHeights(const Terrain& terrain, const std::vector<PostPlace>& line,
                         const PostBrush& brush, const Selection* bounds) {
    if (line.empty())
        return {};
    const PostHeights heights(terrain);
    const PostBox all{0, 0, terrain.MapWidth - 1, terrain.MapWidth - 1};
    const double level =
        Contains(all, line.front()) ? heights.At(line.front().X, line.front().Y) : 0;
    const double radius = RadiusOf(brush.Size);
    HeightDeltaWriter writer(terrain);
    const int32_t reach = brush.Size / 2 + 1;
    ForEachNear(line, reach, terrain.MapWidth, bounds, [&](int32_t x, int32_t y) {
        double share = 0;
        for (const PostPlace& place : line) {
            // A hard brush covers a square, a soft one a circle.
            const bool under = Contains(BrushAt(place, brush.Size), {x, y});
            const double fading = SoftShare(std::hypot(x - place.X, y - place.Y), radius);
            share = std::max(share, brush.Soft ? fading : under ? 1.0 : 0.0);
        }
        if (share > 0)
            writer.Add(x, y, WantedHeight(heights, x, y, brush.Shape, brush.Feet, level),
                       share);
    });
    return writer.Take();
}

PostDelta ShapedHeights(const Terrain& terrain, const Selection& selection,
                        PostShape shape, int16_t feet) {
    const PostHeights heights(terrain);
    double sum = 0;
    for (const RowSpan& span : selection.Spans())
        for (int32_t x = span.X1; x <= span.X2; ++x)
            sum += heights.At(x, span.Y);
    const auto count = static_cast<double>(selection.Count());
    HeightDeltaWriter writer(terrain);
    for (const RowSpan& span : selection.Spans())
        for (int32_t x = span.X1; x <= span.X2; ++x)
            writer.Add(x, span.Y,
                       WantedHeight(heights, x, span.Y, shape, feet, sum / count), 1);
    return writer.Take();
}

PostDelta SlopedHeights(const Terrain& terrain, PostPlace from, PostPlace to,
                        int32_t size, bool soft, const Selection* bounds) {
    const PostBox all{0, 0, terrain.MapWidth - 1, terrain.MapWidth - 1};
    if (!Contains(all, from) || !Contains(all, to))
        return {};
    const PostHeights heights(terrain);
    const double first = heights.At(from.X, from.Y);
    const double last = heights.At(to.X, to.Y);
    const double across = to.X - from.X;
    const double up = to.Y - from.Y;
    const double length = std::hypot(across, up);
    const int32_t steps = std::max(std::abs(to.X - from.X), std::abs(to.Y - from.Y));
    std::vector<PostPlace> line;
    for (int32_t i = 0; i <= steps; ++i) {
        const double part = steps == 0 ? 0 : static_cast<double>(i) / steps;
        line.push_back(
            {from.X + ClampToInt32(across * part), from.Y + ClampToInt32(up * part)});
    }
    const double radius = RadiusOf(size);
    HeightDeltaWriter writer(terrain);
    ForEachNear(line, size / 2 + 1, terrain.MapWidth, bounds, [&](int32_t x, int32_t y) {
        // The nearest place on the line, as a share of the way.
        const double part = length == 0
                                ? 0
                                : std::clamp(((x - from.X) * across + (y - from.Y) * up) /
                                                 (length * length),
                                             0.0, 1.0);
        const double distance =
            std::hypot(x - from.X - across * part, y - from.Y - up * part);
        const double share = soft                ? SoftShare(distance, radius)
                             : distance < radius ? 1.0
                                                 : 0.0;
        if (share > 0)
            writer.Add(x, y, first + (last - first) * part, share);
    });
    return writer.Take();
}

} // namespace vardenix
