#include "mapeditor/MapFile.h"

#include "platform/BinaryReader.h"
#include "platform/FileNames.h"
#include "platform/StagedFile.h"

#include <algorithm>
#include <cstddef>

namespace vardenix {

static_assert(offsetof(MapFileRecord, Palette) == 28);
static_assert(offsetof(MapFileRecord, Levels) == 1052);
static_assert(offsetof(MapFileRecord, Flags) == 1100);

void OpenMapFile(std::string_view path, MapFileRecord& record) {
    TakeMapFile(ReadWholeFile(path).Span(), record);
}

void TakeMapFile(std::span<const std::byte> bytes, MapFileRecord& record) {
    const auto target = std::as_writable_bytes(std::span(&record, 1));
    std::copy_n(bytes.begin(), std::min(bytes.size(), target.size()), target.begin());
}

void SaveMapFile(std::string_view path, const MapFileRecord& record) {
    const FileBytes old = FileExists(path) ? ReadWholeFile(path) : FileBytes();
    StagedFile file(path);
    file.Write(std::as_bytes(std::span(&record, 1)));
    if (old.size() > sizeof record)
        file.Write(old.Span().subspan(sizeof record));
    file.Commit();
}

} // namespace vardenix
