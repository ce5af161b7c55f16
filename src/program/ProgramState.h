#pragma once

#include "catalogue/TextureBin.h"
#include "files/RunFolders.h"
#include "levels/HeightPicture.h"
#include "levels/Terrain.h"
#include "program/ChangeLog.h"
#include "program/Configuration.h"
#include "program/DirtyFlags.h"
#include "program/Discovery.h"
#include "program/FeatureSet.h"
#include "program/MapFileRecord.h"
#include "program/NumberPasses.h"
#include "program/SearchResults.h"

#include <optional>
#include <string>

namespace vardenix {

// The program's own folders, each with a slash at its end.
struct ProgramFolders {
    std::string AppPath;     // base of the files that the program writes
    std::string ShippedPath; // where the files lie that come with it, "NoTile.jpg"
    // This run's own in "Temp" and "UpdateTemp" under AppPath: scratch of the image
    // services and of the updater.
    std::string TempFolder;
    std::string UpdateTempFolder;
    // The user's own below the system's; home of the restore point.
    std::string SystemTempPath;
    // Where logs of changes and earlier saves are kept, without a slash at their ends;
    // empty when none are.
    std::string LogFolder;
    std::string SavesFolder;
};

// Everything that more than one window works on, owned for the whole run. Only windows
// and app/ see the whole; routines of the logic are given the part they work on.
struct ProgramState {
    // Control handlers of the workspace skip their repaint until the start-up window has
    // gone.
    bool Starting = true;
    // Unload handlers do nothing more.
    bool Exiting = false;
    bool AbortPaint = false;

    ProgramFolders Folders;
    std::optional<RunName> Run; // of the scratch folders, from their preparing on
    vardenix::Configuration Configuration;
    vardenix::Discovery Discovery;
    vardenix::Terrain Terrain;
    vardenix::Catalogue Catalogue;
    std::string MAPFile;      // the theater.map in use
    FileIdentity MAPFileRead; // as it was read or last saved
    vardenix::MapFileRecord MapFileRecord{};
    HeightPicture Preview;
    FeatureSet Features;
    FeatureSwitches ShownFeatures;
    SearchState Search;

    vardenix::Papers Papers{Terrain, Catalogue, MapFileRecord, Features};
    ChangeLog Changes{Papers};
    DirtyFlags Flags;
    NumberPasses Numbers{Changes};
};

// By its flag or by the log: a RESTORE raises no flag, and what raises one may leave a
// paper as it was.
inline bool MayDiffer(const ProgramState& state, Paper paper) {
    const DirtyFlags& flags = state.Flags;
    return state.Changes.Unsaved(paper) || (paper == Paper::Level2 && flags.L2) ||
           (paper == Paper::Heights && flags.L0ELV) ||
           (paper == Paper::Catalogue && flags.BIN) ||
           (paper == Paper::MapFile && flags.MAP);
}

} // namespace vardenix
