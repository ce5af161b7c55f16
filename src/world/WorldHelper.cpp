#include "world/WorldHelper.h"

#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "platform/RunAndRead.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <cstring>
#include <filesystem>
#include <sstream>

namespace vardenix {

namespace {

constexpr size_t MostSaid = 1 << 16; // bytes
constexpr int NoProgram = 127;       // the system's word for one that cannot be loaded

const char* WordOf(Resampling how) {
    switch (how) {
    case Resampling::Cubic:
        return "cubic";
    case Resampling::Average:
        return "average";
    case Resampling::Nearest:
        return "near";
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

std::string FromRoot(const std::string& path) {
    return std::filesystem::absolute(RealPath(path)).string();
}

// One of our own, gone when it has been read.
class ScratchFile {
public:
    explicit ScratchFile(std::string path) : path_(std::move(path)) {}
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
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

WorldRaster WorldHelper::ReadRaster(const std::string& map,
                                    const RasterWish& wish) const {
    const ScratchFile raster(scratch_ + "raster");
    std::vector<std::string> line{"read",
                                  FromRoot(map),
                                  raster.Path(),
                                  "--size",
                                  std::to_string(wish.Columns),
                                  std::to_string(wish.Rows),
                                  "--resample",
                                  WordOf(wish.How)};
    if (wish.Place)
        AddPlace(line, *wish.Place);
    if (!wish.MapSystem.empty())
        line.insert(line.end(), {"--map-system", wish.MapSystem});
    if (wish.NoData)
        line.insert(line.end(), {"--no-data", ShortestText(*wish.NoData)});
    Run(std::move(line), map);
    WorldRaster read{wish.Columns, wish.Rows, {}};
    read.Values.resize(static_cast<size_t>(wish.Columns) *
                       static_cast<size_t>(wish.Rows));
    const auto bytes = std::as_writable_bytes(std::span(read.Values));
    const FileBytes file = ReadWholeFile(raster.Path(), bytes.size());
    if (file.size() != bytes.size())
        throw RuntimeError(ErrorNumber::InputPastEnd, raster.Path());
    std::memcpy(bytes.data(), file.data(), bytes.size());
    return read;
}

void WorldHelper::WriteRaster(const std::string& file, std::span<const int16_t> values,
                              int32_t columns, const RasterWish::Where& where) const {
    const ScratchFile raster(scratch_ + "raster");
    // The form is known by the ending.
    const ScratchFile made(scratch_ + "made" + file.substr(file.rfind('.')));
    {
        StagedFile staged(raster.Path());
        staged.Write(std::as_bytes(values));
        staged.Commit();
    }
    const auto rows = values.size() / static_cast<size_t>(columns);
    std::vector<std::string> line{
        "write",  raster.Path(),           made.Path(),
        "--size", std::to_string(columns), std::to_string(rows)};
    AddPlace(line, where);
    Run(std::move(line), file);
    const ReadableFile source(made.Path());
    StagedFile target(file);
    target.WriteRestOf(source, 0);
    target.Commit();
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
