#include "world/TheaterPlace.h"

#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <cmath>

namespace vardenix {

namespace {

constexpr double MetresPerFoot = 0.3048;
constexpr int TilesPerPost = 4;
constexpr double LargestLongitude = 180;
constexpr double LargestLatitude =
    85;                               // no transverse Mercator is of use nearer to a pole
constexpr size_t LongestSystem = 700; // what its file holds in a line
constexpr int Decimals = 7;           // of a degree: a centimetre

bool IsPositive(double number) { return std::isfinite(number) && number > 0; }

} // namespace

TheaterPlace GuessedPlace(const MapFileRecord& map) {
    const double longitude = map.Longitude;
    const double latitude = map.Latitude;
    const double feet = map.FeetBetweenL0Tiles;
    if (!(std::abs(longitude) <= LargestLongitude) ||
        !(std::abs(latitude) <= LargestLatitude) || !IsPositive(feet))
        throw RuntimeError(
            ErrorNumber::InvalidCall,
            "theater.map does not tell where the theater lies (longitude " +
                FormatFixed(longitude, 2) + ", latitude " + FormatFixed(latitude, 2) +
                ", " + FormatFixed(feet, 2) +
                " feet between L0 tiles); tell it with \"place set\", or in the "
                "editor with File, Place of the theater");
    const double post = TilesPerPost * feet * MetresPerFoot;
    return {"+proj=tmerc +lat_0=" + FormatFixed(latitude, Decimals) +
                " +lon_0=" + FormatFixed(longitude, Decimals) +
                " +k=1 +x_0=0 +y_0=0 +datum=WGS84 +units=m +no_defs",
            0,
            0,
            post,
            post,
            true};
}

void RequirePlace(const TheaterPlace& place) {
    const auto refuse = [](const char* why) {
        throw RuntimeError(ErrorNumber::InvalidCall,
                           std::string("this is no place of a theater: ") + why);
    };
    if (place.System.empty())
        refuse("it has no reference system");
    if (place.System.size() > LongestSystem)
        refuse(
            "its reference system is longer than 700 bytes; an EPSG number says as much");
    if (!std::isfinite(place.Left) || !std::isfinite(place.Bottom))
        refuse("its lower left corner is no number");
    if (!IsPositive(place.PostWidth) || !IsPositive(place.PostHeight))
        refuse("the width and height of a post must be more than 0");
}

PlacedBox EdgesOf(const TheaterPlace& place, const PostBox& box, int32_t finer) {
    const PostBox ordered = Ordered(box);
    const double width = place.PostWidth / finer;
    const double height = place.PostHeight / finer;
    return {place.Left + ordered.X1 * width, place.Bottom + ordered.Y1 * height,
            place.Left + (int64_t{ordered.X2} + 1) * width,
            place.Bottom + (int64_t{ordered.Y2} + 1) * height};
}

} // namespace vardenix
