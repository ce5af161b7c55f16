#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"

#include <string>

namespace vardenix {

// The three small files that the simulator wants beside a theater, made from the posts of
// level 2. Each replaces a file of its name; whatever fails, the old file stands. The bar
// moves and events pass once per row of posts or of blocks.

// Heights: for each square of 8 by 8 posts the highest elevation, 0 at least, as 16 bits.
// MapWidth / 8 values a row, rounded half to even; the rows from the bottom of the map.
// Whole segments only are looked at.
void WriteMEA(const Terrain& terrain, const std::string& path, Progress& progress);

// Tiles: a line for each number that posts have, and the end mark. Error 9 names the
// first post whose number has no entry in `lookup`.
void WriteTC(const Terrain& terrain, const TileLookup& lookup, const std::string& path,
             Progress& progress);

// The tile number of each post as 16 bits, the rows from the top of the map. Error 6
// names the first post, in that order, whose number is above 32767 or below -32768.
void WriteTM(const Terrain& terrain, const std::string& path, Progress& progress);

enum class DerivedFile { MEA, TC, TM };

// The menu's commands: ask for the file and write it. A cancel ends without a word, an
// error in a box.
void MakeDerivedFile(DerivedFile kind, const Terrain& terrain, const TileLookup& lookup,
                     Dialogs& dialogs, Progress& progress);

} // namespace vardenix
