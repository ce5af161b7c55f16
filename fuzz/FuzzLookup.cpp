// Single posts of a level, against the level read whole: the first two bytes say how long
// the O file is, the rest is O file, then L file.
#include "MemoryFile.h"
#include "Require.h"
#include "files/ReadableFile.h"
#include "levels/LevelReader.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <optional>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const MemoryFile memoryL;
    static const MemoryFile memoryO;
    if (size < 2)
        return 0;
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(2);
    const size_t wanted = data[0] + data[1] * size_t{256};
    const auto bytesO = bytes.first(std::min(wanted, bytes.size()));
    const auto bytesL = bytes.subspan(bytesO.size());
    Require(memoryO.Put(bytesO) && memoryL.Put(bytesL));
    std::optional<PostArray> posts;
    int32_t width = 0;
    try {
        width = WidthFromOffsetFile(bytesO.size(), "o");
        posts =
            ReadPosts(LevelReader({memoryL.Path(), memoryO.Path()}, width / SegmentSide),
                      width, [](int32_t, int32_t) {});
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    const ReadableFile fileL(memoryL.Path());
    const ReadableFile fileO(memoryO.Path());
    const int32_t segments = width / SegmentSide;
    bool enough = true;
    try {
        RequireOffsets(fileO, segments);
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
        enough = false;
    }
    Require(!posts || enough);
    for (int32_t y = 1; posts && y <= segments * SegmentSide; ++y)
        for (int32_t x = 1; x <= segments * SegmentSide; ++x)
            Require(
                LookUpPost(fileL, fileO, segments, x, y) ==
                posts->Values()[static_cast<size_t>(y - 1) * static_cast<size_t>(width) +
                                static_cast<size_t>(x - 1)]);
    return 0;
}
