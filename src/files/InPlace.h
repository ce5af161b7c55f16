#pragma once

#include "files/BinaryReader.h"
#include "files/FileIdentity.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace vardenix {

// Files of a fixed length that others may have made longer: of one that is there only the
// beginning is read, and only the beginning is replaced.

// The first `length` bytes, or all of a file that is shorter. Errors 53, 70, 75 and so on
// as the system refuses; 75 for what is no regular file.
FileBytes ReadBeginning(std::string_view path, size_t length);

// Puts `bytes` in the place of the file's first ones; a longer file keeps its tail, a
// missing one is made. The new content is staged with the old tail, so that the file is
// whole or the old one stands. Returns the identity of what is there then. Throws the
// system's refusals (70, 75, 61), and ChangedFileError where something was read and
// another file is there now.
FileIdentity WriteInPlace(std::string_view path, std::span<const std::byte> bytes,
                          const FileIdentity& read = {},
                          IfChanged ifChanged = IfChanged::Refuse);

} // namespace vardenix
