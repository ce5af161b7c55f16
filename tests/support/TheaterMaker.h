#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix::tests {

// Fields of one post, apart from the program's own record.
struct MadePost {
    int32_t Tile = 0;
    int16_t Elevation = 0;
    uint8_t Palette = 0;
    uint8_t X1 = 0;
    uint8_t X2 = 0;
};

bool operator==(const MadePost& a, const MadePost& b);

// A level as a test wants it, made and read back by code of the tests' own.
struct MadeLevel {
    int Width = 0;               // posts per side, a multiple of 16
    std::vector<MadePost> Posts; // by serial, element 0 is serial 1

    MadePost& At(int x, int y) {
        return Posts.at(static_cast<size_t>((y - 1) * Width + x - 1));
    }

    static MadeLevel Empty(int width);
    // Land everywhere but in the first and last segment, values from the seed.
    static MadeLevel Random(int width, unsigned seed);
};

// The nine bytes of a post.
std::string PostBytes(const MadePost& post);

// The bytes of an L file and its O file: blocks in reverse order of segments, with a gap
// of odd length before each, so that nothing can be read by luck.
struct PairBytes {
    std::string L;
    std::string O;
};
PairBytes ScatteredPair(const MadeLevel& level);

// The posts that a pair spells, read with plain arithmetic.
MadeLevel ReadPair(const std::string& pathL, const std::string& pathO);

// One tile of a made catalogue: its name (up to 20 bytes) and how many areas and paths it
// has, whose fields are running numbers.
struct MadeTile {
    std::string Name;
    int Areas = 0;
    int Paths = 0;
};
struct MadeSet {
    int Terrain = 4;
    std::vector<MadeTile> Tiles;
};
std::string CatalogueBytes(const std::vector<MadeSet>& sets);

} // namespace vardenix::tests
