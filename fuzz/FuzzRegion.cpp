// An .exp file of any bytes, stamped on a small terrain at a place that its last bytes
// say.
#include "Require.h"
#include "platform/Progress.h"
#include "texts/RuntimeError.h"
#include "workspace/RegionExchange.h"

#include <algorithm>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        const TileRegion region = ParseRegion(std::as_bytes(std::span(data, size)), "r");
        const auto entries = static_cast<size_t>(region.RegionWidth) *
                             static_cast<size_t>(region.RegionHeight);
        Require(region.TileNumbers.size() == entries && size == 8 + 4 * entries);
        Require(
            std::ranges::all_of(region.TileNumbers, [](int32_t n) { return n >= 0; }));
        Terrain terrain;
        terrain.MapWidth = 16;
        terrain.LxArr = PostArray(256);
        const int32_t x = data[size - 1] % 24 - 4;
        const int32_t y = data[size - 2] % 24 - 4;
        NoProgress progress;
        const int64_t count = StampRegion(terrain, region, x, y, progress);
        Require(count <= 256);
        Require(RegionFits(region, x, y, 16) == (static_cast<size_t>(count) == entries));
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
