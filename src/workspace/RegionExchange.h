#pragma once

#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"
#include "workspace/PostClip.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// The tile numbers of a rectangle of posts, and nothing else of them: what an .exp file
// holds.
struct TileRegion {
    int32_t RegionWidth = 0; // posts, at least 1
    int32_t RegionHeight = 0;
    std::vector<int32_t> TileNumbers; // rows from the lowest y up, each from the lowest x
};

// Writes a region over a file that is there. Error 9 when a corner lies outside the
// terrain; the errors of writing (61, 70, 75) leave the old file. The bar moves and
// events pass once per row; the bar's value passes 100 for regions away from the lower
// edge.
void WriteRegion(const Terrain& terrain, const PostBox& box, const std::string& path,
                 Progress& progress);

// The region that a file holds. Error 62 when the file's size does not fit what its first
// eight bytes say, and for sides below 1; error 9 for a negative tile number, as a
// theater that has one cannot be opened. `path` is for the messages.
TileRegion ParseRegion(std::span<const std::byte> bytes, const std::string& path);
// ParseRegion of a file that is measured before it is read. The errors of reading (53,
// 70, 75) too.
TileRegion ReadRegion(const std::string& path);

// A region's bytes, as a file has them.
std::vector<std::byte> BytesOf(const TileRegion& region);
// The tiles of copied posts, and posts with the tiles of a region. What was not selected
// within the rectangle has its tile all the same.
TileRegion RegionOf(const PostClip& clip);
PostClip ClipOf(const TileRegion& region);

// Whether all of a region lies on a terrain `mapWidth` posts a side when its lower left
// post is x, y, counted from 0.
bool RegionFits(const TileRegion& region, int32_t x, int32_t y, int32_t mapWidth);

// Sets the tile numbers of the posts that the region covers, those outside the terrain
// and outside of `bounds`, where there is one, apart, and gives their number. The bar
// moves and events pass once per row.
int64_t StampRegion(Terrain& terrain, const TileRegion& region, int32_t x, int32_t y,
                    Progress& progress, const Selection* bounds = nullptr);

// Asks for the file and writes the part of the region that lies on the terrain; a cancel
// ends without a word. The file's path; nothing when none was written.
std::optional<std::string> ExportTiles(const Terrain& terrain, const PostBox& box,
                                       Dialogs& dialogs, Progress& progress);

// CmdImport: asks for the file and reads it. Nothing when cancelled, and after a box when
// the file is not one of ours.
std::optional<TileRegion> AskForRegion(Dialogs& dialogs);

// That of a file that is named already; nothing after a box when it is not one of ours.
std::optional<TileRegion> RegionOfFile(const std::string& path, Dialogs& dialogs);

// Stamps a region with its lower left post at x, y, counted from 0; when it reaches past
// the edge only after a question. False when the terrain is as it was.
bool ImportTiles(Terrain& terrain, const TileRegion& region, int32_t x, int32_t y,
                 Dialogs& dialogs, Progress& progress, const Selection* bounds = nullptr);

} // namespace vardenix
