#pragma once

#include "world/TheaterPlace.h"

#include <optional>
#include <string>

namespace vardenix {

// The places that users have told, one small file for each theater in the user's own
// data: nothing is added to the game's folders. The file may be carried to another
// machine.

// The name of the file for the theater of a L2 file, by the file's path from the root;
// the folder need not be there. Error 76 for a user without a home.
std::string PlaceFileOf(const std::string& l2File);

// Nothing when there is no such file. Error 5 for one that holds no place, naming the
// file, else as of ReadWholeFile.
std::optional<TheaterPlace> ReadPlace(const std::string& path);

// Whole or not at all, in a folder made for the user alone. Errors of RequirePlace and of
// StagedFile.
void WritePlace(const TheaterPlace& place, const std::string& path);

} // namespace vardenix
