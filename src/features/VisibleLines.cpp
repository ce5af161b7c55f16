#include "features/VisibleLines.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vardenix {

namespace {

bool IsFar(PicturePoint point) {
    return std::abs(point.X) > FarPixel || std::abs(point.Y) > FarPixel;
}

RealBounds BoundsOf(PicturePoint a, PicturePoint b) {
    return {std::min(a.X, b.X), std::min(a.Y, b.Y), std::max(a.X, b.X),
            std::max(a.Y, b.Y)};
}

bool Same(PicturePoint a, PicturePoint b) { return a.X == b.X && a.Y == b.Y; }

PicturePoint Between(PicturePoint a, PicturePoint b, double share) {
    return {a.X + (b.X - a.X) * share, a.Y + (b.Y - a.Y) * share};
}

// One of the four edges at FarPixel.
struct Edge {
    bool Across; // of X, else of Y
    double Sign; // of the side that is cut off

    double Beyond(PicturePoint point) const {
        return Sign * (Across ? point.X : point.Y) - FarPixel;
    }
    // Where the line between a point inside and one beyond meets the edge.
    PicturePoint Meeting(PicturePoint a, PicturePoint b) const {
        PicturePoint at = Between(a, b, Beyond(a) / (Beyond(a) - Beyond(b)));
        (Across ? at.X : at.Y) = Sign * FarPixel;
        return at;
    }
};
constexpr std::array Edges{Edge{true, 1}, Edge{true, -1}, Edge{false, 1},
                           Edge{false, -1}};

// Brings far ends nearer along the line; false when nothing of it is near.
bool BringNear(PicturePoint& a, PicturePoint& b) {
    for (const Edge& edge : Edges) {
        const bool aBeyond = edge.Beyond(a) > 0;
        const bool bBeyond = edge.Beyond(b) > 0;
        if (aBeyond && bBeyond)
            return false;
        if (aBeyond)
            a = edge.Meeting(a, b);
        else if (bBeyond)
            b = edge.Meeting(a, b);
    }
    return true;
}

} // namespace

void ForEachVisibleStretch(
    std::span<const PicturePoint> points, const RealBounds& touched,
    const std::function<void(std::span<const PicturePoint>)>& draw) {
    std::vector<PicturePoint> stretch;
    const auto end = [&] {
        if (!stretch.empty())
            draw(stretch);
        stretch.clear();
    };
    for (size_t i = 1; i < points.size(); ++i) {
        PicturePoint from = points[i - 1];
        PicturePoint to = points[i];
        const bool seen = touched.Meets(BoundsOf(from, to)) && BringNear(from, to);
        if (!seen || (!stretch.empty() && !Same(stretch.back(), from)))
            end();
        if (!seen)
            continue;
        if (stretch.empty())
            stretch.push_back(from);
        stretch.push_back(to);
    }
    end();
}

std::vector<PicturePoint> NearPolygon(std::vector<PicturePoint> points) {
    if (std::ranges::none_of(points, IsFar))
        return points;
    for (const Edge& edge : Edges) {
        std::vector<PicturePoint> kept;
        for (size_t i = 0; i < points.size(); ++i) {
            const PicturePoint from = points[(i + points.size() - 1) % points.size()];
            const PicturePoint to = points[i];
            const bool fromInside = edge.Beyond(from) <= 0;
            const bool toInside = edge.Beyond(to) <= 0;
            if (fromInside != toInside)
                kept.push_back(edge.Meeting(from, to));
            if (toInside)
                kept.push_back(to);
        }
        points = std::move(kept);
    }
    return points;
}

} // namespace vardenix
