#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"

#include <optional>
#include <string>

namespace vardenix {

// What the panel shows while elevations are loaded or a theater is saved, and afterwards.
class SavingPanel {
public:
    SavingPanel() = default;
    SavingPanel(const SavingPanel&) = delete;
    SavingPanel& operator=(const SavingPanel&) = delete;
    virtual ~SavingPanel() = default;

    // Nothing on the panel can be used while files are read or written.
    virtual void LockPanel(bool locked) = 0;
    virtual bool L0NeedSaveFlag() const = 0;
    // The flag falls, and with the last one the star.
    virtual void L2Saved() = 0;
    virtual void L0Saved() = 0;
    // The path of the loaded elevations, for the tool tips; chkL0ELV can be used.
    virtual void SetL0FileName(const std::string& fileName) = 0;
};

// What loading and saving work on; everything is borrowed.
struct SavingParts {
    vardenix::Terrain& Terrain;
    MapView& View;
    vardenix::Dialogs& Dialogs;
    Progress& PB3;
    DebugLog& Log;
    SavingPanel& Panel;
};

// CmdSaveTheater: writes what the mode edits; `as` asks for another name first. An error
// is told in a box and leaves the old files and the flag as they were; a cancel says
// nothing. Elevations that no file holds afterwards, because the one that was chosen does
// not fit or stays empty, are still unsaved. The file that was saved, or nothing.
std::optional<std::string> CmdSaveTheater(const SavingParts& parts, bool as);

// cmdLoadL0Elv: asks for a L0 or .elv file and reads it into L0ElvArr, after a question
// when the loaded one has changes. Failures are told, and leave what was loaded before.
// What was loaded before, when another file is loaded; its kind is None at the first.
std::optional<ElevationLayer> cmdLoadL0Elv(const SavingParts& parts);

// As cmdLoadL0Elv, of a file that is named already; its name tells what it is.
std::optional<ElevationLayer> TakeElevationFile(const SavingParts& parts,
                                                const std::string& path);

// The same of a file that is known already, without a question.
std::optional<ElevationLayer> LoadL0ElvFile(const SavingParts& parts, ElevationKind kind,
                                            const std::string& path);

} // namespace vardenix
