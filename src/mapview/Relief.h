#pragma once

#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "mapview/DrawingSurface.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vardenix {

// Finest heights along a side of a post.
inline constexpr int32_t FinestPerPost = 4;

// A square grid of heights, of posts or the finest ones; places are counted from 0, and
// those beyond the edge have the height at the edge. The terrain is borrowed.
class HeightField {
public:
    HeightField(const Terrain& terrain, Layer layer);

    int32_t Width() const { return width_; }
    // Feet.
    int32_t At(int32_t x, int32_t y) const;
    // Between two neighbours.
    double Spacing() const { return spacing_; }

private:
    const Terrain& terrain_;
    bool finest_;
    int32_t width_;
    double spacing_;
};

// How much lighter or darker than flat ground a place is, in the light of the north west
// at half height: -1 to 1, 0 for flat ground. Slopes are taken four times as steep as
// they are, since a kilometer from post to post hides them.
double ShadeAt(const HeightField& heights, int32_t x, int32_t y);
// By how many feet the neighbour in the east is higher than that in the west, and the
// northern one than the southern one.
double ShadeOf(int32_t eastward, int32_t northward, double spacing);

// What is laid over a pixel for a shade: white for light, black for dark, by alpha.
// `strength` is percent, 0 to 100.
struct ReliefTint {
    uint32_t Color = 0; // 0x00BBGGRR
    uint8_t Alpha = 0;
};
ReliefTint TintOf(double shade, int32_t strength);

// Between which contour lines a height lies: how many steps of `step` feet (at least 1)
// it is high, rounded down. A line lies where the number changes.
int32_t ContourLevel(int32_t feet, int32_t step);

constexpr uint32_t ContourColor = 0x1E4678; // brown, 0x00BBGGRR

// A piece of a contour line; X to the right and Y up, of a square from 0 to 1.
struct ContourPiece {
    PicturePoint From;
    PicturePoint To;
    int32_t Feet = 0;
};

// The contour lines, at multiples of `step` feet (at least 1), of a square around a place
// of the grid that reaches half way to its neighbours. Its corners have the mean height
// of the four places round them, so that lines go on from square to square; in between
// four triangles meet in the middle.
std::vector<ContourPiece> ContoursAt(const HeightField& heights, int32_t x, int32_t y,
                                     int32_t step);

} // namespace vardenix
