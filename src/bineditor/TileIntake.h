#pragma once

#include "bineditor/TileNames.h"
#include "files/Transaction.h"
#include "pictures/ConversionQueue.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vardenix {

// Where pictures come in, and the sides of the smaller sizes.
struct IntakePlace {
    std::string DDSFolder;  // all folders with a slash at their end
    std::string TempFolder; // the Targa files between; there are none left afterwards
    std::string AppPath;
    int32_t MTile = 64; // pixels, 1 to PictureLargestSide
    int32_t LTile = 32;
};

// The place by the settings, whose sizes are brought into their range.
IntakePlace IntakePlaceOf(const std::string& ddsFolder, const ProgramFolders& folders,
                          const Configuration& settings);

// Whether the image library takes the name for that of a DDS file.
bool NameOfDds(const std::string& name);

// The text for a name that is not: "The image ... doesn't seem to be a valid image".
std::string NotAnImage(const std::string& name);

// A file that comes into the picture folder as it is.
struct PictureCopy {
    std::string SourceFile;
    std::string TargetFile;
};

// What one chosen picture becomes: the files to copy, and the compressions of the sizes
// that were left as Targa files in TempFolder.
struct TileFamily {
    std::vector<PictureCopy> Copies;
    ConversionQueue Jobs;
};

// Reads the chosen picture and its night picture, if one lies beside it, and leaves the
// smaller sizes in TempFolder; without one the night is black and as wide as the day. No
// file of the picture folder is touched. A pure routine for each picture: several may run
// at once. After an error `family` still names what was left. Error 481 with the file for
// what is no DDS picture, the system's refusals.
void MakeTileFamily(const std::string& sourceFolder, const std::string& chosenName,
                    const IntakePlace& place, TileFamily& family);

// The files of the picture folder that the chosen files become, six each.
std::vector<std::string> TargetsOf(const std::vector<std::string>& chosen,
                                   const std::string& ddsFolder);

// Takes in the chosen files as one transaction: either every family
// is whole in the picture folder afterwards, or the folder is what it was. `chosen` are
// full paths. The bar goes from 0 to 25 and its text names the picture in work; `stop`,
// asked between two pictures, ends it early (false). Error 52, before anything is
// written, for a name that no tile can have and for two files that would become the same
// picture; errors of MakeTileFamily and of writing.
bool TakeInPictures(const std::vector<std::string>& chosen, const IntakePlace& place,
                    Progress& progress, const std::function<bool()>& stop = {});

// The same, staged whole in `files`, whose owner commits them together with what else
// belongs to them. After false or an error `files` are not to be committed.
bool StagePictures(const std::vector<std::string>& chosen, const IntakePlace& place,
                   Transaction& files, Progress& progress,
                   const std::function<bool()>& stop = {});

} // namespace vardenix
