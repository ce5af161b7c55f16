#include "theater/TileCheck.h"

#include "platform/FileNames.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "theater/TerrainStore.h"

#include <fstream>

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

// Error_out.txt only grows: earlier reports stay.
void AppendText(const std::string& path, const std::string& text) {
    std::ofstream file(RealPath(path), std::ios::binary | std::ios::app);
    file << text << std::flush;
    if (!file)
        throw RuntimeError(ErrorNumber::PathFileAccess, "writing " + path);
}

} // namespace

std::vector<int32_t> CountTileUse(const Terrain& terrain, TileLookup& lookup) {
    for (TileInfo& tile : lookup)
        tile.UseCount = 0;
    // Counted in a table of its own: the records of TileLookup are too wide to be walked
    // through once a post.
    std::vector<int32_t> uses(lookup.size(), 0);
    std::vector<bool> empty(lookup.size());
    for (size_t number = 0; number < lookup.size(); ++number)
        empty[number] = lookup[number].Terrain == -1;

    std::vector<int32_t> unknown;
    int32_t serial = 0;
    int32_t negative = 0;
    for (const TerrainPost& post : terrain.LxArr.Values()) {
        ++serial;
        const auto number = static_cast<size_t>(post.TileOffset);
        if (number < uses.size()) {
            ++uses[number];
            if (empty[number])
                unknown.push_back(serial);
        } else if (post.TileOffset < 0) {
            negative = serial;
            break;
        } else {
            unknown.push_back(serial);
        }
    }
    for (size_t number = 0; number < lookup.size(); ++number)
        lookup[number].UseCount = uses[number];
    if (negative != 0)
        RefuseNegative(terrain, negative, terrain.LxArr(negative).TileOffset);
    return unknown;
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
        AppendText(appPath + "Error_out.txt",
                   UnknownTilesReport(terrain, unknown, clock.Now()));
}

} // namespace vardenix
