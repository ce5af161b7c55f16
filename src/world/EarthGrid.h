#pragma once

#include "world/WorldHelper.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vardenix {

// A place on the terrain, from its lower left corner: parts of its whole width and
// height, 0 to 1.
struct TerrainPart {
    double Across = 0;
    double Up = 0;
};

// Longitudes and latitudes all over a theater: known at the points of a coarse grid, and
// found between them without asking anybody, to a small part of a post.
class EarthGrid {
public:
    static constexpr int32_t Side = 33; // points

    // Side by Side of them, as WorldHelper::GridOf has them over the whole terrain.
    explicit EarthGrid(std::vector<GeographicPoint> points);

    GeographicPoint At(const TerrainPart& part) const;
    // Nothing for a point that does not lie on the terrain.
    std::optional<TerrainPart> Find(const GeographicPoint& point) const;

private:
    GeographicPoint Inside(const TerrainPart& part) const;
    TerrainPart Nearest(const GeographicPoint& point) const;

    std::vector<GeographicPoint> points_; // longitudes without a leap at 180 degrees
};

} // namespace vardenix
