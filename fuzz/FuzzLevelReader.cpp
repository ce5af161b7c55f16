// The files of a level that is rebuilt: the first byte says how many blocks a side it
// has, the next two how long the O file is, the rest is O file, then L file.
#include "MemoryFile.h"
#include "Require.h"
#include "levels/LevelReader.h"
#include "texts/RuntimeError.h"

#include <algorithm>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const MemoryFile fileL;
    static const MemoryFile fileO;
    if (size < 3)
        return 0;
    const int32_t blocks = data[0] % 6;
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(3);
    const size_t wanted = data[1] + data[2] * size_t{256};
    const auto bytesO = bytes.first(std::min(wanted, bytes.size()));
    const auto bytesL = bytes.subspan(bytesO.size());
    Require(fileO.Put(bytesO) && fileL.Put(bytesL));
    try {
        const LevelReader reader({fileL.Path(), fileO.Path()}, blocks);
        const auto all = static_cast<size_t>(blocks) * static_cast<size_t>(blocks);
        Require(reader.Offsets().size() == all);
        Require(reader.BehindEntries().size() == bytesO.size() - 4 * all);
        std::vector<TerrainPost> row(static_cast<size_t>(blocks) * PostsPerSegment);
        std::vector<TerrainPost> block(PostsPerSegment);
        for (int32_t y = 0; y < blocks; ++y) {
            reader.ReadRow(y, row);
            // A row is what its blocks are, each read alone.
            for (int32_t x = 0; x < blocks; ++x) {
                reader.ReadBlock(reader.Offsets()[static_cast<size_t>(y) *
                                                      static_cast<size_t>(blocks) +
                                                  static_cast<size_t>(x)],
                                 block);
                Require(std::equal(block.begin(), block.end(),
                                   row.begin() + x * PostsPerSegment));
            }
        }
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
