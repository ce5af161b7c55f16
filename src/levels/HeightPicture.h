#pragma once

#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "platform/Progress.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vardenix {

// The colours of the height picture, 0x00BBGGRR.
struct PreviewColors {
    uint32_t Sea = 0;
    std::array<uint32_t, 8> Level{}; // class 1 at index 0
};

// A square picture, rows from the top, pixels 0x00BBGGRR.
struct HeightPicture {
    // What the toolkit leaves where nothing is painted.
    static constexpr uint32_t Unpainted = 0xF0F0F0;

    int32_t Side = 0; // pixels, one for each post
    std::vector<uint32_t> Pixels;
};

// The colour of an elevation's class, whose upper bounds are 49, 100, 500, 1000, 1500,
// 3000 and 5000 feet. Sea is not told apart here.
uint32_t ElevationClassColor(int16_t elevation, const PreviewColors& colors);

// Paints the whole terrain, one pixel a post. Post (X, Y) goes to column X - 1, row
// MapWidth - Y + 1: the picture sits one row low, its first row stays unpainted and the
// bottom row of posts falls off. Theater makers line other pictures up with it, so it is
// kept. The bar moves and events pass once per row of posts.
HeightPicture ShowLFile(const Terrain& terrain, const PreviewColors& colors,
                        Progress& progress, DebugLog& log);

} // namespace vardenix
