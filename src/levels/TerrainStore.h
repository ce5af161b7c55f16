#pragma once

#include "files/ByteSink.h"
#include "files/Transaction.h"
#include "levels/LevelPairs.h"
#include "levels/LevelReader.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "platform/Progress.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vardenix {

struct PostXY {
    double X = 0;
    double Y = 0;
};

// The inverse of XYToSerial: where a serial lies in a grid of `width` posts a side.
PostXY SerialToXY(int32_t serial, int32_t width);

// The post (i, j), each 1 to 16, of a segment. The width is taken and not used.
PostXY SegToXY(int32_t segX, int32_t segY, int32_t i, int32_t j, int32_t width);

// Posts per side that an O file of `lengthO` bytes stands for: the root of its entries
// times 16, rounded half to even.
double RootOfOffsetFile(uint64_t lengthO);
// Of a level that is to be read, as a whole number: error 62 for an empty file, error 7
// beyond MaxGridWidth.
int32_t WidthFromOffsetFile(uint64_t lengthO, const std::string& pathO);

// The posts of a level `width` posts a side, whose whole segments the reader has: a width
// of 33 posts has two a side. Posts that the L file does not hold stay zero. Error 7 when
// memory lacks. `afterRow(row, rows)` is called as often as there are rows of segments.
PostArray ReadPosts(const LevelReader& reader, int32_t width,
                    const std::function<void(int32_t, int32_t)>& afterRow);

// Reads LFilename and OFilename into MapWidth and LxArr, after mending what an
// interrupted save may have left. The width comes from the O file alone. Posts that the L
// file does not hold stay zero, and their segments are counted in Gap. Whole segments
// only are read: a width of 33 posts has two segments a side; error 62 when there is
// none. The bar moves and events pass once per row of segments. On any error the terrain
// is what it was.
void LoadLFile(Terrain& terrain, Progress& progress, DebugLog& log);

// Level 2 for whoever wants single posts of it: finds and checks what LoadLFile does but
// reads the O file alone, and leaves all in the terrain that LoadLFile does but LxArr.
// The caller holds a ReadingLock.
LevelReader OpenLevel2(Terrain& terrain, DebugLog& log);

// Whether all 256 posts of a segment of LxArr have tile 0 and elevation 0; their other
// fields play no part.
bool IsCommonSeg(const Terrain& terrain, int32_t segX, int32_t segY);

// Whether level 2 may be written over the files that it was read from: error 5 while
// they have a gap that nobody has said may stay. Whoever writes them goes through here.
void RequireNoGap(const Terrain& terrain);

// Writes LxArr to a pair; all sea segments share the block of the first one met. The old
// pair stands until the new one is whole on the disk. LFilename and OFilename stay what
// they are; when it is their files that are written, ReadL and ReadO follow and the gap
// is closed. Errors before anything is written: 75 when L and O would be the same file or
// L has the name of an unfinished save, 5 for a gap in the theater's own files, 53 when a
// neighbour would be written in place of the theater's own file; ChangedFileError when
// the theater's own files are others than were read; the system's refusals (61, 70, 75)
// while writing.
void SaveTheater(Terrain& terrain, const LevelPair& pair, Progress& progress,
                 IfChanged ifChanged = IfChanged::Refuse);

// To the pair that PairForSaving gives for a path.
void SaveTheater(Terrain& terrain, const std::string& path, Progress& progress,
                 IfChanged ifChanged = IfChanged::Refuse);

// The bytes that SaveTheater writes to a pair, for whoever changes other files along with
// it. The bar moves and events pass once per row of segments.
void WriteLevel2(const Terrain& terrain, ByteSink& fileL, ByteSink& fileO,
                 Progress& progress);

// Sentences of Mending.h.
void LogMended(const std::vector<std::string>& mended, DebugLog& log);

} // namespace vardenix
