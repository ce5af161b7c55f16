#include "world/gdal/Rasters.h"

#include "world/gdal/Datasets.h"

#include <algorithm>
#include <cmath>
#include <cpl_string.h>
#include <cstdint>
#include <fstream>
#include <gdal_priv.h>
#include <gdal_utils.h>
#include <limits>
#include <memory>
#include <ogr_spatialref.h>
#include <string_view>
#include <vector>

namespace vardenix {

namespace {

constexpr int LargestSide = 100000;                               // pixels of a map
constexpr double LargestArea = 4e9;                               // pixels
constexpr int32_t NoNumber = std::numeric_limits<int32_t>::min(); // of whole numbers
constexpr int PngOffset = 32768; // what PNG adds, which knows no minus
constexpr const char* PngWords = "heights in feet + 32768";
constexpr const char* PngKey = "DESCRIPTION";
constexpr std::array Readable{"GTiff", "SRTMHGT", "AAIGrid", "HFA", "PNG"};

Dataset OpenMap(const std::string& file) {
    Dataset map = OpenDataset(file, GDAL_OF_RASTER, Readable,
                              "GeoTIFF, HGT, ASC, IMG, and PNG and TIFF of 16 bits");
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

// Heights may lose what is behind the point of a foot; whole numbers nothing.
const char* TypeWord(const RasterRequest& request) {
    return request.Whole ? "Float64" : "Float32";
}

std::vector<std::string> WarpWords(const RasterRequest& request) {
    std::vector<std::string> words{"-of",    "MEM",         "-ot", TypeWord(request),
                                   "-t_srs", request.System};
    words.emplace_back("-te");
    for (const double edge : request.Edges)
        words.push_back(Text(edge));
    if (!request.MapSystem.empty())
        words.insert(words.end(), {"-s_srs", request.MapSystem});
    return words;
}

CPLStringList ListOf(const std::vector<std::string>& words) {
    CPLStringList list;
    for (const std::string& word : words)
        list.AddString(word.c_str());
    return list;
}

Dataset Warped(const RasterRequest& request, GDALDataset& map) {
    if (request.MapSystem.empty() && map.GetSpatialRef() == nullptr)
        Refuse(request.From, "it does not tell its reference system; name it, or stretch "
                             "the map over a rectangle");
    SystemOf(request.From, request.System);
    std::vector<std::string> words = WarpWords(request);
    words.insert(words.end(),
                 {"-ts", std::to_string(request.Size[0]), std::to_string(request.Size[1]),
                  "-r", request.Resample, "-wm", "64", "-dstalpha"});
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
    std::vector<std::string> words{"-of",
                                   "MEM",
                                   "-ot",
                                   TypeWord(request),
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

// The row of a raster, not a number where there is no data.
class RowReader {
public:
    // `alpha`, of the same size, is 0 where there is no data; a map may have none.
    RowReader(const RasterRequest& request, GDALRasterBand& band, GDALRasterBand* alpha)
        : request_(request), band_(band), alpha_(alpha),
          values_(static_cast<size_t>(request.Size[0])), weights_(values_.size(), 1) {
        int known = 0;
        const double noData = band.GetNoDataValue(&known);
        if (known != 0)
            noData_ = noData;
    }
    const std::vector<double>& Read(int y) {
        ReadRow(band_, y, values_);
        if (alpha_ != nullptr)
            ReadRow(*alpha_, y, weights_);
        for (size_t i = 0; i < values_.size(); ++i)
            if (!std::isfinite(values_[i]) || weights_[i] == 0 ||
                Means(values_[i], noData_) || Means(values_[i], request_.NoData))
                values_[i] = std::numeric_limits<double>::quiet_NaN();
        return values_;
    }

private:
    void ReadRow(GDALRasterBand& band, int y, std::vector<double>& row) const {
        if (band.RasterIO(GF_Read, 0, y, request_.Size[0], 1, row.data(),
                          request_.Size[0], 1, GDT_Float64, 0, 0, nullptr) != CE_None)
            Refuse(request_.From, LibrarySays());
    }
    // A raster may have been made of less exact numbers than the one that is named.
    bool Means(double value, const std::optional<double>& noData) const {
        return noData &&
               (value == *noData || (!request_.Whole && static_cast<float>(value) ==
                                                            static_cast<float>(*noData)));
    }

    const RasterRequest& request_;
    GDALRasterBand& band_;
    GDALRasterBand* alpha_;
    std::vector<double> values_;
    std::vector<double> weights_;
    std::optional<double> noData_;
};

int32_t WholeNumber(const RasterRequest& request, double value) {
    if (std::isnan(value))
        return NoNumber;
    if (value != std::nearbyint(value) || value <= NoNumber ||
        value > std::numeric_limits<int32_t>::max())
        Refuse(request.From, "it has the value " + Text(value) +
                                 ", and only whole numbers of 32 bits mean something "
                                 "here");
    return static_cast<int32_t>(value);
}

template <typename Number, typename Make>
void WriteRows(const RasterRequest& request, GDALDataset& placed, Make make) {
    // What was warped has a band that tells where; it takes a third of the time that a
    // value meaning none would.
    RowReader rows(
        request, *placed.GetRasterBand(1),
        request.System.empty() ? nullptr : placed.GetRasterBand(placed.GetRasterCount()));
    std::ofstream out(request.To, std::ios::binary);
    std::vector<Number> row(static_cast<size_t>(request.Size[0]));
    for (int y = request.Size[1] - 1; y >= 0 && out; --y) {
        std::ranges::transform(rows.Read(y), row.begin(), make);
        out.write(reinterpret_cast<const char*>(row.data()),
                  static_cast<std::streamsize>(row.size() * sizeof(Number)));
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
template <typename Given>
void FillRows(const RasterRequest& request, GDALDataset& memory, int more) {
    std::ifstream in(request.From, std::ios::binary);
    const auto columns = static_cast<size_t>(request.Size[0]);
    std::vector<Given> given(columns);
    std::vector<int32_t> row(columns);
    for (int y = request.Size[1] - 1; y >= 0; --y) {
        if (!in.read(reinterpret_cast<char*>(given.data()),
                     static_cast<std::streamsize>(columns * sizeof(Given))))
            Refuse(request.From, "it is too short");
        std::ranges::transform(given, row.begin(),
                               [more](Given value) { return value + more; });
        if (memory.GetRasterBand(1)->RasterIO(GF_Write, 0, y, request.Size[0], 1,
                                              row.data(), request.Size[0], 1, GDT_Int32,
                                              0, 0, nullptr) != CE_None)
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
    const OGRSpatialReference system = SystemOf(request.To, request.System);
    const auto [left, bottom, right, top] = request.Edges;
    std::array<double, 6> transform{left, (right - left) / request.Size[0], 0, top,
                                    0,    (bottom - top) / request.Size[1]};
    memory.SetSpatialRef(&system);
    memory.SetGeoTransform(transform.data());
}

GDALDataType TypeOf(const RasterRequest& request, bool isPng) {
    if (isPng)
        return GDT_UInt16;
    return request.Whole ? GDT_Int32 : GDT_Int16;
}

} // namespace

void ReadRaster(const RasterRequest& request) {
    const Dataset map = OpenMap(request.From);
    const double less = IsOfOurs(*map) ? PngOffset : 0;
    const Dataset placed =
        request.System.empty() ? Stretched(request, *map) : Warped(request, *map);
    if (request.Whole)
        WriteRows<int32_t>(request, *placed, [&request](double value) {
            return WholeNumber(request, value);
        });
    else
        WriteRows<float>(request, *placed, [less](double value) {
            return static_cast<float>(value - less);
        });
}

void WriteRaster(const RasterRequest& request) {
    const std::string_view driver = DriverFor(request.To);
    const bool isPng = driver == "PNG";
    const Dataset memory = MemoryOf(request, TypeOf(request, isPng));
    if (!memory)
        Refuse(request.To, LibrarySays());
    Place(request, *memory);
    CPLStringList options;
    if (request.Whole) {
        FillRows<int32_t>(request, *memory, 0);
    } else if (isPng) {
        FillRows<int16_t>(request, *memory, PngOffset);
        options.AddNameValue("DESCRIPTION", PngWords);
    } else {
        FillRows<int16_t>(request, *memory, 0);
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
    const auto [left, bottom, right, top] = request.Edges;
    return LinesOfDegrees(request.System, {left, right, left, right},
                          {bottom, bottom, top, top});
}

} // namespace vardenix
