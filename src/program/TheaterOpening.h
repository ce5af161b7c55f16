#pragma once

#include "levels/LevelPairs.h"
#include "platform/Clock.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"
#include "platform/Platform.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"

#include <string>

namespace vardenix {

// The four paths a theater is opened from.
struct TheaterPaths {
    std::string L2File;    // Text1
    std::string BinFile;   // Text2
    std::string MapFile;   // Text4
    std::string DDSFolder; // Text5, with a slash at its end
};

// The paths of a theater of an installed game; `baseDir` ends in a slash.
TheaterPaths PathsOfTheater(const std::string& baseDir, const std::string& terrainDir);

// The pair that a theater is opened from, as real paths, for the text of its L2 file.
LevelPair FindLevelPair(const std::string& l2File);

// The windows that a theater is opened into, in the order in which they are asked for.
// app/ fills this in.
class OpeningWindows {
public:
    OpeningWindows() = default;
    OpeningWindows(const OpeningWindows&) = delete;
    OpeningWindows& operator=(const OpeningWindows&) = delete;
    virtual ~OpeningWindows() = default;

    // ProgramState::Preview is new: FrmVXTheaterPreview fits itself to it.
    virtual void PreviewChanged() = 0;
    // frmMAPMain is made, hidden, and reads MAPFile.
    virtual void LoadMapEditor() = 0;
    // FrmVXMap is made, hidden.
    virtual void LoadMap() = 0;
    // FrmVXMain comes up.
    virtual void ShowMainPanel() = 0;
    virtual void RestoreChildWindows() = 0;
    virtual void RefreshPalette() = 0;
    virtual void InitForm() = 0;
};

// Puts right what interrupted saves have left in all folders of a theater at once, since
// a save may reach over all of them. A journal that does not count is told in a box: it
// came from elsewhere, or tells of a save that was lost. Errors of MendAll.
void MendTheater(const TheaterPaths& paths, Dialogs& dialogs, DebugLog& log);

// Finds the files that the paths name and keeps their real paths in the state, checking
// them in order. The first that is empty or not there is told in a box, with the path
// that was looked for, and the result is false. DDSFolder is not checked. A refusal of
// the system goes through (70, 57, 75).
bool CheckTheaterPaths(ProgramState& state, const TheaterPaths& paths, Dialogs& dialogs,
                       DebugLog& log);

// Reads the theater that the state's paths name and brings up the windows. Errors of the
// readers go through; the start-up window can then be used again.
void LoadTheater(ProgramState& state, Progress& progress, const Platform& platform,
                 DebugLog& log, OpeningWindows& windows);

} // namespace vardenix
