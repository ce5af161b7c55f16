#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace vardenix {

// The bytes of one file, owned.
class FileBytes {
public:
    FileBytes() = default;
    // Room for `size` bytes whose values are not set yet; error 7 when there is no
    // memory.
    explicit FileBytes(size_t size);

    std::byte* data() { return bytes_.get(); }
    const std::byte* data() const { return bytes_.get(); }
    size_t size() const { return size_; }
    std::span<const std::byte> Span() const { return {bytes_.get(), size_}; }

private:
    std::unique_ptr<std::byte[]> bytes_;
    size_t size_ = 0;
};

// Reads a file whole, measured before anything of it is read: whoever calls knows how
// long such a file can be. Errors 53, 70, 75 and so on as the system refuses; 75 for what
// is no regular file, 7 for one of more than `most` bytes or that memory cannot hold.
FileBytes ReadWholeFile(std::string_view path, uint64_t most);

// Takes little-endian bytes apart. Everything asked for is checked against what is left,
// and a lack ends in error 62 that names the path, the offset, what was expected and what
// was found. The reader borrows the bytes.
class BinaryReader {
public:
    BinaryReader(std::span<const std::byte> bytes, std::string path);

    size_t Position() const { return position_; }
    size_t Remaining() const { return bytes_.size() - position_; }

    uint8_t Byte();
    int32_t Int32();
    float Float();
    std::span<const std::byte> Bytes(size_t count);

    // Error 62 unless `count` records of at least `recordSize` bytes can still follow;
    // called before anything is allocated for them. `what` names them ("tiles"). A
    // negative count can never follow.
    void RequireRecords(int64_t count, size_t recordSize, const std::string& what) const;

private:
    [[noreturn]] void Lack(const std::string& expected) const;

    std::span<const std::byte> bytes_;
    std::string path_;
    size_t position_ = 0;
};

} // namespace vardenix
