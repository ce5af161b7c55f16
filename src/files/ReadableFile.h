#pragma once

#include "files/BinaryReader.h"
#include "files/FileMark.h"
#include "files/SystemFile.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vardenix {

// A file that is open to be read, measured before anything of it is. Errors 53, 70, 75
// and so on as the system refuses; 75 for what is no regular file.
class ReadableFile {
public:
    explicit ReadableFile(std::string_view path);

    const std::string& Path() const { return path_; }
    // As it was when it was opened.
    uint64_t Size() const { return mark_.Identity.Size; }
    const FileIdentity& Identity() const { return mark_.Identity; }
    const FileMark& Mark() const { return mark_; }

    // As many bytes from `offset` on as `into` takes and the file has.
    size_t ReadAt(uint64_t offset, std::span<std::byte> into) const;
    // All of `into`, which lies inside Size; error 62 when the file has become shorter.
    void ReadMeasured(uint64_t offset, std::span<std::byte> into) const;
    // Error 62 when it has become shorter, 7 when memory lacks.
    FileBytes ReadAll() const;
    // For calls of the system that read from an open file.
    int Handle() const { return file_.Handle(); }

private:
    std::string path_;
    SystemFile file_;
    FileMark mark_;
};

// A value at an offset of a file; zero where the file does not hold all of it.
template <typename Value>
Value ValueAt(const ReadableFile& file, uint64_t offset) {
    Value value{};
    const auto bytes = std::as_writable_bytes(std::span(&value, 1));
    return file.ReadAt(offset, bytes) == bytes.size() ? value : Value{};
}

// Error 7 for a file of more bytes.
void RequireAtMost(const ReadableFile& file, uint64_t most);

} // namespace vardenix
