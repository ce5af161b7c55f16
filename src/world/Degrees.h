#pragma once

#include "world/WorldHelper.h"

#include <optional>
#include <string>
#include <string_view>

namespace vardenix {

// "59.3102 N, 18.0203 E": ten metres.
std::string DegreesWords(const GeographicPoint& point);

// Of a latitude and a longitude, parted by a comma or by blanks, each with a sign or with
// its letter behind it: "59.31, 18.02", "33.9 S 151.2 E". Nothing for any other text, and
// for what lies beyond 90 or 180 degrees.
std::optional<GeographicPoint> DegreesOf(std::string_view text);

} // namespace vardenix
