#include "search/DerivedFiles.h"

#include "catalogue/TileCheck.h"
#include "companion/Vardenix.h"
#include "files/StagedFile.h"
#include "levels/TerrainStore.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <vector>

namespace vardenix {

namespace {

constexpr int32_t SquareSide = 8; // posts along a side of what one value of a .mea covers

std::span<const TerrainPost> RowOf(const Terrain& terrain, int32_t y) {
    const auto width = static_cast<size_t>(terrain.MapWidth);
    return terrain.LxArr.Values().subspan((static_cast<size_t>(y) - 1) * width, width);
}

// The squares of one row that a row of posts lies in grow to its elevations.
void Raise(std::span<int16_t> squares, std::span<const TerrainPost> posts) {
    for (size_t square = 0; square < squares.size(); ++square) {
        int16_t highest = squares[square];
        for (const TerrainPost& post : posts.subspan(square * SquareSide, SquareSide)) {
            const int16_t elevation = post.Elevation;
            highest = std::max(highest, elevation);
        }
        squares[square] = highest;
    }
}

// All the squares of the map, whole segments only, the others 0.
std::vector<int16_t> HighestElevations(const Terrain& terrain, Progress& progress) {
    const auto rowLength = static_cast<size_t>(
        RoundHalfEven(static_cast<double>(terrain.MapWidth) / SquareSide));
    std::vector<int16_t> values(rowLength * rowLength, 0);
    const int32_t segments = terrain.MapWidth / SegmentSide;
    const auto squares = static_cast<size_t>(segments) * 2;
    for (int32_t segY = 0; segY < segments; ++segY) {
        for (int32_t y = segY * SegmentSide; y < (segY + 1) * SegmentSide; ++y)
            Raise(std::span(values).subspan(
                      static_cast<size_t>(y / SquareSide) * rowLength, squares),
                  RowOf(terrain, y + 1));
        progress.SetBar(Percent(segY + 1, segments));
        progress.LetEventsThrough();
    }
    return values;
}

std::string Hexadecimal(size_t number) {
    std::array<char, 16> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    std::string text(digits.data(), end);
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return text;
}

[[noreturn]] void RefuseTile(const Terrain& terrain, int32_t serial, ErrorNumber number,
                             const std::string& expected) {
    const PostXY post = SerialToXY(serial, terrain.MapWidth);
    const int32_t tile = terrain.LxArr(serial).TileOffset;
    throw RuntimeError(number, "the post at X " + Format0(post.X - 1) + ", Y " +
                                   Format0(post.Y - 1) +
                                   ", counted from 0, has the tile number " +
                                   std::to_string(tile) + "; " + expected);
}

void RequireKnownTiles(const Terrain& terrain, const TileLookup& lookup) {
    int32_t serial = 0;
    for (const TerrainPost& post : terrain.LxArr.Values()) {
        ++serial;
        const int32_t tile = post.TileOffset;
        if (tile < 0 || static_cast<size_t>(tile) >= lookup.size())
            RefuseTile(terrain, serial, ErrorNumber::SubscriptOutOfRange,
                       "the catalogue's numbers end below " +
                           std::to_string(lookup.size()));
    }
}

// `row` holds the lower halves of row `y`'s tile numbers.
void RequireSixteenBits(const Terrain& terrain, int32_t y,
                        const std::vector<int16_t>& row) {
    const auto posts = RowOf(terrain, y);
    for (size_t x = 0; x < row.size(); ++x)
        if (posts[x].TileOffset != row[x])
            RefuseTile(terrain,
                       XYToSerial(static_cast<int32_t>(x) + 1, y, terrain.MapWidth),
                       ErrorNumber::Overflow, "a .tm file holds numbers up to 32767");
}

// Counted in pieces, so that the bar moves.
std::vector<int64_t> CountUses(const Terrain& terrain, size_t numbers,
                               Progress& progress) {
    std::vector<int64_t> uses(numbers + 1, 0);
    const auto width = static_cast<size_t>(terrain.MapWidth);
    // A piece that is small beside the table would cost more for the table.
    const auto rowsAtOnce = static_cast<int32_t>(
        std::max(size_t{64}, 8 * numbers / std::max(width, size_t{1})));
    for (int32_t y = 1; y <= terrain.MapWidth; y += rowsAtOnce) {
        const int32_t rows = std::min(rowsAtOnce, terrain.MapWidth - y + 1);
        const auto posts = terrain.LxArr.Values().subspan(
            (static_cast<size_t>(y) - 1) * width, width * static_cast<size_t>(rows));
        const std::vector<int32_t> counted = CountTileNumbers(posts, numbers);
        for (size_t number = 0; number < uses.size(); ++number)
            uses[number] += counted[number];
        progress.SetBar(Percent(y + rows - 1, terrain.MapWidth));
        progress.LetEventsThrough();
    }
    return uses;
}

void AskAndWrite(DerivedFile kind, const Terrain& terrain, const TileLookup& lookup,
                 Dialogs& dialogs, Progress& progress) {
    switch (kind) {
    case DerivedFile::MEA:
        return WriteMEA(
            terrain, dialogs.SaveFile({.Title = {}, .Filter = "MEA Files | *.mea"}).Path,
            progress);
    case DerivedFile::TC:
        return WriteTC(terrain, lookup,
                       dialogs.SaveFile({.Title = {}, .Filter = "tc Files | *.tc"}).Path,
                       progress);
    case DerivedFile::TM:
        return WriteTM(terrain,
                       dialogs.SaveFile({.Title = {}, .Filter = "tm Files | *.tm"}).Path,
                       progress);
    }
}

} // namespace

void WriteMEA(const Terrain& terrain, const std::string& path, Progress& progress) {
    const ShownBar bar(progress);
    const std::vector<int16_t> values = HighestElevations(terrain, progress);
    StagedFile file(path);
    file.Write(std::as_bytes(std::span(values)));
    file.Commit();
}

void WriteTC(const Terrain& terrain, const TileLookup& lookup, const std::string& path,
             Progress& progress) {
    const ShownBar bar(progress);
    const std::vector<int64_t> uses = CountUses(terrain, lookup.size(), progress);
    if (uses.back() != 0)
        RequireKnownTiles(terrain, lookup);
    StagedFile file(path);
    for (size_t number = 0; number < lookup.size(); ++number)
        if (uses[number] != 0)
            file.WriteText(Hexadecimal(number) + "\t " + lookup[number].Name +
                           "\t | Used " + std::to_string(uses[number]) + " times\r\n");
    file.WriteText("FFFF     END MARK    | Used 0 times\r\n");
    file.Commit();
}

void WriteTM(const Terrain& terrain, const std::string& path, Progress& progress) {
    const ShownBar bar(progress);
    StagedFile file(path);
    std::vector<int16_t> row(static_cast<size_t>(terrain.MapWidth));
    for (int32_t y = terrain.MapWidth; y >= 1; --y) {
        const auto posts = RowOf(terrain, y);
        std::ranges::transform(posts, row.begin(), [](const TerrainPost& post) {
            return static_cast<int16_t>(post.TileOffset);
        });
        RequireSixteenBits(terrain, y, row);
        file.Write(std::as_bytes(std::span(row)));
        progress.SetBar(Percent(terrain.MapWidth - y, terrain.MapWidth));
        progress.LetEventsThrough();
    }
    file.Commit();
}

void MakeDerivedFile(DerivedFile kind, const Terrain& terrain, const TileLookup& lookup,
                     Dialogs& dialogs, Progress& progress) {
    try {
        AskAndWrite(kind, terrain, lookup, dialogs, progress);
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
    }
}

} // namespace vardenix
