#include "mapeditor/MapFile.h"

#include "files/InPlace.h"
#include "files/Mending.h"
#include "files/ReadableFile.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vardenix {

static_assert(offsetof(MapFileRecord, Palette) == 28);
static_assert(offsetof(MapFileRecord, Levels) == 1052);
static_assert(offsetof(MapFileRecord, Flags) == 1100);

FileIdentity OpenMapFile(std::string_view path, MapFileRecord& record) {
    const ReadingLock reading({std::string(path)});
    const ReadableFile file(path);
    std::array<std::byte, sizeof record> bytes{};
    TakeMapFile(std::span(bytes).first(file.ReadAt(0, bytes)), record);
    return file.Identity();
}

void TakeMapFile(std::span<const std::byte> bytes, MapFileRecord& record) {
    const auto target = std::as_writable_bytes(std::span(&record, 1));
    std::copy_n(bytes.begin(), std::min(bytes.size(), target.size()), target.begin());
}

FileIdentity SaveMapFile(std::string_view path, const MapFileRecord& record,
                         const FileIdentity& read, IfChanged ifChanged) {
    return WriteInPlace(path, std::as_bytes(std::span(&record, 1)), read, ifChanged);
}

} // namespace vardenix
