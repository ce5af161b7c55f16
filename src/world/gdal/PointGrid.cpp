#include "world/gdal/PointGrid.h"

#include "world/gdal/Datasets.h"

#include <algorithm>
#include <iomanip>
#include <memory>
#include <ogr_spatialref.h>
#include <sstream>
#include <vector>

namespace vardenix {

namespace {

constexpr const char* ThePlace = "the place";

// Evenly, both ends included.
double Between(double from, double to, int step, int count) {
    return from + (to - from) * step / std::max(count - 1, 1);
}

} // namespace

std::string PointGridOf(const RasterRequest& request) {
    const OGRSpatialReference system = SystemOf(ThePlace, request.System);
    const OGRSpatialReference degrees = Degrees();
    const auto [left, bottom, right, top] = request.Edges;
    const auto [columns, rows] = request.Size;
    std::vector<double> x;
    std::vector<double> y;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            x.push_back(Between(left, right, column, columns));
            y.push_back(Between(bottom, top, row, rows));
        }
    const std::unique_ptr<OGRCoordinateTransformation> transform(
        OGRCreateCoordinateTransformation(&system, &degrees));
    if (!transform ||
        transform->Transform(static_cast<int>(x.size()), x.data(), y.data()) == FALSE)
        Refuse(ThePlace, "it lies beyond what its reference system can tell");
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(9);
    for (size_t i = 0; i < x.size(); ++i)
        text << x[i] << ' ' << y[i] << '\n';
    return text.str();
}

} // namespace vardenix
