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
        writer_.Add(serial, old, changed);
    }
    PostDelta Take() { return writer_.Take(); }

private:
    const Terrain& terrain_;
    DeltaWriter writer_;
};

// How much a brush does to each post that it comes by: the most of any place of its line.
class ShareOfBrush {
public:
    ShareOfBrush(const std::vector<PostPlace>& line, const PostBrush& brush,
                 int32_t width) {
        const int32_t reach = ReachOf(brush);
        box_ = {line.front().X, line.front().Y, line.front().X, line.front().Y};
        for (const PostPlace& place : line)
            box_ = {std::min(box_.X1, place.X), std::min(box_.Y1, place.Y),
                    std::max(box_.X2, place.X), std::max(box_.Y2, place.Y)};
        box_ = CutToGrid(
            {box_.X1 - reach, box_.Y1 - reach, box_.X2 + reach, box_.Y2 + reach}, width);
        if (box_.X2 < box_.X1 || box_.Y2 < box_.Y1)
            return;
        across_ = static_cast<size_t>(box_.X2 - box_.X1) + 1;
        shares_.resize(across_ * (static_cast<size_t>(box_.Y2 - box_.Y1) + 1));
        for (const PostPlace& place : line)
            AddPlace(place, brush);
    }
    static int32_t ReachOf(const PostBrush& brush) { return brush.Size / 2 + 1; }
    double operator()(int32_t x, int32_t y) const { return shares_[At(x, y)]; }

private:
    size_t At(int32_t x, int32_t y) const {
        return static_cast<size_t>(y - box_.Y1) * across_ +
               static_cast<size_t>(x - box_.X1);
    }
    void AddPlace(PostPlace place, const PostBrush& brush) {
        const int32_t reach = ReachOf(brush);
        const double radius = RadiusOf(brush.Size);
        const PostBox under = BrushAt(place, brush.Size);
        for (int32_t y = std::max(place.Y - reach, box_.Y1);
             y <= std::min(place.Y + reach, box_.Y2); ++y)
            for (int32_t x = std::max(place.X - reach, box_.X1);
                 x <= std::min(place.X + reach, box_.X2); ++x) {
                // A hard brush covers a square, a soft one a circle.
                const double part =
                    brush.Soft ? SoftShare(std::hypot(x - place.X, y - place.Y), radius)
                               : (Contains(under, {x, y}) ? 1.0 : 0.0);
                double& share = shares_[At(x, y)];
                share = std::max(share, part);
            }
    }

    PostBox box_;
    size_t across_ = 0;
    std::vector<double> shares_;
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
    const ShareOfBrush share(line, brush, terrain.MapWidth);
    HeightDeltaWriter writer(terrain);
    ForEachNear(line, ShareOfBrush::ReachOf(brush), terrain.MapWidth, bounds,
                [&](int32_t x, int32_t y) {
                    if (const double part = share(x, y); part > 0)
                        writer.Add(
                            x, y,
                            WantedHeight(heights, x, y, brush.Shape, brush.Feet, level),
                            part);
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
