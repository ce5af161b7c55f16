#include "mapview/PatchSurface.h"

#include <vector>

namespace vardenix {

void PatchSurface::Polygon(std::span<const PicturePoint> points) {
    std::vector<PicturePoint> moved;
    moved.reserve(points.size());
    for (const PicturePoint& point : points)
        moved.push_back(Moved(point));
    small_.Polygon(moved);
}

void PatchSurface::Polyline(std::span<const PicturePoint> points) {
    std::vector<PicturePoint> moved;
    moved.reserve(points.size());
    for (const PicturePoint& point : points)
        moved.push_back(Moved(point));
    small_.Polyline(moved);
}

} // namespace vardenix
