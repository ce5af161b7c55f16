#pragma once

#include "builder/ElevationGrids.h"
#include "builder/RebuildView.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"

#include <cstdint>
#include <string>

namespace vardenix {

// The file that the elevations of all levels come from: heights as fine as level 0.
struct ElevationMaster {
    ElevationKind ElevationFileType = ElevationKind::None;
    std::string Path; // as it was picked, for opening

    bool Chosen() const { return ElevationFileType != ElevationKind::None; }
    // As it is shown, in upper case.
    std::string ElevationFile() const;
};

// Whether a file has four times as many heights a side as level 2 has posts; an L0 file
// is judged by its O0 file only, an .elv file by its length. Error 53 for a file that is
// not there, the O0 file among them.
bool FitsTheater(const ElevationMaster& master, int32_t mapWidth);

// cmdBrowse: asks for a master, beginning in a folder, and looks whether it fits. What is
// wrong with it is told, a cancel is not; none is chosen then.
ElevationMaster BrowseElevationFile(int32_t mapWidth, const std::string& folder,
                                    Dialogs& dialogs);

// Reads the heights of a master into the finest grid. PB1 and PB2 count rows of blocks of
// an L0 file and one step for an .elv file; events pass on every tenth row. On an error
// (53, 62 and the system's refusals) the grid holds what was read; 32755 when the user
// stops it.
void ReadElevationFile(const ElevationMaster& master, int32_t mapWidth,
                       ElevationGrids& grids, RebuildView& view, DebugLog& log);

} // namespace vardenix
