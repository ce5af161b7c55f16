// Posts of any bytes from the clipboard, turned, mirrored and stamped on a small terrain.
#include "Require.h"
#include "texts/RuntimeError.h"
#include "workspace/PostClip.h"

#include <algorithm>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        const auto bytes = std::as_bytes(std::span(data, size));
        const PostClip clip = ParseClip(bytes);
        Require(std::ranges::equal(BytesOf(clip), bytes));
        Require(Mirrored(Mirrored(clip)) == clip);
        Require(Turned(Turned(Turned(Turned(clip)))) == clip);
        Terrain terrain;
        terrain.MapWidth = 16;
        terrain.LxArr = PostArray(256);
        const PostPlace place{data[size - 1] % 24 - 4, data[size - 2] % 24 - 4};
        const PostDelta delta = StampedPosts(terrain, clip, place, {});
        WriteNew(terrain.LxArr, delta);
        Require(StampedPosts(terrain, clip, place, {}).Empty());
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
