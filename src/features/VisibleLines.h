#pragma once

#include "mapview/DrawingSurface.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace vardenix {

// A rectangle; what lies on its border belongs to it.
struct RealBounds {
    double Left = 0;
    double Top = 0;
    double Right = 0;
    double Bottom = 0;

    bool Meets(const RealBounds& other) const {
        return Left <= other.Right && other.Left <= Right && Top <= other.Bottom &&
               other.Top <= Bottom;
    }
};

// Pixels beyond which corners are brought nearer along their lines: a surface's own
// coordinates end at a million.
constexpr double FarPixel = 500000;

// Calls `draw` with every stretch of the line through `points` that can touch the
// picture, `touched` being the picture and as much round it as the pen reaches. Drawn one
// by one they give the pixels of the whole line.
void ForEachVisibleStretch(
    std::span<const PicturePoint> points, const RealBounds& touched,
    const std::function<void(std::span<const PicturePoint>)>& draw);

// The polygon with what lies beyond FarPixel cut off; the picture keeps every pixel.
std::vector<PicturePoint> NearPolygon(std::vector<PicturePoint> points);

} // namespace vardenix
