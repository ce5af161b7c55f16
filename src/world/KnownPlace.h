#pragma once

#include "world/TheaterPlace.h"

#include <optional>
#include <string>

namespace vardenix {

// Where the user has told that the theater of a L2 file lies. Nothing for one who has
// told none, and for one without a home; errors of ReadPlace.
std::optional<TheaterPlace> ToldPlace(const std::string& l2File);

// That, or else what theater.map lets guess. Errors of both.
TheaterPlace KnownPlace(const std::string& l2File, const MapFileRecord& map);

} // namespace vardenix
