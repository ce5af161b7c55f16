#include "builder/FartileShape.h"

#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <string>

namespace vardenix {

FartileShape::FartileShape(int32_t farSize) : farSize_(farSize) {
    if (farSize > LargestFarSize)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a far tile of " + std::to_string(farSize) +
                               " pixels is too large; the largest has " +
                               std::to_string(LargestFarSize));
    for (size_t i = 0; i < FarLevels; ++i) {
        const int32_t level = FirstFarLevel + static_cast<int32_t>(i);
        pixels_[i] =
            ToInt32(static_cast<double>(farSize) / FartileShape::TilesAlong(level));
        if (pixels_[i] < 1)
            throw RuntimeError(ErrorNumber::InvalidCall,
                               "in a far tile of " + std::to_string(farSize) +
                                   " pixels a tile of level " + std::to_string(level) +
                                   " would have none; the smallest has 5");
    }
}

bool FartileShape::InWholeBlocks(int32_t level) const {
    return farSize_ % 4 == 0 && PixelsOfTile(level) % 4 == 0;
}

size_t FartileShape::LinearSize() const {
    return static_cast<size_t>(farSize_) * static_cast<size_t>(farSize_) / 2;
}

std::array<uint8_t, FartileShape::HeaderBytes> FartileShape::Header() const {
    const auto file = Dxt1FileHeader(farSize_, farSize_);
    std::array<uint8_t, HeaderBytes> header{};
    std::copy(file.end() - HeaderBytes, file.end(), header.begin());
    return header;
}

} // namespace vardenix
