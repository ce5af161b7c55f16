#pragma once

#include "levels/LevelPairs.h"
#include "levels/LevelReader.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace vardenix {

// The kind that a file's extension stands for, ".l0" or ".elv" in any case.
ElevationKind KindOfElevationFile(const std::string& path);

// Heights a side that an .elv file of `length` bytes stands for, rounded half to even.
double WidthFromElvFile(uint64_t length);

// The heights of a grid `width` posts a side, from the bytes of an .elv file or from a L0
// file and its O0 file. What the .elv or L0 file does not hold is 0. `afterRow(row,
// rows)` is called once per row of heights, or of segments.
HeightArray ReadElvHeights(std::span<const std::byte> file, int32_t width,
                           const std::function<void(int32_t, int32_t)>& afterRow);
HeightArray ReadL0Heights(const LevelReader& reader, int32_t width,
                          const std::function<void(int32_t, int32_t)>& afterRow);

// Reads the finest elevations from a L0 file with its O0 file, or from an .elv file.
// False, with the layer as it was, when the user was told that the O0 file is missing or
// that the width is not four times MapWidth; a file of the wrong width is not read.
// Errors of reading (53, 62, 70, 75) also leave the layer as it was.
bool LoadElevationData(Terrain& terrain, ElevationKind kind, const std::string& path,
                       Progress& progress, Dialogs& dialogs, DebugLog& log);

// One of the finest elevations, at (x, y) from 1 inside the whole segments of the file; 0
// where the file does not hold it. Nothing, as LoadElevationData answers false, and
// errors as there; but only the bytes of that elevation are read.
std::optional<int16_t> LookUpElevation(const Terrain& terrain, ElevationKind kind,
                                       const std::string& path, int32_t x, int32_t y,
                                       Dialogs& dialogs, DebugLog& log);

enum class ElevationSave {
    Done,      // a file holds the elevations
    Refused,   // nothing was changed
    EmptyPair, // a new L0 pair was made, which holds nothing
};

// Writes the finest elevations; an empty path means the file and the kind that were
// loaded.
// - .elv: the raw values.
// - L0 with both its files there: every post keeps what it has but its elevation; sea
//   segments (tile 8192, elevation 0) share one block. A pair of the wrong width is asked
//   about, but the answer is not looked at: the pair stays untouched, the "x" file stays
//   behind, empty and open.
// - L0 with either file missing: both are made anew, and are empty, if the user wants
//   that.
// ChangedFileError when the file that was loaded is another one by now.
ElevationSave SaveElevationData(Terrain& terrain, ElevationKind kind,
                                const std::string& path, Progress& progress,
                                Dialogs& dialogs,
                                IfChanged ifChanged = IfChanged::Refuse);

// What LoadElevationData, one change at (x, y) from 1, and SaveElevationData would leave
// on the disk, with a L0 file read once; the terrain's own layer is not touched. Nothing
// where LoadElevationData would answer false.
std::optional<ElevationSave> SetElevation(const Terrain& terrain, ElevationKind kind,
                                          const std::string& path, int32_t x, int32_t y,
                                          int16_t feet, Progress& progress,
                                          Dialogs& dialogs, DebugLog& log,
                                          IfChanged ifChanged = IfChanged::Refuse);

} // namespace vardenix
