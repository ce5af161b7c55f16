#include "catalogue/TileCheck.h"

#include "files/FileNames.h"
#include "files/StagedFile.h"
#include "levels/TerrainStore.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <span>

namespace vardenix {

namespace {

constexpr const char* Question =
    "Some tiles in L2 file don't exist in bin file. Do you want to save a text file with "
    "the errors?";

constexpr const char* Dashes = "-----------------------------------";

[[noreturn]] void RefuseNegative(const Terrain& terrain, int32_t serial, int32_t tile) {
    const PostXY post = SerialToXY(serial, terrain.MapWidth);
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                       terrain.LFilename + ": the post at X " + Format0(post.X - 1) +
                           ", Y " + Format0(post.Y - 1) +
                           ", counted from 0, has the tile number " +
                           std::to_string(tile) + "; expected 0 or more");
}

std::vector<int32_t> SerialsOfUnknown(const Terrain& terrain, const TileLookup& lookup) {
    std::vector<int32_t> serials;
    int32_t serial = 0;
    for (const TerrainPost& post : terrain.LxArr.Values()) {
        ++serial;
        const int32_t tile = post.TileOffset;
        if (tile < 0)
            RefuseNegative(terrain, serial, tile);
        if (static_cast<size_t>(tile) >= lookup.size() ||
            lookup[static_cast<size_t>(tile)].Terrain == -1)
            serials.push_back(serial);
    }
    return serials;
}

} // namespace

// Four tables take turns: a land is full of runs of one number, and adding again
// to what was just added to would wait for it.
std::vector<int32_t> CountTileNumbers(std::span<const TerrainPost> posts,
                                      size_t numbers) {
    constexpr size_t Tables = 4;
    const size_t width = numbers + 1;
    const auto last = static_cast<uint32_t>(numbers);
    std::vector<int32_t> counts(width * Tables, 0);
    int32_t* const tables[Tables] = {&counts[0], &counts[width], &counts[2 * width],
                                     &counts[3 * width]};
    const auto count = [last](int32_t* table, const TerrainPost& post) {
        ++table[std::min(static_cast<uint32_t>(post.TileOffset), last)];
    };
    size_t i = 0;
    for (; i + Tables <= posts.size(); i += Tables) {
        count(tables[0], posts[i]);
        count(tables[1], posts[i + 1]);
        count(tables[2], posts[i + 2]);
        count(tables[3], posts[i + 3]);
    }
    for (; i < posts.size(); ++i)
        count(tables[0], posts[i]);
    for (size_t number = 0; number < width; ++number)
        for (size_t table = 1; table < Tables; ++table)
            counts[number] += counts[table * width + number];
    counts.resize(width);
    return counts;
}

std::vector<int32_t> CountTileUse(const Terrain& terrain, TileLookup& lookup) {
    const size_t numbers = lookup.size();
    const auto posts = terrain.LxArr.Values();
    const std::vector<int32_t> uses = CountTileNumbers(posts, numbers);
    bool known = uses[numbers] == 0;
    for (size_t number = 0; number < numbers; ++number) {
        lookup[number].UseCount = uses[number];
        known = known && (uses[number] == 0 || lookup[number].Terrain != -1);
    }
    // Nearly every theater ends here.
    return known ? std::vector<int32_t>{} : SerialsOfUnknown(terrain, lookup);
}

void AppendReport(const std::string& path, const std::string& report) {
    StagedFile file(path);
    if (FileExists(path))
        file.WriteRestOf(ReadableFile(path), 0);
    file.WriteText(report);
    file.Commit();
}

std::string UnknownTilesReport(const Terrain& terrain,
                               const std::vector<int32_t>& serials,
                               const LocalTime& now) {
    const std::string newLine = "\r\n";
    const std::string dashes = Dashes + newLine;
    const std::string moment = ShortMonthDate(now) + " - " + HoursMinutes(now);
    std::string text = newLine + dashes + dashes + "      Module1::CompareL2Tiles      " +
                       newLine + "        " + moment + "        " + newLine + dashes +
                       dashes + "X,Y\tTile Offset" + newLine + dashes;
    for (const int32_t serial : serials) {
        const PostXY post = SerialToXY(serial, terrain.MapWidth);
        text += Format0(post.X) + "," + Format0(post.Y) + "\t" +
                Format0(terrain.LxArr(serial).TileOffset) + newLine;
    }
    return text;
}

void CompareL2Tiles(bool showReport, const Terrain& terrain, TileLookup& lookup,
                    const std::string& appPath, Dialogs& dialogs, const Clock& clock) {
    const std::vector<int32_t> unknown = CountTileUse(terrain, lookup);
    if (!showReport || unknown.empty())
        return;
    if (dialogs.MessageBox(Question, "", BoxIcon::Warning, BoxButtons::YesNo) ==
        BoxAnswer::Yes)
        AppendReport(appPath + "Error_out.txt",
                     UnknownTilesReport(terrain, unknown, clock.Now()));
}

} // namespace vardenix
