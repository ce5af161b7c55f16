// A level pair: the first two bytes say how long the O file is, the rest is O file, then
// L file.
#include "MemoryFile.h"
#include "Require.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vardenix;
    static const MemoryFile memoryL;
    static const MemoryFile memoryO;
    if (size < 2)
        return 0;
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(2);
    const size_t wanted = data[0] + data[1] * size_t{256};
    const auto fileO = bytes.first(std::min(wanted, bytes.size()));
    const auto fileL = bytes.subspan(fileO.size());
    Require(memoryO.Put(fileO) && memoryL.Put(fileL));
    try {
        const int32_t width = WidthFromOffsetFile(fileO.size(), "o");
        int32_t rowsSeen = 0;
        const PostArray posts =
            ReadPosts(LevelReader({memoryL.Path(), memoryO.Path()}, width / SegmentSide),
                      width, [&](int32_t, int32_t) { ++rowsSeen; });
        Require(posts.UpperBound() == width * width);
        Require(rowsSeen == width / SegmentSide);
        // Every post is zero or stands in the L file, at some byte.
        for (const TerrainPost& post : posts.Values())
            Require(post == TerrainPost{} || fileL.size() >= sizeof post);
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
