#pragma once

#include "builder/DiskRoom.h"
#include "builder/Fartiles.h"
#include "builder/RebuildView.h"
#include "builder/RewrittenFile.h"
#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// What a rebuild works with; everything is borrowed.
struct RebuildParts {
    const vardenix::Terrain& Terrain;
    const vardenix::Catalogue& Catalogue;
    RebuildView& View;
    DebugLog& Log;
};

struct RebuildOptions {
    bool MakeL3 = false;      // L3 to L5 and the far tiles too
    int32_t FarSize = 32;     // pixels along the edge of a far tile
    bool OnlyChanged = false; // files that would come out the same are left alone
    bool AcceptShort = false; // of an elevation file that ends early, without a question
    vardenix::IfChanged IfChanged = vardenix::IfChanged::Refuse;
    unsigned Threads = 0; // 0: as many as the machine has
    AskFreeRoom FreeRoom = FreeRoomAt;
};

// What a run has made, in the order in which it was made.
struct RebuildReport {
    std::vector<RebuiltFile> Files;
    FartileCounts Fartiles;
    int64_t Seconds = 0;
    bool HeightsReadAnew = false; // those loaded for editing, whose file was written
};

// The folder of the L file and that of Texture.bin, each with its slash.
std::string LxFolderOf(const Terrain& terrain);
std::string TextureFolderOf(const Catalogue& catalogue);

// Derives L0 and L1, and with MakeL3 the levels 3 to 5 and the far tiles, from level 2 as
// it is in memory. All files take their places together at the end; on any error, and
// when the user stops it (32755), the theater has its old files. Level 2 and the
// catalogue are not changed.
//
// Errors: 5 for a far tile size that cannot be made, 61 with the bytes needed when the
// disk lacks the room, 53 for an L file without its O file, 9 for a missing level 3, 4 or
// 5 and for tile numbers beyond the catalogue, 481 for tile pictures, and the system's
// refusals.
RebuildReport RebuildTheater(const RebuildParts& parts, const RebuildOptions& options,
                             Fartiles& fartiles);

// What a report says: files, sizes, far tiles where any were taken over, seconds, each on
// a line.
std::string TextOfReport(const RebuildReport& report);
// A report with each folder named once, for a box that is no wider than its names.
std::string TextByFolder(const RebuildReport& report);

} // namespace vardenix
