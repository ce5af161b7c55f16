// The finest elevations: the first byte says which kind of file follows and the second
// how many segments a side the theater's heights have. Of a L0 file the next two bytes
// say how long its O0 file is; that comes first.
#include "MemoryFile.h"
#include "Require.h"
#include "levels/ElevationFiles.h"
#include "texts/RuntimeError.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vardenix;
    static const MemoryFile fileL;
    static const MemoryFile fileO;
    if (size < 4)
        return 0;
    const bool elv = data[0] % 2 == 0;
    const int32_t width = data[1] % 16 * SegmentSide;
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(4);
    const size_t lengthO = std::min(data[2] + data[3] * size_t{256}, bytes.size());
    Require(fileO.Put(bytes.first(lengthO)) && fileL.Put(bytes.subspan(lengthO)));
    int32_t rowsSeen = 0;
    const auto afterRow = [&](int32_t, int32_t) { ++rowsSeen; };
    try {
        const HeightArray heights =
            elv ? ReadElvHeights(bytes, width, afterRow)
                : ReadL0Heights(
                      LevelReader({fileL.Path(), fileO.Path()}, width / SegmentSide),
                      width, afterRow);
        Require(heights.UpperBound() == width * width);
        Require(rowsSeen == (elv ? width : width / SegmentSide));
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
