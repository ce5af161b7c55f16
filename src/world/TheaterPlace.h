#pragma once

#include "levels/Posts.h"
#include "program/MapFileRecord.h"

#include <array>
#include <string>

namespace vardenix {

// Where a theater lies on the earth: a reference system, and the squares of its posts in
// it. Post (x, y) covers what lies between Left + x * PostWidth and one width further,
// and so upwards from Bottom.
struct TheaterPlace {
    std::string System; // "EPSG:32632", WKT or PROJ text
    double Left = 0;    // of the terrain's lower left corner, in units of the system
    double Bottom = 0;
    double PostWidth = 0; // in the same units
    double PostHeight = 0;
    bool IsGuess = false; // from theater.map, until the user tells it better

    bool operator==(const TheaterPlace&) const = default;
};

// The first guess: the longitude and latitude of theater.map are the lower left corner, a
// transverse Mercator of its own has its origin there, and a post is as wide as four
// L0 tiles. Error 5 where theater.map cannot be meant: a longitude beyond 180 or a
// latitude beyond 85 degrees, or a width that is no positive number.
TheaterPlace GuessedPlace(const MapFileRecord& map);

// Error 5 with what is wrong: an empty system, a width or height of a post that is no
// positive number, a corner that is none.
void RequirePlace(const TheaterPlace& place);

// The edges of a box of posts, or of the finest elevations when `finer` is 4, in units of
// the system.
struct PlacedBox {
    double Left = 0;
    double Bottom = 0;
    double Right = 0;
    double Top = 0;
};
PlacedBox EdgesOf(const TheaterPlace& place, const PostBox& box, int32_t finer = 1);

} // namespace vardenix
