// A container of far tiles: the first byte is the index of the far tile that is read.
#include "MemoryFile.h"
#include "Require.h"
#include "builder/FartilePicture.h"
#include "builder/FartileShape.h"
#include "texts/RuntimeError.h"

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const MemoryFile container;
    if (size < 1)
        return 0;
    Require(container.Put(std::as_bytes(std::span(data, size)).subspan(1)));
    try {
        const Raster picture = ReadFartile(container.Path(), data[0]);
        const auto side = static_cast<size_t>(picture.Width());
        Require(picture.Width() == picture.Height());
        Require(size >
                FartileShape::HeaderBytes + (data[0] + size_t{1}) * side * side / 2);
    } catch (const RuntimeError& error) {
        Require(!error.Detail().empty());
    }
    return 0;
}
