#pragma once

#include "files/FileIdentity.h"
#include "program/MapFileRecord.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace vardenix {

// Reads theater.map into the record and tells which file it was. A shorter file leaves
// the rest of the record as it was, a longer one has its rest ignored; neither is an
// error. Throws what stopped the opening (53, 70, 75), and then the record is untouched.
FileIdentity OpenMapFile(std::string_view path, MapFileRecord& record);
void TakeMapFile(std::span<const std::byte> bytes, MapFileRecord& record);

// Puts the record in place of the file's first 1112 bytes; a longer file keeps its tail,
// a missing one is made. Returns the identity of what is there then. Throws what stopped
// it (70, 75, 61), ChangedFileError where another file is there than `read`, and then the
// old file stands as it was.
FileIdentity SaveMapFile(std::string_view path, const MapFileRecord& record,
                         const FileIdentity& read = {},
                         IfChanged ifChanged = IfChanged::Refuse);

} // namespace vardenix
