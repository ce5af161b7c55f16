#include "mapeditor/InPlace.h"

#include "platform/FileNames.h"
#include "platform/StagedFile.h"

#include <algorithm>

namespace vardenix {

FileBytes ReadBeginning(std::string_view path, size_t length) {
    const FileBytes all = ReadWholeFile(path);
    FileBytes bytes(std::min(all.size(), length));
    std::copy_n(all.data(), bytes.size(), bytes.data());
    return bytes;
}

void WriteInPlace(std::string_view path, std::span<const std::byte> bytes) {
    const FileBytes old = FileExists(path) ? ReadWholeFile(path) : FileBytes();
    StagedFile file(path);
    file.Write(bytes);
    if (old.size() > bytes.size())
        file.Write(old.Span().subspan(bytes.size()));
    file.Commit();
}

} // namespace vardenix
