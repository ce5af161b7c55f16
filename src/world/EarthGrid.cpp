#include "world/EarthGrid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace vardenix {

namespace {

constexpr double FullCircle = 360;
constexpr int32_t Nodes = 4; // along a side, that a value is found from
constexpr int MostSteps = 30;
constexpr double CloseEnough = 1e-8; // degrees: a millimetre
constexpr double TinyPart = 1e-4;

// The one of all longitudes of a place that lies nearest to another longitude.
double NearTo(double longitude, double other) {
    return longitude + FullCircle * std::round((other - longitude) / FullCircle);
}

struct NodesAt {
    int32_t First = 0;
    std::array<double, Nodes> Weights{};
};

// The cubic through four neighbours.
NodesAt NodesOf(double part) {
    const double at = part * (EarthGrid::Side - 1);
    const int32_t first =
        std::clamp(static_cast<int32_t>(std::floor(std::clamp(at, 0., 1e3))) - 1, 0,
                   EarthGrid::Side - Nodes);
    const double t = at - first;
    return {first,
            {-(t - 1) * (t - 2) * (t - 3) / 6, t * (t - 2) * (t - 3) / 2,
             -t * (t - 1) * (t - 3) / 2, t * (t - 1) * (t - 2) / 6}};
}

// East west distances shrink towards the poles.
double Shrinking(double latitude) {
    return std::cos(latitude * std::numbers::pi / FullCircle * 2);
}

} // namespace

EarthGrid::EarthGrid(std::vector<GeographicPoint> points) : points_(std::move(points)) {
    points_.resize(size_t{Side} * Side);
    for (GeographicPoint& point : points_)
        point.Longitude = NearTo(point.Longitude, points_.front().Longitude);
}

GeographicPoint EarthGrid::Inside(const TerrainPart& part) const {
    const NodesAt across = NodesOf(part.Across);
    const NodesAt up = NodesOf(part.Up);
    GeographicPoint sum;
    for (int32_t row = 0; row < Nodes; ++row)
        for (int32_t column = 0; column < Nodes; ++column) {
            const double weight = across.Weights.at(static_cast<size_t>(column)) *
                                  up.Weights.at(static_cast<size_t>(row));
            const int32_t index = (up.First + row) * Side + across.First + column;
            const GeographicPoint& point = points_[static_cast<size_t>(index)];
            sum.Longitude += weight * point.Longitude;
            sum.Latitude += weight * point.Latitude;
        }
    return sum;
}

GeographicPoint EarthGrid::At(const TerrainPart& part) const {
    const GeographicPoint point = Inside(part);
    return {NearTo(point.Longitude, 0), point.Latitude};
}

TerrainPart EarthGrid::Nearest(const GeographicPoint& point) const {
    double least = std::numeric_limits<double>::infinity();
    TerrainPart nearest;
    for (int32_t row = 0; row < Side; ++row)
        for (int32_t column = 0; column < Side; ++column) {
            const int32_t index = row * Side + column;
            const GeographicPoint& other = points_[static_cast<size_t>(index)];
            const double distance = std::hypot((other.Longitude - point.Longitude) *
                                                   Shrinking(point.Latitude),
                                               other.Latitude - point.Latitude);
            if (distance >= least)
                continue;
            least = distance;
            nearest = {column / (Side - 1.), row / (Side - 1.)};
        }
    return nearest;
}

std::optional<TerrainPart> EarthGrid::Find(const GeographicPoint& point) const {
    const GeographicPoint middle = Inside({0.5, 0.5});
    const GeographicPoint wanted{NearTo(point.Longitude, middle.Longitude),
                                 point.Latitude};
    TerrainPart part = Nearest(wanted);
    for (int step = 0; step < MostSteps; ++step) {
        const GeographicPoint here = Inside(part);
        const double east = wanted.Longitude - here.Longitude;
        const double north = wanted.Latitude - here.Latitude;
        if (std::abs(east) < CloseEnough && std::abs(north) < CloseEnough) {
            if (part.Across < 0 || part.Across >= 1 || part.Up < 0 || part.Up >= 1)
                return std::nullopt;
            return part;
        }
        const GeographicPoint right = Inside({part.Across + TinyPart, part.Up});
        const GeographicPoint above = Inside({part.Across, part.Up + TinyPart});
        const double a = (right.Longitude - here.Longitude) / TinyPart;
        const double b = (above.Longitude - here.Longitude) / TinyPart;
        const double c = (right.Latitude - here.Latitude) / TinyPart;
        const double d = (above.Latitude - here.Latitude) / TinyPart;
        const double determinant = a * d - b * c;
        if (determinant == 0)
            return std::nullopt;
        // A little beyond the edge is enough to tell that it lies there.
        part.Across =
            std::clamp(part.Across + (d * east - b * north) / determinant, -0.05, 1.05);
        part.Up = std::clamp(part.Up + (a * north - c * east) / determinant, -0.05, 1.05);
    }
    return std::nullopt;
}

} // namespace vardenix
