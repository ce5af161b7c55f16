#pragma once

#include "pictures/GuardedPicture.h"
#include "pictures/PictureFormat.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Each kind of picture has a file of its own; what they have in common is here.
namespace vardenix::guard {

// Numbers of a header; the caller has seen to it that they lie inside.
inline uint32_t ByteAt(const FileBytes& bytes, size_t offset) {
    return std::to_integer<uint32_t>(bytes.data()[offset]);
}
inline uint32_t Little16(const FileBytes& bytes, size_t offset) {
    return ByteAt(bytes, offset) | ByteAt(bytes, offset + 1) << 8;
}
inline uint32_t Little32(const FileBytes& bytes, size_t offset) {
    return Little16(bytes, offset) | Little16(bytes, offset + 2) << 16;
}
inline uint32_t Big16(const FileBytes& bytes, size_t offset) {
    return ByteAt(bytes, offset) << 8 | ByteAt(bytes, offset + 1);
}

// Error 481; `reason` is a sentence without its full stop, as in "the file is cut".
[[noreturn]] void Refuse(std::string_view path, const std::string& reason);

void CheckSides(uint32_t width, uint32_t height, std::string_view path);

// Refuses a file that ends before `needed` bytes.
void CheckLength(uint64_t length, uint64_t needed, std::string_view path);

GuardedPicture GuardDds(FileBytes bytes, std::string_view path);
std::optional<Dxt1Layout> FindDxt1(const FileBytes& header, uint64_t length,
                                   std::string_view path);
GuardedPicture GuardTarga(FileBytes bytes, std::string_view path);
GuardedPicture GuardJpeg(FileBytes bytes, std::string_view path);
GuardedPicture GuardBmp(FileBytes bytes, std::string_view path);

} // namespace vardenix::guard
