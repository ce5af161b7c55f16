#include "world/WorldHelper.h"

#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "files/Transaction.h"
#include "platform/RunAndRead.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <sstream>

namespace vardenix {

namespace {

constexpr size_t MostSaid = 1 << 16; // bytes
constexpr uint64_t MostShapeBytes = uint64_t{1} << 30;
constexpr int NoProgram = 127; // the system's word for one that cannot be loaded

const char* WordOf(Resampling how) {
    switch (how) {
    case Resampling::Cubic:
        return "cubic";
    case Resampling::Average:
        return "average";
    case Resampling::Nearest:
        return "near";
    case Resampling::Most:
        return "mode";
    case Resampling::Bilinear:
        break;
    }
    return "bilinear";
}

void AddPlace(std::vector<std::string>& line, const RasterWish::Where& where) {
    line.insert(line.end(),
                {"--system", where.System, "--edges", ShortestText(where.Edges.Left),
                 ShortestText(where.Edges.Bottom), ShortestText(where.Edges.Right),
                 ShortestText(where.Edges.Top)});
}

// With its dot, in small letters.
std::string RasterEnding(const std::string& file) {
    const std::string upper = UpperCase(AfterLastSlash(file));
    for (const auto& [ending, form] : {std::pair{".TIF", ".tif"},
                                       {".TIFF", ".tif"},
                                       {".ASC", ".asc"},
                                       {".PNG", ".png"}})
        if (upper.ends_with(ending))
            return form;
    throw RuntimeError(ErrorNumber::InvalidCall,
                       file + ": its ending must be .tif, .asc or .png");
}

std::string FromRoot(const std::string& path) {
    return std::filesystem::absolute(RealPath(path)).string();
}

// A file of shapes as its user named it.
struct ShapeFile {
    std::string Folder; // up to its last slash
    std::string Stem;
    std::string Ending; // as it was written
    std::string Form;
};

constexpr std::array ShapeEndings{std::pair{".GEOJSON", "geojson"},
                                  std::pair{".JSON", "geojson"},
                                  std::pair{".GPKG", "gpkg"}, std::pair{".SHP", "shp"}};

ShapeFile ShapeFileOf(const std::string& file) {
    const std::string name = AfterLastSlash(file);
    const size_t dot = std::min(name.rfind('.'), name.size());
    for (const auto& [ending, form] : ShapeEndings)
        if (UpperCase(name.substr(dot)) == ending && dot > 0)
            return {UpToLastSlash(file), name.substr(0, dot), name.substr(dot), form};
    throw RuntimeError(ErrorNumber::InvalidCall,
                       file + ": its ending must be .geojson, .gpkg or .shp");
}

// The file that the map itself is keeps the ending that it was given.
std::string TargetFor(const std::string& source, const ShapeFile& named,
                      const std::string& file) {
    if (named.Form != "shp")
        return file;
    return named.Folder + AfterLastSlash(source);
}

// A file or folder of our own, gone when it has been read.
class ScratchFile {
public:
    explicit ScratchFile(std::string path) : path_(std::move(path)) {}
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

void TakePoints(const std::string& text, const std::string& system,
                std::span<GeographicPoint> points) {
    std::istringstream said(text);
    said.imbue(std::locale::classic());
    for (GeographicPoint& point : points)
        said >> point.Longitude >> point.Latitude;
    if (!said)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "the corners of the theater lie beyond what the reference "
                           "system " +
                               system + " can tell");
}

} // namespace

bool IsMapOfShapes(const std::string& file) {
    const std::string upper = UpperCase(AfterLastSlash(file));
    return std::ranges::any_of(ShapeEndings, [&upper](const auto& known) {
        return upper.ends_with(known.first);
    });
}

std::string WorldHelper::Run(std::vector<std::string> arguments,
                             const std::string& subject) const {
    arguments.insert(arguments.begin(), program_);
    const ProgramOutput output = RunAndRead(arguments, MostSaid, goOn_);
    if (output.Stopped)
        throw RuntimeError(ErrorNumber::Cancelled, subject);
    if (output.ExitCode == 0 && output.Whole)
        return output.Text;
    if (!FileExists(program_) || output.ExitCode == NoProgram)
        throw RuntimeError(ErrorNumber::FileNotFound,
                           program_ + " reads maps of the real world, and it or the "
                                      "package libgdal32 is not installed");
    if (output.ExitCode == -1)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           subject + ": the program that read it needed more memory "
                                     "or time than it is given, or the file is "
                                     "damaged; nothing was changed");
    throw RuntimeError(ErrorNumber::InvalidCall,
                       output.Text.empty() ? subject + " was refused" : output.Text);
}

void WorldHelper::Read(const std::string& map, const RasterWish& wish,
                       std::span<std::byte> values,
                       const std::vector<std::string>& more) const {
    const ScratchFile raster(scratch_ + "raster");
    std::vector<std::string> line{"read",
                                  FromRoot(map),
                                  raster.Path(),
                                  "--size",
                                  std::to_string(wish.Columns),
                                  std::to_string(wish.Rows),
                                  "--resample",
                                  WordOf(wish.How)};
    line.insert(line.end(), more.begin(), more.end());
    if (wish.Place)
        AddPlace(line, *wish.Place);
    if (!wish.MapSystem.empty())
        line.insert(line.end(), {"--map-system", wish.MapSystem});
    if (wish.NoData)
        line.insert(line.end(), {"--no-data", ShortestText(*wish.NoData)});
    Run(std::move(line), map);
    const FileBytes file = ReadWholeFile(raster.Path(), values.size());
    if (file.size() != values.size())
        throw RuntimeError(ErrorNumber::InputPastEnd, raster.Path());
    std::memcpy(values.data(), file.data(), values.size());
}

WorldRaster WorldHelper::ReadRaster(const std::string& map,
                                    const RasterWish& wish) const {
    WorldRaster read{wish.Columns, wish.Rows, {}};
    read.Values.resize(static_cast<size_t>(wish.Columns) *
                       static_cast<size_t>(wish.Rows));
    Read(map, wish, std::as_writable_bytes(std::span(read.Values)), {});
    return read;
}

WorldNumbers WorldHelper::ReadNumbers(const std::string& map,
                                      const RasterWish& wish) const {
    WorldNumbers read{wish.Columns, wish.Rows, {}};
    read.Values.resize(static_cast<size_t>(wish.Columns) *
                       static_cast<size_t>(wish.Rows));
    Read(map, wish, std::as_writable_bytes(std::span(read.Values)), {"--whole"});
    return read;
}

void WorldHelper::Write(const std::string& file, std::span<const std::byte> values,
                        int32_t columns, size_t rows, const RasterWish::Where& where,
                        const std::vector<std::string>& more) const {
    const ScratchFile raster(scratch_ + "raster");
    // The form is known by the ending.
    const ScratchFile made(scratch_ + "made" + RasterEnding(file));
    {
        StagedFile staged(raster.Path());
        staged.Write(values);
        staged.Commit();
    }
    std::vector<std::string> line{
        "write",  raster.Path(),           made.Path(),
        "--size", std::to_string(columns), std::to_string(rows)};
    line.insert(line.end(), more.begin(), more.end());
    AddPlace(line, where);
    Run(std::move(line), file);
    const ReadableFile source(made.Path());
    StagedFile target(file);
    target.WriteRestOf(source, 0);
    target.Commit();
}

void WorldHelper::WriteRaster(const std::string& file, std::span<const int16_t> heights,
                              int32_t columns, const RasterWish::Where& where) const {
    Write(file, std::as_bytes(heights), columns,
          heights.size() / static_cast<size_t>(columns), where, {});
}

void WorldHelper::WriteNumbers(const std::string& file, std::span<const int32_t> numbers,
                               int32_t columns, const RasterWish::Where& where) const {
    if (RasterEnding(file) == ".png")
        for (const int32_t number : numbers)
            if (number < 0 || number > std::numeric_limits<uint16_t>::max())
                throw RuntimeError(ErrorNumber::InvalidCall,
                                   file +
                                       ": a PNG holds numbers from 0 to 65535, and "
                                       "there is " +
                                       std::to_string(number) +
                                       "; write a .tif or an .asc");
    Write(file, std::as_bytes(numbers), columns,
          numbers.size() / static_cast<size_t>(columns), where, {"--whole"});
}

std::vector<WorldShape> WorldHelper::ReadShapes(const std::string& map,
                                                const ShapeWish& wish) const {
    const ScratchFile shapes(scratch_ + "shapes");
    std::vector<std::string> line{"read-shapes",  FromRoot(map),  shapes.Path(),
                                  "--system",     wish.System,    "--kind-field",
                                  wish.KindField, "--name-field", wish.NameField};
    if (!wish.MapSystem.empty())
        line.insert(line.end(), {"--map-system", wish.MapSystem});
    Run(std::move(line), map);
    const FileBytes file = ReadWholeFile(shapes.Path(), MostShapeBytes);
    return ShapesFromBytes(file.Span(), map);
}

std::vector<std::string> WorldHelper::WriteShapes(
    const std::string& file, const std::vector<WorldShape>& shapes,
    const std::string& system,
    const std::function<bool(const std::vector<std::string>&)>& mayReplace) const {
    const ShapeFile named = ShapeFileOf(file);
    const ScratchFile given(scratch_ + "shapes");
    const ScratchFile made(scratch_ + "made");
    {
        StagedFile staged(given.Path());
        staged.WriteText(BytesOfShapes(shapes));
        staged.Commit();
    }
    MakeOwnFilesFolder(made.Path() + "/");
    Run({"write-shapes", given.Path(), made.Path(), "--system", system, "--form",
         named.Form, "--stem", named.Stem},
        file);
    std::vector<std::string> sources;
    for (const auto& entry : std::filesystem::directory_iterator(made.Path()))
        sources.push_back(TextOfPath(entry.path()));
    std::ranges::sort(sources);
    std::vector<std::string> targets;
    targets.reserve(sources.size());
    for (const std::string& source : sources)
        targets.push_back(TargetFor(source, named, file));
    if (!mayReplace(targets))
        return {};
    Transaction files;
    for (size_t i = 0; i < sources.size(); ++i)
        files.Stage(targets[i]).WriteRestOf(ReadableFile(sources[i]), 0);
    files.Commit();
    std::vector<std::string> maps;
    for (const std::string& target : targets)
        if (IsMapOfShapes(target))
            maps.push_back(target);
    return maps;
}

std::array<GeographicPoint, 4>
WorldHelper::CornersOf(const RasterWish::Where& where) const {
    std::vector<std::string> line{"corners"};
    AddPlace(line, where);
    std::array<GeographicPoint, 4> corners;
    TakePoints(Run(std::move(line), where.System), where.System, corners);
    return corners;
}

std::vector<GeographicPoint> WorldHelper::GridOf(const RasterWish::Where& where,
                                                 int32_t side) const {
    const std::string points = std::to_string(side);
    std::vector<std::string> line{"grid", "--size", points, points};
    AddPlace(line, where);
    std::vector<GeographicPoint> grid(static_cast<size_t>(side) *
                                      static_cast<size_t>(side));
    TakePoints(Run(std::move(line), where.System), where.System, grid);
    return grid;
}

WorldHelper OwnWorldHelper(const std::string& scratch) {
    return {ProgramFolder() + "/vardenix-world", scratch};
}

} // namespace vardenix
