#pragma once

#include "platform/BinaryReader.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace vardenix {

// Files of a fixed length that others may have made longer: of one that is there only the
// beginning is read, and only the beginning is replaced.

// The first `length` bytes, or all of a file that is shorter. Errors as ReadWholeFile.
FileBytes ReadBeginning(std::string_view path, size_t length);

// Puts `bytes` in the place of the file's first ones; a longer file keeps its tail, a
// missing one is made. The new content is staged with the old tail, so that the file is
// whole or the old one stands. The system's refusals (70, 75, 61).
void WriteInPlace(std::string_view path, std::span<const std::byte> bytes);

} // namespace vardenix
