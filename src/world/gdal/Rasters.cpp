#include "world/gdal/Rasters.h"

#include <algorithm>
#include <cmath>
#include <cpl_conv.h>
#include <cpl_string.h>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <gdal_priv.h>
#include <gdal_utils.h>
#include <iomanip>
#include <limits>
#include <memory>
#include <ogr_spatialref.h>
#include <set>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace vardenix {

namespace {

constexpr int LargestSide = 100000; // pixels of a map
constexpr double LargestArea = 4e9; // pixels
constexpr int PngOffset = 32768;    // what PNG adds, which knows no minus
constexpr const char* PngWords = "heights in feet + 32768";
constexpr const char* PngKey = "DESCRIPTION";
constexpr std::array Readable{"GTiff", "SRTMHGT", "AAIGrid", "HFA", "PNG"};

struct CloseDataset {
    void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<GDALDataset, CloseDataset>;

// The library's words, without the names of files of ours.
std::string LibrarySays() {
    const std::string words = CPLGetLastErrorMsg();
    return words.empty() ? "it is damaged, or no map of a kind that is read" : words;
}

[[noreturn]] void Refuse(const std::string& file, const std::string& why) {
    throw MapRefused(file + ": " + why);
}

Dataset OpenMap(const std::string& file) {
    struct stat status {};
    // No name of the library's own, which could lead elsewhere.
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        Refuse(file, "there is no such file");
    std::vector<const char*> drivers(Readable.begin(), Readable.end());
    drivers.push_back(nullptr);
    Dataset map(GDALDataset::Open(
        file.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR,
        drivers.data(), nullptr, nullptr));
    if (!map)
        Refuse(file, "GeoTIFF, HGT, ASC, IMG, and PNG and TIFF of 16 bits are read; " +
                         LibrarySays());
    if (map->GetRasterCount() < 1)
        Refuse(file, "it holds no raster");
    const int width = map->GetRasterXSize();
    const int height = map->GetRasterYSize();
    if (width > LargestSide || height > LargestSide ||
        double(width) * height > LargestArea)
        Refuse(file, "it says that it has " + std::to_string(width) + " by " +
                         std::to_string(height) +
                         " pixels; a map has at most 100000 a side and 4000 million in "
                         "all, so cut a part out of it");
    return map;
}

void RequireSystem(const std::string& file, const std::string& system) {
    OGRSpatialReference known;
    if (known.SetFromUserInput(
            system.c_str(), OGRSpatialReference::SET_FROM_USER_INPUT_LIMITATIONS_get()) !=
        OGRERR_NONE)
        Refuse(file, "\"" + system +
                         "\" is no reference system that is known: give an EPSG number, "
                         "WKT or PROJ text");
}

std::string Text(double number) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::setprecision(17) << number;
    return text.str();
}

std::vector<std::string> WarpWords(const RasterRequest& request) {
    std::vector<std::string> words{"-of",     "MEM",    "-ot",
                                   "Float32", "-t_srs", request.System};
    words.emplace_back("-te");
    for (const double edge : request.Edges)
        words.push_back(Text(edge));
    if (!request.MapSystem.empty())
        words.insert(words.end(), {"-s_srs", request.MapSystem});
    return words;
}

using Words = std::vector<std::string>;

CPLStringList ListOf(const Words& words) {
    CPLStringList list;
    for (const std::string& word : words)
        list.AddString(word.c_str());
    return list;
}

Dataset Warped(const RasterRequest& request, GDALDataset& map) {
    if (request.MapSystem.empty() && map.GetSpatialRef() == nullptr)
        Refuse(request.From, "it does not tell its reference system; name it, or stretch "
                             "the map over a rectangle");
    RequireSystem(request.From, request.System);
    Words words = WarpWords(request);
    words.insert(words.end(),
                 {"-ts", std::to_string(request.Size[0]), std::to_string(request.Size[1]),
                  "-r", request.Resample, "-wm", "64", "-dstnodata", "nan"});
    if (request.NoData)
        words.insert(words.end(), {"-srcnodata", Text(*request.NoData)});
    CPLStringList list = ListOf(words);
    const std::unique_ptr<GDALWarpAppOptions, void (*)(GDALWarpAppOptions*)> options(
        GDALWarpAppOptionsNew(list.List(), nullptr), GDALWarpAppOptionsFree);
    GDALDatasetH source = &map;
    int misused = 0;
    Dataset warped(GDALDataset::FromHandle(
        GDALWarp("", nullptr, 1, &source, options.get(), &misused)));
    if (!warped)
        Refuse(request.From, LibrarySays());
    return warped;
}

Dataset Stretched(const RasterRequest& request, GDALDataset& map) {
    Words words{"-of",
                "MEM",
                "-ot",
                "Float32",
                "-b",
                "1",
                "-r",
                request.Resample,
                "-outsize",
                std::to_string(request.Size[0]),
                std::to_string(request.Size[1])};
    if (request.NoData)
        words.insert(words.end(), {"-a_nodata", Text(*request.NoData)});
    CPLStringList list = ListOf(words);
    const std::unique_ptr<GDALTranslateOptions, void (*)(GDALTranslateOptions*)> options(
        GDALTranslateOptionsNew(list.List(), nullptr), GDALTranslateOptionsFree);
    int misused = 0;
    Dataset stretched(
        GDALDataset::FromHandle(GDALTranslate("", &map, options.get(), &misused)));
    if (!stretched)
        Refuse(request.From, LibrarySays());
    return stretched;
}

bool IsOfOurs(GDALDataset& map) {
    const char* words = map.GetMetadataItem(PngKey);
    return std::string_view(map.GetDriver()->GetDescription()) == "PNG" &&
           words != nullptr && std::string_view(words) == PngWords;
}

void WriteRows(const RasterRequest& request, GDALRasterBand& band, float less) {
    int knowsNoData = 0;
    const double noData = band.GetNoDataValue(&knowsNoData);
    std::ofstream out(request.To, std::ios::binary);
    const auto columns = static_cast<size_t>(request.Size[0]);
    std::vector<float> row(columns);
    for (int y = request.Size[1] - 1; y >= 0 && out; --y) {
        if (band.RasterIO(GF_Read, 0, y, request.Size[0], 1, row.data(), request.Size[0],
                          1, GDT_Float32, 0, 0, nullptr) != CE_None)
            Refuse(request.From, LibrarySays());
        for (float& value : row) {
            if (!std::isfinite(value) ||
                (knowsNoData != 0 && value == static_cast<float>(noData)) ||
                (request.NoData && value == static_cast<float>(*request.NoData)))
                value = std::numeric_limits<float>::quiet_NaN();
            else
                value -= less;
        }
        out.write(reinterpret_cast<const char*>(row.data()),
                  static_cast<std::streamsize>(columns * sizeof(float)));
    }
    out.close();
    if (!out)
        Refuse(request.To, "it cannot be written; is the disk full?");
}

Dataset MemoryOf(const RasterRequest& request, GDALDataType type) {
    GDALDriver* memory = GetGDALDriverManager()->GetDriverByName("MEM");
    return Dataset(
        memory->Create("", request.Size[0], request.Size[1], 1, type, nullptr));
}

// What was written before is not taken for the whole.
template <typename Number>
void FillRows(const RasterRequest& request, GDALDataset& memory, GDALDataType type,
              int more) {
    std::ifstream in(request.From, std::ios::binary);
    const auto columns = static_cast<size_t>(request.Size[0]);
    std::vector<int16_t> given(columns);
    std::vector<Number> row(columns);
    for (int y = request.Size[1] - 1; y >= 0; --y) {
        if (!in.read(reinterpret_cast<char*>(given.data()),
                     static_cast<std::streamsize>(columns * sizeof(int16_t))))
            Refuse(request.From, "it is too short");
        std::ranges::transform(given, row.begin(), [more](int16_t value) {
            return static_cast<Number>(value + more);
        });
        if (memory.GetRasterBand(1)->RasterIO(GF_Write, 0, y, request.Size[0], 1,
                                              row.data(), request.Size[0], 1, type, 0, 0,
                                              nullptr) != CE_None)
            Refuse(request.To, LibrarySays());
    }
}

std::string EndingOf(const std::string& file) {
    std::string ending = file.substr(std::min(file.rfind('.'), file.size()));
    std::ranges::transform(ending, ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a')
                                              : letter;
    });
    return ending;
}

const char* DriverFor(const std::string& file) {
    const std::string ending = EndingOf(file);
    if (ending == ".tif" || ending == ".tiff")
        return "GTiff";
    if (ending == ".asc")
        return "AAIGrid";
    if (ending == ".png")
        return "PNG";
    Refuse(file, "its ending must be .tif, .asc or .png");
}

void Place(const RasterRequest& request, GDALDataset& memory) {
    RequireSystem(request.To, request.System);
    OGRSpatialReference system;
    system.SetFromUserInput(request.System.c_str());
    const auto [left, bottom, right, top] = request.Edges;
    std::array<double, 6> transform{left, (right - left) / request.Size[0], 0, top,
                                    0,    (bottom - top) / request.Size[1]};
    memory.SetSpatialRef(&system);
    memory.SetGeoTransform(transform.data());
}

} // namespace

void KnowFewDrivers() {
    GDALAllRegister();
    GDALDriverManager& drivers = *GetGDALDriverManager();
    std::set<std::string_view> wanted(Readable.begin(), Readable.end());
    wanted.insert("MEM");
    for (int i = drivers.GetDriverCount() - 1; i >= 0; --i) {
        GDALDriver* driver = drivers.GetDriver(i);
        if (!wanted.contains(driver->GetDescription()))
            drivers.DeregisterDriver(driver);
    }
}

void ReadRaster(const RasterRequest& request) {
    const Dataset map = OpenMap(request.From);
    const bool ours = IsOfOurs(*map);
    const Dataset placed =
        request.System.empty() ? Stretched(request, *map) : Warped(request, *map);
    WriteRows(request, *placed->GetRasterBand(1),
              ours ? static_cast<float>(PngOffset) : 0);
}

void WriteRaster(const RasterRequest& request) {
    const std::string_view driver = DriverFor(request.To);
    const bool isPng = driver == "PNG";
    const GDALDataType type = isPng ? GDT_UInt16 : GDT_Int16;
    const Dataset memory = MemoryOf(request, type);
    if (!memory)
        Refuse(request.To, LibrarySays());
    Place(request, *memory);
    CPLStringList options;
    if (isPng) {
        FillRows<uint16_t>(request, *memory, type, PngOffset);
        options.AddNameValue("DESCRIPTION", PngWords);
    } else {
        FillRows<int16_t>(request, *memory, type, 0);
    }
    if (driver == "GTiff")
        options.AddNameValue("COMPRESS", "DEFLATE");
    const Dataset made(GetGDALDriverManager()
                           ->GetDriverByName(driver.data())
                           ->CreateCopy(request.To.c_str(), memory.get(), FALSE,
                                        options.List(), nullptr, nullptr));
    if (!made)
        Refuse(request.To, LibrarySays());
}

std::string CornersOf(const RasterRequest& request) {
    RequireSystem("the place", request.System);
    OGRSpatialReference system;
    system.SetFromUserInput(request.System.c_str());
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    OGRSpatialReference degrees;
    degrees.SetWellKnownGeogCS("WGS84");
    degrees.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const std::unique_ptr<OGRCoordinateTransformation> transform(
        OGRCreateCoordinateTransformation(&system, &degrees));
    const auto [left, bottom, right, top] = request.Edges;
    std::array x{left, right, left, right};
    std::array y{bottom, bottom, top, top};
    if (!transform || transform->Transform(4, x.data(), y.data()) == FALSE)
        Refuse("the place", "its corners lie beyond what the reference system can tell");
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(9);
    for (size_t i = 0; i < x.size(); ++i)
        text << x[i] << ' ' << y[i] << '\n';
    return text.str();
}

} // namespace vardenix
