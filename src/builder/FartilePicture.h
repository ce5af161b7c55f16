#pragma once

#include "pictures/Raster.h"

#include <cstdint>
#include <span>
#include <string>

namespace vardenix {

// The pixels of one far tile, from its bytes in a container; blocks that the container
// cuts off are black. Error 5 for a size that FartileShape does not take.
Raster FartilePicture(std::span<const uint8_t> bytes, int32_t farSize);

// One far tile of a container file, by its index from 0. Error 53 or the system's refusal
// for the file, 481 for one that is no container, 9 for an index that it does not have.
Raster ReadFartile(const std::string& container, int64_t index);

} // namespace vardenix
