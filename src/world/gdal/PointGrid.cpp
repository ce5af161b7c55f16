#include "world/gdal/PointGrid.h"

#include "world/gdal/Datasets.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

// Evenly, both ends included.
double Between(double from, double to, int step, int count) {
    return from + (to - from) * step / std::max(count - 1, 1);
}

} // namespace

std::string PointGridOf(const RasterRequest& request) {
    const auto [left, bottom, right, top] = request.Edges;
    const auto [columns, rows] = request.Size;
    std::vector<double> x;
    std::vector<double> y;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            x.push_back(Between(left, right, column, columns));
            y.push_back(Between(bottom, top, row, rows));
        }
    return LinesOfDegrees(request.System, std::move(x), std::move(y));
}

} // namespace vardenix
