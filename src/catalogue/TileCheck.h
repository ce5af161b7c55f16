#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// How many posts have each number below `numbers`; the last element counts all other
// posts, those with negative numbers among them.
std::vector<int32_t> CountTileNumbers(std::span<const TerrainPost> posts, size_t numbers);

// Counts the posts that use each tile number into UseCount, from 0 on every element, the
// empty slots too. Returns the serials, in order, of the posts whose number has no tile:
// a number above the table is listed and not counted, an empty slot's is both. A negative
// number ends in error 9 that names the post.
std::vector<int32_t> CountTileUse(const Terrain& terrain, TileLookup& lookup);

// The lines that are appended to Error_out.txt for those serials, each with its CR LF; X
// and Y count from 1.
std::string UnknownTilesReport(const Terrain& terrain,
                               const std::vector<int32_t>& serials, const LocalTime& now);

// Appends such a report to a file, which only ever grows: what was there stands until all
// of it is on the disk. The system's refusals (61, 70, 75), and then it is as it was.
void AppendReport(const std::string& path, const std::string& report);

// CountTileUse, and where posts without a tile exist and a report is wished, the question
// whether to append it to Error_out.txt in AppPath.
void CompareL2Tiles(bool showReport, const Terrain& terrain, TileLookup& lookup,
                    const std::string& appPath, Dialogs& dialogs, const Clock& clock);

} // namespace vardenix
