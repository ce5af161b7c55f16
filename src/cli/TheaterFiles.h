#pragma once

#include "cli/CommandLine.h"
#include "files/FileIdentity.h"
#include "levels/LevelReader.h"
#include "platform/DebugLog.h"
#include "platform/Platform.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"
#include "program/TheaterOpening.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// The options that say which theater a command works on: a folder that holds terrain/ and
// texture/, or the four paths one by one.
class TheaterFiles {
public:
    // Adds the options to a command, and their check: a theater is named always, or where
    // the command asks for one.
    enum class Wanted { Always, Perhaps };
    explicit TheaterFiles(Command& command, Wanted wanted = Wanted::Always);
    TheaterFiles(const TheaterFiles&) = delete;
    TheaterFiles& operator=(const TheaterFiles&) = delete;

    bool AreNamed() const;

    // The L2 file as it was given, and the posts a side that the length of its O2 file
    // stands for: nothing is opened, so that what lies outside the terrain is usage told
    // before all else. Nothing where there is no such file: the opening tells that.
    std::string L2File() const { return Paths().L2File; }
    std::optional<int32_t> WidthOnDisk() const;

    // Opens the theater: level 2, the catalogue, theater.map. Missing tile pictures are
    // told on the standard error. Error 53 for a file that is not there, and what the
    // readers throw.
    void Open(ProgramState& state, Progress& progress, const Platform& platform,
              DebugLog& log) const;

    // Opens it for a command that wants single values: of level 2 no post is read, of the
    // catalogue, where it is wanted at all, no picture is looked for.
    LevelReader OpenToLookUp(ProgramState& state, Dialogs& dialogs, DebugLog& log,
                             bool catalogue) const;

    // Every file of it that a command reads or makes, there or not, but for the single
    // tile pictures.
    std::vector<std::string> AllFiles() const;

    // The folder of tile pictures, with a slash at its end.
    std::string PictureFolder() const { return Paths().DDSFolder; }

    // What commands write of it: the L2 file, Texture.bin and theater.map.
    std::vector<std::string> WrittenFiles() const;

private:
    TheaterPaths Paths() const;
    // Error 53 for a file that is not there.
    void CheckPaths(ProgramState& state, Dialogs& dialogs, DebugLog& log) const;

    std::string folder_;
    std::string l2_;
    std::string bin_;
    std::string map_;
    std::string dds_;
};

// Puts right what interrupted saves have left beside files that are no part of the
// theater that was opened; a journal that does not count is told on the standard error.
void MendAndTell(const std::vector<std::string>& files);

// OpenMapFile, and a word on the standard error about a file that ends too early: what it
// lacks is 0, and the next save would write it so.
FileIdentity OpenMapAndTell(const std::string& path, MapFileRecord& record);

// The option --overwrite of every command that writes: IfChangedOf tells what it means to
// the savers.
void AddOverwrite(Command& command, bool& overwrite);
inline IfChanged IfChangedOf(bool overwrite) {
    return overwrite ? IfChanged::Overwrite : IfChanged::Refuse;
}

} // namespace vardenix
