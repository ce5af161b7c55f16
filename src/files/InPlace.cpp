#include "files/InPlace.h"

#include "files/FileNames.h"
#include "files/FolderLock.h"
#include "files/ReadableFile.h"
#include "files/Transaction.h"

#include <algorithm>

namespace vardenix {

FileBytes ReadBeginning(std::string_view path, size_t length) {
    const ReadableFile file(path);
    FileBytes bytes(static_cast<size_t>(std::min<uint64_t>(file.Size(), length)));
    if (file.ReadAt(0, {bytes.data(), bytes.size()}) != bytes.size())
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           std::string(path) + " became shorter while it was read");
    return bytes;
}

FileIdentity WriteInPlace(std::string_view path, std::span<const std::byte> bytes,
                          const FileIdentity& read, IfChanged ifChanged) {
    const auto locks = LockFoldersOf({TargetOf(path)}, FolderLock::Exclusive);
    Transaction files;
    StagedFile& file = files.Stage(path, read, ifChanged);
    file.Write(bytes);
    if (FileExists(path))
        file.WriteRestOf(ReadableFile(path), bytes.size());
    files.Commit();
    return file.Identity();
}

} // namespace vardenix
