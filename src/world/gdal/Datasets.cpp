#include "world/gdal/Datasets.h"

#include <cpl_error.h>
#include <iomanip>
#include <limits>
#include <set>
#include <sstream>
#include <string_view>
#include <sys/stat.h>

namespace vardenix {

void KnowFewDrivers() {
    GDALAllRegister();
    GDALDriverManager& drivers = *GetGDALDriverManager();
    std::set<std::string_view> wanted(Readable.begin(), Readable.end());
    wanted.insert(ReadableShapes.begin(), ReadableShapes.end());
    wanted.insert("MEM");
    for (int i = drivers.GetDriverCount() - 1; i >= 0; --i) {
        GDALDriver* driver = drivers.GetDriver(i);
        if (!wanted.contains(driver->GetDescription()))
            drivers.DeregisterDriver(driver);
    }
}

std::string LibrarySays() {
    const std::string words = CPLGetLastErrorMsg();
    return words.empty() ? "it is damaged, or no map of a kind that is read" : words;
}

void Refuse(const std::string& file, const std::string& why) {
    throw MapRefused(file + ": " + why);
}

Dataset OpenDataset(const std::string& file, unsigned flags,
                    std::span<const char* const> drivers, const std::string& kinds) {
    struct stat status {};
    // No name of the library's own, which could lead elsewhere.
    if (file.starts_with("/vsi") || ::stat(file.c_str(), &status) != 0 ||
        !S_ISREG(status.st_mode))
        Refuse(file, "there is no such file");
    std::vector<const char*> list(drivers.begin(), drivers.end());
    list.push_back(nullptr);
    Dataset map(GDALDataset::Open(file.c_str(),
                                  flags | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR,
                                  list.data(), nullptr, nullptr));
    if (!map)
        Refuse(file, kinds + " are read; " + LibrarySays());
    return map;
}

OGRSpatialReference SystemOf(const std::string& file, const std::string& system) {
    OGRSpatialReference known;
    if (known.SetFromUserInput(
            system.c_str(), OGRSpatialReference::SET_FROM_USER_INPUT_LIMITATIONS_get()) !=
        OGRERR_NONE)
        Refuse(file, "\"" + system +
                         "\" is no reference system that is known: give an EPSG number, "
                         "WKT or PROJ text");
    known.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return known;
}

OGRSpatialReference Degrees() {
    OGRSpatialReference degrees;
    degrees.SetWellKnownGeogCS("WGS84");
    degrees.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return degrees;
}

std::string LinesOfDegrees(const std::string& system, std::vector<double> x,
                           std::vector<double> y) {
    constexpr const char* place = "the place";
    const OGRSpatialReference from = SystemOf(place, system);
    const OGRSpatialReference to = Degrees();
    const std::unique_ptr<OGRCoordinateTransformation> transform(
        OGRCreateCoordinateTransformation(&from, &to));
    if (!transform ||
        transform->Transform(static_cast<int>(x.size()), x.data(), y.data()) == FALSE)
        Refuse(place, "it lies beyond what its reference system can tell");
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(9);
    for (size_t i = 0; i < x.size(); ++i)
        text << x[i] << ' ' << y[i] << '\n';
    return text.str();
}

std::string Text(double number) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::setprecision(std::numeric_limits<double>::max_digits10) << number;
    return text.str();
}

} // namespace vardenix
