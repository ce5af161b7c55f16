#pragma once

#include "levels/TerrainPost.h"

#include <cstdint>
#include <optional>

namespace vardenix {

// New values for some fields of a post; a field without one keeps what it has.
struct PostChange {
    std::optional<int32_t> TileOffset{};
    std::optional<int16_t> Elevation{}; // feet
    std::optional<uint8_t> Palette{};
    std::optional<uint8_t> X1{};
    std::optional<uint8_t> X2{};

    bool Empty() const;
};

void ApplyChange(TerrainPost& post, const PostChange& change);

} // namespace vardenix
