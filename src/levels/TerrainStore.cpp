#include "levels/TerrainStore.h"

#include "companion/Vardenix.h"
#include "files/FileNames.h"
#include "files/Mending.h"
#include "files/Transaction.h"
#include "levels/LevelWriter.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace vardenix {

namespace {

constexpr size_t SegmentRowBytes = SegmentSide * sizeof(TerrainPost);

// A segment's 16 rows lie MapWidth posts apart in LxArr; its first post:
size_t FirstPostOf(int32_t segX, int32_t segY, int32_t width) {
    return static_cast<size_t>(SegToSerial(segX, segY, 1, 1, width)) - 1;
}

void TakeBlock(const TerrainPost* first, int32_t width, std::span<TerrainPost> block) {
    for (size_t row = 0; row < SegmentSide; ++row)
        std::memcpy(&block[row * SegmentSide], first + row * static_cast<size_t>(width),
                    SegmentRowBytes);
}

void RequireOneSegment(int32_t width, const std::string& pathO) {
    if (width < SegmentSide)
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           pathO + " stands for a grid of " + std::to_string(width) +
                               " posts a side, not one whole segment; bring back a "
                               "backup of it");
}

// LFilename and OFilename, open and measured.
struct Level2Files {
    Level2Files(const Terrain& terrain, DebugLog& log)
        : O(terrain.OFilename), L(terrain.LFilename) {
        log.WriteLog("Opened L&O Files...");
        Width = WidthFromOffsetFile(O.Size(), terrain.OFilename);
        log.WriteLog("MapWidth is " + std::to_string(Width));
        RequireOneSegment(Width, terrain.OFilename);
    }

    ReadableFile O;
    ReadableFile L;
    int32_t Width = 0; // posts a side
};

LevelReader ReaderOf(Level2Files files) {
    return {std::move(files.L), std::move(files.O), files.Width / SegmentSide};
}

void TakeMeasures(Terrain& terrain, const LevelReader& reader, int32_t width) {
    terrain.MapWidth = width;
    terrain.ReadL = reader.IdentityL();
    terrain.ReadO = reader.IdentityO();
    terrain.Gap = {reader.Missing(), static_cast<int64_t>(reader.Offsets().size())};
}

} // namespace

PostXY SerialToXY(int32_t serial, int32_t width) {
    const int32_t row = (serial - 1) / width;
    return {static_cast<double>(serial - row * width), static_cast<double>(row + 1)};
}

PostXY SegToXY(int32_t segX, int32_t segY, int32_t i, int32_t j, int32_t /*width*/) {
    return {static_cast<double>((segX - 1) * SegmentSide + i),
            static_cast<double>((segY - 1) * SegmentSide + j)};
}

double RootOfOffsetFile(uint64_t lengthO) {
    return RoundHalfEven(std::sqrt(static_cast<double>(lengthO) / 4) * SegmentSide);
}

int32_t WidthFromOffsetFile(uint64_t lengthO, const std::string& pathO) {
    if (lengthO == 0)
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           pathO + ", offset 0: expected 4 bytes, found 0 bytes left");
    const double width = RootOfOffsetFile(lengthO);
    if (width > MaxGridWidth)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           pathO + ": " + std::to_string(lengthO) +
                               " bytes stand for a grid of " + Format0(width) +
                               " posts a side; at most " + std::to_string(MaxGridWidth) +
                               " can be opened");
    return static_cast<int32_t>(width);
}

PostArray ReadPosts(const LevelReader& reader, int32_t width,
                    const std::function<void(int32_t, int32_t)>& afterRow) {
    const int32_t segments = width / SegmentSide;
    PostArray posts(int64_t{width} * width);
    int32_t read = 0;
    reader.ReadEach([&](size_t segment, std::span<const std::byte> block) {
        const auto place = static_cast<int32_t>(segment);
        const size_t first =
            FirstPostOf(place % segments + 1, place / segments + 1, width);
        CopyBlock(block, &posts.Values()[first], width);
        if (++read % segments == 0)
            afterRow(read / segments, segments);
    });
    return posts;
}

void LoadLFile(Terrain& terrain, Progress& progress, DebugLog& log) {
    progress.SetBar(0);
    progress.SetText("Loading L2 File...");
    const ReadingLock reading({terrain.LFilename, terrain.OFilename});
    LogMended(reading.Mended(), log);
    Level2Files files(terrain, log);
    log.WriteLog("Redimed LxArr, 1 to " +
                 std::to_string(int64_t{files.Width} * files.Width));
    const int32_t width = files.Width;
    const LevelReader reader = ReaderOf(std::move(files));
    PostArray posts = ReadPosts(reader, width, [&progress](int32_t row, int32_t rows) {
        progress.SetBar(Percent(row, rows));
        progress.LetEventsThrough();
    });
    terrain.LxArr = std::move(posts);
    TakeMeasures(terrain, reader, width);

    log.WriteLog("Loaded L&O Files...");
    progress.LetEventsThrough();
    log.WriteLog("Closed L&O Files...");
    log.WriteLog("Exiting LoadLFile...");
}

LevelReader OpenLevel2(Terrain& terrain, DebugLog& log) {
    Level2Files files(terrain, log);
    const int32_t width = files.Width;
    LevelReader reader = ReaderOf(std::move(files));
    TakeMeasures(terrain, reader, width);
    return reader;
}

bool IsCommonSeg(const Terrain& terrain, int32_t segX, int32_t segY) {
    const auto width = static_cast<size_t>(terrain.MapWidth);
    const size_t first = FirstPostOf(segX, segY, terrain.MapWidth);
    const auto posts = terrain.LxArr.Values();
    const auto everyPost = [&](auto test) {
        for (size_t row = 0; row < SegmentSide; ++row) {
            const auto line = posts.subspan(first + row * width, SegmentSide);
            if (!std::all_of(line.begin(), line.end(), test))
                return false;
        }
        return true;
    };
    // Most segments are told apart by their first tile.
    return everyPost([](const TerrainPost& post) { return post.TileOffset == 0; }) &&
           everyPost([](const TerrainPost& post) { return post.Elevation == 0; });
}

void WriteLevel2(const Terrain& terrain, ByteSink& fileL, ByteSink& fileO,
                 Progress& progress) {
    const int32_t segments = terrain.MapWidth / SegmentSide;
    const auto posts = terrain.LxArr.Values();
    LevelWriter writer(fileL, terrain.LFilename);
    std::array<TerrainPost, PostsPerSegment> block;
    for (int32_t segY = 1; segY <= segments; ++segY) {
        for (int32_t segX = 1; segX <= segments; ++segX) {
            TakeBlock(&posts[FirstPostOf(segX, segY, terrain.MapWidth)], terrain.MapWidth,
                      block);
            writer.Store(block, IsCommonSeg(terrain, segX, segY));
        }
        progress.SetBar(Percent(segY, segments));
        progress.LetEventsThrough();
    }
    writer.WriteOffsets(fileO);
}

void RequireNoGap(const Terrain& terrain) {
    if (terrain.Gap.Missing > 0 && !terrain.Gap.MayStay)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           std::to_string(terrain.Gap.Missing) + " of " +
                               std::to_string(terrain.Gap.All) +
                               " segments were missing in " + terrain.LFilename +
                               " when it was opened; saving would make that permanent");
}

void SaveTheater(Terrain& terrain, const std::string& path, Progress& progress,
                 IfChanged ifChanged) {
    SaveTheater(terrain, PairForSaving(terrain, path), progress, ifChanged);
}

void SaveTheater(Terrain& terrain, const LevelPair& pair, Progress& progress,
                 IfChanged ifChanged) {
    if (SameFile(pair.L, pair.O))
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           pair.L +
                               " would be the L file and the O file at once; its name "
                               "must end in .L2");
    if (IsUnfinishedName(pair.L))
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           pair.L + " is what an unfinished save is called; its name "
                                    "must end in .L2");
    RequireSameName(pair.L);
    RequireSameName(pair.O);
    const ShownBar bar(progress);
    const auto locks =
        LockFoldersOf({TargetOf(pair.L), TargetOf(pair.O)}, FolderLock::Exclusive);
    const bool own = SameFile(pair.L, terrain.LFilename);
    if (own)
        RequireNoGap(terrain);
    Transaction files;
    const FileIdentity unread;
    StagedFile& fileL = files.Stage(pair.L, own ? terrain.ReadL : unread, ifChanged);
    StagedFile& fileO = files.Stage(pair.O, own ? terrain.ReadO : unread, ifChanged);
    WriteLevel2(terrain, fileL, fileO, progress);
    files.Commit();
    if (own) {
        terrain.ReadL = fileL.Identity();
        terrain.ReadO = fileO.Identity();
        terrain.Gap = {};
    }
}

void LogMended(const std::vector<std::string>& mended, DebugLog& log) {
    for (const std::string& what : mended)
        log.WriteLog(what);
}

} // namespace vardenix
