#include "mapeditor/InPlace.h"

#include "platform/FileNames.h"
#include "platform/ReadableFile.h"
#include "platform/RuntimeError.h"
#include "platform/StagedFile.h"

#include <algorithm>

namespace vardenix {

FileBytes ReadBeginning(std::string_view path, size_t length) {
    const ReadableFile file(path);
    FileBytes bytes(static_cast<size_t>(std::min<uint64_t>(file.Size(), length)));
    if (file.ReadAt(0, {bytes.data(), bytes.size()}) < bytes.size())
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           file.Path() + " became shorter while it was read");
    return bytes;
}

void WriteInPlace(std::string_view path, std::span<const std::byte> bytes) {
    StagedFile file(path);
    file.Write(bytes);
    if (FileExists(path))
        file.WriteRestOf(ReadableFile(path), bytes.size());
    file.Commit();
}

} // namespace vardenix
