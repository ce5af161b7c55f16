#include "levels/ElevationFiles.h"

#include "companion/Vardenix.h"
#include "files/FileNames.h"
#include "files/Mending.h"
#include "files/Transaction.h"
#include "levels/LevelWriter.h"
#include "levels/TerrainStore.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

// The tile number of sea at level 0.
constexpr int32_t SeaTileOfL0 = 0x2000;

constexpr const char* WrongWidth =
    "The size of L0 file doesn't appear to be valid for this theater";
constexpr const char* WrongWidthAtSaving =
    "The size of L0 file doesn't appear to be valid for this theater. Do you want to "
    "overwite this file (all other terrain values will be overwritten)? ";

std::string EmptyPairQuestion(const std::string& path) {
    return "A L0 file keeps tiles and colors beside the heights, so heights can only be "
           "saved into one that is there together with its O0 file.\n" +
           path +
           " and its O0 file will be two empty files, and the heights stay unsaved. "
           "Copy a L0 file of this theater and its O0 file to that name first, or save "
           "an ELV file.\n"
           "Do you want to write two empty files?";
}

void MoveBar(Progress& progress, int32_t row, int32_t rows) {
    progress.SetBar(Percent(row, rows));
    if (row % 10 == 0)
        progress.LetEventsThrough();
}

// Nobody else waits while the user reads a box.
void TellWrongWidth(Dialogs& dialogs, std::optional<ReadingLock>& reading) {
    reading.reset();
    dialogs.Notice(WrongWidth, "Error!", BoxIcon::Critical);
}

// Calls visit(record, elevation) for each record of a segment and its place among the
// heights of a grid `width` posts a side.
template <typename Visit>
void ForEachElevation(std::span<int16_t> heights, int32_t width, int32_t segX,
                      int32_t segY, std::span<TerrainPost> block, Visit visit) {
    const auto first = static_cast<size_t>(SegToSerial(segX, segY, 1, 1, width)) - 1;
    for (size_t j = 0; j < SegmentSide; ++j)
        for (size_t i = 0; i < SegmentSide; ++i)
            visit(block[j * SegmentSide + i],
                  heights[first + j * static_cast<size_t>(width) + i]);
}

// An .elv file that is one of the theater's, held still. Takes its width and identity
// into the layer; nothing when the user was told that it is none.
struct OpenElv {
    std::optional<ReadingLock> Reading;
    ReadableFile File;
};
std::optional<OpenElv> OpenElvOf(const Terrain& terrain, ElevationLayer& layer,
                                 Dialogs& dialogs) {
    std::optional<ReadingLock> reading(std::in_place, std::vector{layer.Path});
    ReadableFile file(layer.Path);
    if (WidthFromElvFile(file.Size()) != 4.0 * terrain.MapWidth) {
        TellWrongWidth(dialogs, reading);
        return std::nullopt;
    }
    layer.EMapWidth = 4 * terrain.MapWidth;
    layer.Read = file.Identity();
    return OpenElv{std::move(reading), std::move(file)};
}

// A L0 file that is one of the theater's, and the O0 file beside it, held still.
struct OpenL0 {
    std::optional<ReadingLock> Reading;
    ReadableFile FileL;
    ReadableFile FileO;
};
std::optional<OpenL0> OpenL0Of(const Terrain& terrain, ElevationLayer& layer,
                               Dialogs& dialogs, DebugLog& log) {
    layer.OffsetPath = PairOfL0(layer.Path).O;
    const std::string& pathO = layer.OffsetPath;
    std::optional<ReadingLock> reading(std::in_place, std::vector{layer.Path, pathO});
    LogMended(reading->Mended(), log);
    if (!FileExists(pathO)) {
        reading.reset();
        dialogs.Notice(".O0 File not found\n" + pathO, "Error...", BoxIcon::Critical);
        return std::nullopt;
    }
    ReadableFile fileO(pathO);
    ReadableFile fileL(layer.Path);
    const double width = RootOfOffsetFile(fileO.Size());
    log.WriteLog("Opened L&O Files...");
    log.WriteLog("EMapWidth is " + Format0(width));
    if (width != 4.0 * terrain.MapWidth) {
        TellWrongWidth(dialogs, reading);
        return std::nullopt;
    }
    layer.EMapWidth = 4 * terrain.MapWidth;
    layer.Read = fileL.Identity();
    layer.ReadO = fileO.Identity();
    return OpenL0{std::move(reading), std::move(fileL), std::move(fileO)};
}

ElevationLayer LayerOf(ElevationKind kind, const std::string& path) {
    ElevationLayer layer;
    layer.Kind = kind;
    layer.Path = TextOfPath(RealPath(path, PathKind::File));
    return layer;
}

bool LoadElv(const Terrain& terrain, ElevationLayer& layer, Progress& progress,
             Dialogs& dialogs) {
    const auto open = OpenElvOf(terrain, layer, dialogs);
    if (!open)
        return false;
    layer.L0ElvArr = ReadElvHeights(
        open->File.ReadAll().Span(), layer.EMapWidth,
        [&progress](int32_t row, int32_t rows) { MoveBar(progress, row, rows); });
    return true;
}

bool LoadL0(const Terrain& terrain, ElevationLayer& layer, Progress& progress,
            Dialogs& dialogs, DebugLog& log) {
    auto open = OpenL0Of(terrain, layer, dialogs, log);
    if (!open)
        return false;
    log.WriteLog("Redimed L0ElvArr, 1 to " + std::to_string(layer.EMapWidth) + " (x2)");
    const LevelReader reader(std::move(open->FileL), std::move(open->FileO),
                             layer.EMapWidth / SegmentSide);
    layer.L0ElvArr =
        ReadL0Heights(reader, layer.EMapWidth, [&progress](int32_t row, int32_t rows) {
            MoveBar(progress, row, rows);
        });
    log.WriteLog("Loaded L&O Files...");
    log.WriteLog("Closed L&O Files...");
    return true;
}

// What a file that is written is compared with: nothing, unless it is the loaded one.
const FileIdentity Unread;

void SaveElv(ElevationLayer& layer, const std::string& path, Progress& progress,
             IfChanged ifChanged) {
    const auto locks = LockFoldersOf({TargetOf(path)}, FolderLock::Exclusive);
    Transaction files;
    const bool own = SameFile(path, layer.Path);
    StagedFile& file = files.Stage(path, own ? layer.Read : Unread, ifChanged);
    const auto rowValues = static_cast<size_t>(layer.EMapWidth);
    for (int32_t y = 1; y <= layer.EMapWidth; ++y) {
        const auto row = layer.L0ElvArr.Values().subspan(
            static_cast<size_t>(y - 1) * rowValues, rowValues);
        file.Write(std::as_bytes(row));
        MoveBar(progress, y, layer.EMapWidth);
    }
    files.Commit();
    if (own)
        layer.Read = file.Identity();
}

// Gives the records of a segment their new elevations.
using ElevationsOf =
    std::function<void(int32_t segX, int32_t segY, std::span<TerrainPost> block)>;

ElevationsOf AllOf(ElevationLayer& layer) {
    return [&layer](int32_t segX, int32_t segY, std::span<TerrainPost> block) {
        ForEachElevation(
            layer.L0ElvArr.Values(), layer.EMapWidth, segX, segY, block,
            [](TerrainPost& record, int16_t elevation) { record.Elevation = elevation; });
    };
}

// All stay but that of the post (x, y), from 1.
ElevationsOf OneAt(int32_t x, int32_t y, int16_t feet) {
    return [=](int32_t segX, int32_t segY, std::span<TerrainPost> block) {
        const int32_t i = x - 1 - (segX - 1) * SegmentSide;
        const int32_t j = y - 1 - (segY - 1) * SegmentSide;
        if (i >= 0 && i < SegmentSide && j >= 0 && j < SegmentSide)
            block[static_cast<size_t>(j) * SegmentSide + static_cast<size_t>(i)]
                .Elevation = feet;
    };
}

bool IsSeaOfL0(std::span<const TerrainPost> block) {
    return std::all_of(block.begin(), block.end(), [](const TerrainPost& record) {
        return record.Elevation == 0 && record.TileOffset == SeaTileOfL0;
    });
}

// The old terrain of a L0 pair with other elevations.
void SaveIntoL0(ElevationLayer& layer, const LevelPair& pair,
                const ElevationsOf& changeBlock, Progress& progress,
                IfChanged ifChanged) {
    const int32_t segments = layer.EMapWidth / SegmentSide;
    ReadableFile fileL(pair.L);
    ReadableFile fileO(pair.O);
    Transaction files;
    const bool own = SameFile(pair.L, layer.Path);
    StagedFile& newL = files.Stage(pair.L, own ? layer.Read : Unread, ifChanged);
    StagedFile& newO = files.Stage(pair.O, own ? layer.ReadO : Unread, ifChanged);
    // Read once staging has told that they are the files that were loaded.
    const LevelReader old(std::move(fileL), std::move(fileO), segments);
    LevelWriter writer(newL, pair.L);
    std::vector<TerrainPost> row(static_cast<size_t>(segments) * PostsPerSegment);
    for (int32_t segY = 1; segY <= segments; ++segY) {
        old.ReadRow(segY - 1, row);
        for (int32_t segX = 1; segX <= segments; ++segX) {
            const auto block = std::span(row).subspan(
                static_cast<size_t>(segX - 1) * PostsPerSegment, PostsPerSegment);
            changeBlock(segX, segY, block);
            writer.Store(block, IsSeaOfL0(block));
        }
        MoveBar(progress, segY, segments);
    }
    writer.WriteOffsets(newO);
    // The entries are overwritten; what stands behind them stays.
    newO.Write(old.BehindEntries().Span());
    files.Commit();
    if (own) {
        layer.Read = newL.Identity();
        layer.ReadO = newO.Identity();
    }
}

// The width of a new pair would be read off an O0 file that is not there, so no block is
// written: a L0 file under a new name is a pair of empty files. Theater makers know it
// so, and it is kept.
ElevationSave SaveEmptyPair(const LevelPair& pair, Dialogs& dialogs) {
    if (dialogs.MessageBox(EmptyPairQuestion(pair.L), "Confirm", BoxIcon::Warning,
                           BoxButtons::YesNo) != BoxAnswer::Yes)
        return ElevationSave::Refused;
    Transaction files;
    files.Stage(pair.L);
    files.Stage(pair.O);
    files.Commit();
    return ElevationSave::EmptyPair;
}

ElevationSave SaveL0(ElevationLayer& layer, const LevelPair& pair, int32_t mapWidth,
                     const ElevationsOf& changeBlock, Progress& progress,
                     Dialogs& dialogs, IfChanged ifChanged) {
    if (SameFile(pair.L, pair.O))
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           pair.L + " would be the L0 file and the O0 file at once");
    RequireSameName(pair.O);
    auto locks =
        LockFoldersOf({TargetOf(pair.L), TargetOf(pair.O)}, FolderLock::Exclusive);
    MendFiles({pair.L, pair.O});
    // Nobody else waits while the user thinks about a question.
    if (!FileExists(pair.L) || !FileExists(pair.O)) {
        locks.clear();
        return SaveEmptyPair(pair, dialogs);
    }
    if (RootOfOffsetFile(FileLength(pair.O)) != 4.0 * mapWidth) {
        StagedFile abandoned(pair.L);
        layer.AbandonedXFile = abandoned.Abandon();
        locks.clear();
        dialogs.MessageBox(WrongWidthAtSaving, "Error!", BoxIcon::Critical,
                           BoxButtons::YesNo);
        return ElevationSave::Refused;
    }
    SaveIntoL0(layer, pair, changeBlock, progress, ifChanged);
    return ElevationSave::Done;
}

} // namespace

ElevationKind KindOfElevationFile(const std::string& path) {
    const std::string name = UpperCase(path);
    if (name.ends_with(".L0"))
        return ElevationKind::L0;
    return name.ends_with(".ELV") ? ElevationKind::Elv : ElevationKind::None;
}

double WidthFromElvFile(uint64_t length) {
    return RoundHalfEven(std::sqrt(static_cast<double>(length) / 2));
}

HeightArray ReadElvHeights(std::span<const std::byte> file, int32_t width,
                           const std::function<void(int32_t, int32_t)>& afterRow) {
    // Half a value is none.
    auto left = file.first(file.size() - file.size() % sizeof(int16_t));
    const auto rowValues = static_cast<size_t>(width);
    HeightArray heights(int64_t{width} * width);
    for (int32_t y = 1; y <= width; ++y) {
        const auto row = left.first(std::min(left.size(), rowValues * sizeof(int16_t)));
        if (!row.empty())
            std::memcpy(&heights.Values()[static_cast<size_t>(y - 1) * rowValues],
                        row.data(), row.size());
        left = left.subspan(row.size());
        afterRow(y, width);
    }
    return heights;
}

HeightArray ReadL0Heights(const LevelReader& reader, int32_t width,
                          const std::function<void(int32_t, int32_t)>& afterRow) {
    const int32_t segments = width / SegmentSide;
    HeightArray heights(int64_t{width} * width);
    int32_t read = 0;
    reader.ReadEach([&](size_t segment, std::span<const std::byte> bytes) {
        std::array<TerrainPost, PostsPerSegment> block{};
        CopyBlock(bytes, block.data(), SegmentSide);
        const auto place = static_cast<int32_t>(segment);
        ForEachElevation(heights.Values(), width, place % segments + 1,
                         place / segments + 1, block,
                         [](const TerrainPost& record, int16_t& elevation) {
                             elevation = record.Elevation;
                         });
        if (++read % segments == 0)
            afterRow(read / segments, segments);
    });
    return heights;
}

bool LoadElevationData(Terrain& terrain, ElevationKind kind, const std::string& path,
                       Progress& progress, Dialogs& dialogs, DebugLog& log) {
    ElevationLayer loaded = LayerOf(kind, path);
    const bool good = kind == ElevationKind::Elv
                          ? LoadElv(terrain, loaded, progress, dialogs)
                          : LoadL0(terrain, loaded, progress, dialogs, log);
    if (good)
        terrain.Elevations = std::move(loaded);
    return good;
}

ElevationSave SaveElevationData(Terrain& terrain, ElevationKind kind,
                                const std::string& path, Progress& progress,
                                Dialogs& dialogs, IfChanged ifChanged) {
    ElevationLayer& layer = terrain.Elevations;
    layer.AbandonedXFile.Close();
    const ElevationKind as = path.empty() ? layer.Kind : kind;
    const std::string to =
        path.empty() ? layer.Path : TextOfPath(RealPath(path, PathKind::File));
    RequireSameName(to);
    if (as != ElevationKind::Elv)
        return SaveL0(layer,
                      path.empty() ? LevelPair{to, layer.OffsetPath} : PairOfL0(to),
                      terrain.MapWidth, AllOf(layer), progress, dialogs, ifChanged);
    SaveElv(layer, to, progress, ifChanged);
    return ElevationSave::Done;
}

std::optional<int16_t> LookUpElevation(const Terrain& terrain, ElevationKind kind,
                                       const std::string& path, int32_t x, int32_t y,
                                       Dialogs& dialogs, DebugLog& log) {
    ElevationLayer layer = LayerOf(kind, path);
    if (kind == ElevationKind::Elv) {
        const auto open = OpenElvOf(terrain, layer, dialogs);
        if (!open)
            return std::nullopt;
        const int64_t place = int64_t{y - 1} * layer.EMapWidth + x - 1;
        return ValueAt<int16_t>(open->File, static_cast<uint64_t>(place) * 2);
    }
    const auto open = OpenL0Of(terrain, layer, dialogs, log);
    if (!open)
        return std::nullopt;
    const int32_t segments = layer.EMapWidth / SegmentSide;
    RequireOffsets(open->FileO, segments);
    return LookUpPost(open->FileL, open->FileO, segments, x, y).Elevation;
}

std::optional<ElevationSave> SetElevation(const Terrain& terrain, ElevationKind kind,
                                          const std::string& path, int32_t x, int32_t y,
                                          int16_t feet, Progress& progress,
                                          Dialogs& dialogs, DebugLog& log,
                                          IfChanged ifChanged) {
    ElevationLayer layer = LayerOf(kind, path);
    if (kind == ElevationKind::Elv) {
        if (!LoadElv(terrain, layer, progress, dialogs))
            return std::nullopt;
        layer.At(x, y) = feet;
        RequireSameName(layer.Path);
        SaveElv(layer, layer.Path, progress, ifChanged);
        return ElevationSave::Done;
    }
    if (!OpenL0Of(terrain, layer, dialogs, log))
        return std::nullopt;
    RequireSameName(layer.Path);
    return SaveL0(layer, {layer.Path, layer.OffsetPath}, terrain.MapWidth,
                  OneAt(x, y, feet), progress, dialogs, ifChanged);
}

} // namespace vardenix
