#include "mapview/PatchSurface.h"

#include <vector>

namespace vardenix {

void PatchSurface::Polygon(std::span<const PicturePoint> points) {
    std::vector<PicturePoint> moved;
    for (const PicturePoint& point : points)
        moved.push_back(Moved(point));
    small_.Polygon(moved);
}

void PatchSurface::Polyline(std::span<const PicturePoint> points) {
    std::vector<PicturePoint> moved;
    for (const PicturePoint& point : points)
        moved.push_back(Moved(point));
    small_.Polyline(moved);
}

} // namespace vardenix
