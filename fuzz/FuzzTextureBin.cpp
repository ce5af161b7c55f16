#include "Require.h"
#include "catalogue/TextureBinFile.h"
#include "texts/RuntimeError.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vardenix;
    try {
        const TextureBin bin = ParseBinFile(std::as_bytes(std::span(data, size)), "bin");
        Require(bin.Sets.size() == static_cast<size_t>(bin.NumSets) + 1);
        size_t least = 8;
        for (const TileSet& set : bin.Sets) {
            Require(set.Tiles.size() == static_cast<size_t>(set.TileCount) + 1);
            for (const TileRecord& tile : set.Tiles) {
                Require(tile.TileName.size() == TileNameLength);
                Require(tile.TileName.find('\0') == std::string::npos);
                least += (tile.Areas.size() - 1) * 16 + (tile.Paths.size() - 1) * 24;
            }
        }
        Require(least <= size);
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
