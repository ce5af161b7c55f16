#include "builder/ElevationMaster.h"

#include "files/FileNames.h"
#include "files/Mending.h"
#include "files/ReadableFile.h"
#include "levels/ElevationFiles.h"
#include "levels/LevelReader.h"
#include "levels/TerrainStore.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr const char* Filter = "L0 Files (*.l0)|*.l0|ELV files (*.elv)|*.elv";
constexpr int32_t RowsBetweenEvents = 10;

// Thrown where the user has been told already.
struct Told {};

[[noreturn]] void Tell(Dialogs& dialogs, const char* text, const char* title) {
    dialogs.Notice(text, title, BoxIcon::Critical);
    throw Told();
}

ElevationMaster Browse(int32_t mapWidth, const std::string& folder, Dialogs& dialogs) {
    const FileAnswer answer =
        dialogs.OpenFile({.Title = {}, .Filter = Filter, .InitialPath = folder});
    ElevationMaster master;
    master.Path = answer.Path;
    if (answer.FilterIndex == 1)
        master.ElevationFileType = ElevationKind::L0;
    else if (answer.FilterIndex == 2)
        master.ElevationFileType = ElevationKind::Elv;
    else
        Tell(dialogs, "Not a valid extension.", "Error!");
    if (master.ElevationFileType == ElevationKind::L0 &&
        !FileExists(OffsetFileOfL0(master.Path)))
        Tell(dialogs, ".O0 File not found", "Error...");
    if (!FitsTheater(master, mapWidth))
        Tell(dialogs, "The size of L0 file doesn't appear to be valid for this theater",
             "Error!");
    return master;
}

// The heights of one row of blocks go to sixteen rows of the grid.
void TakeHeights(std::span<const TerrainPost> blocks, std::span<int16_t> rows,
                 size_t width) {
    for (size_t i = 0; i < blocks.size(); ++i) {
        const size_t block = i / PostsPerSegment;
        const size_t row = i % PostsPerSegment / SegmentSide;
        rows[row * width + block * SegmentSide + i % SegmentSide] = blocks[i].Elevation;
    }
}

void ReadL0(const ElevationMaster& master, int32_t mapWidth, ElevationGrids& grids,
            RebuildView& view, DebugLog& log) {
    view.SetPB1_Max(ToInt32(mapWidth / 4.0));
    view.SetPB1_val(0);
    const int32_t width = grids.WidthOf(0);
    const int32_t blocks = width / SegmentSide;
    const ReadingLock lock({master.Path, OffsetFileOfL0(master.Path)});
    for (const std::string& line : lock.Mended())
        log.WriteLog(line);
    LevelReader reader({master.Path, OffsetFileOfL0(master.Path)}, blocks);
    log.WriteLog("Redimed L0ElvArr, 1 to " + std::to_string(width) + " (x2)");
    std::vector<TerrainPost> row(static_cast<size_t>(blocks) * PostsPerSegment);
    const size_t rowOfBlocks = static_cast<size_t>(width) * SegmentSide;
    for (int32_t y = 0; y < blocks; ++y) {
        reader.ReadRow(y, row);
        TakeHeights(
            row,
            grids.Heights(0).subspan(static_cast<size_t>(y) * rowOfBlocks, rowOfBlocks),
            static_cast<size_t>(width));
        view.Increase_PBs();
        if ((y + 1) % RowsBetweenEvents == 0)
            view.GoOn();
    }
    log.WriteLog("Closed L&O Files...");
}

void ReadElv(const ElevationMaster& master, ElevationGrids& grids, RebuildView& view) {
    view.SetPB1_Max(1);
    view.SetPB1_val(0);
    const auto bytes = std::as_writable_bytes(grids.Heights(0));
    const size_t got = ReadableFile(master.Path).ReadAt(0, bytes);
    if (got < bytes.size())
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           master.Path + ", offset " + std::to_string(got) +
                               ": expected " + std::to_string(bytes.size() - got) +
                               " bytes more, found the end");
    view.Increase_PBs();
}

} // namespace

std::string ElevationMaster::ElevationFile() const { return UpperCase(Path); }

bool FitsTheater(const ElevationMaster& master, int32_t mapWidth) {
    const double width = master.ElevationFileType == ElevationKind::L0
                             ? RootOfOffsetFile(FileLength(OffsetFileOfL0(master.Path)))
                             : WidthFromElvFile(FileLength(master.Path));
    return width == 4.0 * mapWidth;
}

ElevationMaster BrowseElevationFile(int32_t mapWidth, const std::string& folder,
                                    Dialogs& dialogs) {
    try {
        return Browse(mapWidth, folder, dialogs);
    } catch (const Told&) {
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
    }
    return {};
}

void ReadElevationFile(const ElevationMaster& master, int32_t mapWidth,
                       ElevationGrids& grids, RebuildView& view, DebugLog& log) {
    if (master.ElevationFileType == ElevationKind::L0)
        ReadL0(master, mapWidth, grids, view, log);
    else
        ReadElv(master, grids, view);
}

} // namespace vardenix
