#pragma once

#include <string>
#include <vector>

namespace vardenix::tests {

// A Texture.bin taken apart by plain arithmetic, apart from the program's own reader.
struct FoundTile {
    std::string Name; // zero bytes as blanks, none at the end
    // Type and fields of each, as told: "7:1.5,2,3".
    std::vector<std::string> Areas;
    std::vector<std::string> Paths;
};
struct FoundSet {
    int Terrain = 0;
    std::vector<FoundTile> Tiles;
};
struct FoundCatalogue {
    int NumTiles = 0;
    std::vector<FoundSet> Sets;

    // The name of the tile with that number; "-" where there is none.
    std::string NameOf(int number) const;
    // "4:LAND.PCX,SEA.PCX 9:TOWN.PCX".
    std::string Story() const;
};

// The test fails (an exception) where the bytes end too early or go on behind.
FoundCatalogue ReadCatalogue(const std::string& path);

} // namespace vardenix::tests
