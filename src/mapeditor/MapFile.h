#pragma once

#include "theater/MapFileRecord.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace vardenix {

// Reads theater.map into the record. A shorter file leaves the rest of the record as it
// was, a longer one has its rest ignored; neither is an error. Throws what stopped the
// opening (53, 70, 75), and then the record is untouched.
void OpenMapFile(std::string_view path, MapFileRecord& record);
void TakeMapFile(std::span<const std::byte> bytes, MapFileRecord& record);

// Puts the record in place of the file's first 1112 bytes; a longer file keeps its tail,
// a missing one is made. Throws what stopped it (70, 75, 61), and then the old file
// stands as it was.
void SaveMapFile(std::string_view path, const MapFileRecord& record);

} // namespace vardenix
