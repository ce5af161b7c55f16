// The index beside the containers of far tiles, of any bytes: what is read as one makes
// the same bytes again.
#include "Require.h"
#include "builder/FartileIndex.h"

#include <algorithm>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto index = ParseFartileIndex(bytes);
    if (!index)
        return 0;
    Require(BytesOfIndex(index->Keys.size(), index->Pictures.size()) == size);
    Require(std::ranges::equal(FartileIndexBytes(*index), bytes));
    return 0;
}
