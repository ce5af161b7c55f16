#include "levels/TerrainStore.h"

#include "companion/Vardenix.h"
#include "files/FileNames.h"
#include "files/Mending.h"
#include "files/Transaction.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace vardenix {

namespace {

constexpr size_t RowBytes = SegmentSide * sizeof(TerrainPost);

// A segment's 16 rows lie MapWidth posts apart in LxArr; its first post:
size_t FirstPostOf(int32_t segX, int32_t segY, int32_t width) {
    return static_cast<size_t>(SegToSerial(segX, segY, 1, 1, width)) - 1;
}

void WriteBlock(StagedFile& file, const TerrainPost* first, int32_t width) {
    std::array<TerrainPost, PostsPerSegment> block;
    for (size_t row = 0; row < SegmentSide; ++row)
        std::memcpy(&block[row * SegmentSide], first + row * static_cast<size_t>(width),
                    RowBytes);
    file.Write(std::as_bytes(std::span(block)));
}

void RequireOneSegment(int32_t width, const std::string& pathO) {
    if (width < SegmentSide)
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           pathO + " stands for a grid of " + std::to_string(width) +
                               " posts a side, not one whole segment; bring back a "
                               "backup of it");
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

PostArray ReadPosts(std::span<const std::byte> fileL, std::span<const std::byte> fileO,
                    int32_t width, const std::string& pathO,
                    const std::function<void(int32_t, int32_t)>& afterRow) {
    LevelBlocks blocks(fileL);
    return ReadPosts(blocks, fileO, width, pathO, afterRow);
}

PostArray ReadPosts(LevelBlocks& fileL, std::span<const std::byte> fileO, int32_t width,
                    const std::string& pathO,
                    const std::function<void(int32_t, int32_t)>& afterRow) {
    const int32_t segments = width / SegmentSide;
    const std::vector<int32_t> offsets = ReadOffsets(fileO, segments, pathO);
    PostArray posts(int64_t{width} * width);
    int32_t read = 0;
    fileL.ReadEach(offsets, [&](size_t segment, std::span<const std::byte> block) {
        const auto place = static_cast<int32_t>(segment);
        const size_t first =
            FirstPostOf(place % segments + 1, place / segments + 1, width);
        CopyBlock(block, &posts.Values()[first], width);
        if (++read % segments == 0)
            afterRow(read / segments, segments);
    });
    return posts;
}

Level2Files::Level2Files(const Terrain& terrain, DebugLog& log)
    : fileO_(terrain.OFilename), fileL_(terrain.LFilename) {
    log.WriteLog("Opened L&O Files...");
    width_ = WidthFromOffsetFile(fileO_.Size(), terrain.OFilename);
    log.WriteLog("MapWidth is " + std::to_string(width_));
    RequireOneSegment(width_, terrain.OFilename);
}

void LoadLFile(Terrain& terrain, Progress& progress, DebugLog& log) {
    progress.SetBar(0);
    progress.SetText("Loading L2 File...");
    const ReadingLock reading({terrain.LFilename, terrain.OFilename});
    LogMended(reading.Mended(), log);
    Level2Files files(terrain, log);
    const int32_t width = files.Width();
    log.WriteLog("Redimed LxArr, 1 to " + std::to_string(int64_t{width} * width));
    const FileIdentity readL = files.L().Identity();
    LevelBlocks blocks(std::move(files.L()), width);
    PostArray posts =
        ReadPosts(blocks, files.O().ReadAll().Span(), width, terrain.OFilename,
                  [&progress](int32_t row, int32_t rows) {
                      progress.SetBar(Percent(row, rows));
                      progress.LetEventsThrough();
                  });
    terrain.MapWidth = width;
    terrain.LxArr = std::move(posts);
    terrain.ReadL = readL;
    terrain.ReadO = files.O().Identity();
    const int64_t segments = width / SegmentSide;
    terrain.Gap = {blocks.Missing(), segments * segments};

    log.WriteLog("Loaded L&O Files...");
    progress.LetEventsThrough();
    log.WriteLog("Closed L&O Files...");
    log.WriteLog("Exiting LoadLFile...");
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

void WriteLevel2(const Terrain& terrain, StagedFile& fileL, StagedFile& fileO,
                 Progress& progress) {
    const int32_t segments = terrain.MapWidth / SegmentSide;
    const auto posts = terrain.LxArr.Values();
    int64_t shared = -1;
    for (int32_t segY = 1; segY <= segments; ++segY) {
        for (int32_t segX = 1; segX <= segments; ++segX) {
            const TerrainPost* first = &posts[FirstPostOf(segX, segY, terrain.MapWidth)];
            const auto position = static_cast<int64_t>(fileL.Position());
            const bool sea = IsCommonSeg(terrain, segX, segY);
            if (!sea || shared == -1)
                WriteBlock(fileL, first, terrain.MapWidth);
            if (sea && shared == -1)
                shared = position;
            fileO.WriteInt32(static_cast<int32_t>(sea ? shared : position));
        }
        progress.SetBar(Percent(segY, segments));
        progress.LetEventsThrough();
    }
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
    Transaction files;
    const FileIdentity unread;
    StagedFile& fileL = files.Stage(pair.L, own ? terrain.ReadL : unread, ifChanged);
    StagedFile& fileO = files.Stage(pair.O, own ? terrain.ReadO : unread, ifChanged);
    WriteLevel2(terrain, fileL, fileO, progress);
    files.Commit();
    if (own) {
        terrain.ReadL = fileL.Identity();
        terrain.ReadO = fileO.Identity();
        terrain.Gap.Missing = 0;
    }
}

void LogMended(const std::vector<std::string>& mended, DebugLog& log) {
    for (const std::string& what : mended)
        log.WriteLog(what);
}

} // namespace vardenix
