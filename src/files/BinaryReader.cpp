#include "files/BinaryReader.h"

#include "texts/RuntimeError.h"

#include <bit>
#include <cstring>
#include <new>

namespace vardenix {

static_assert(std::endian::native == std::endian::little,
              "the files are little-endian and are read as they stand");

FileBytes::FileBytes(size_t size) : size_(size) {
    try {
        bytes_ = std::make_unique_for_overwrite<std::byte[]>(size);
    } catch (const std::bad_alloc&) {
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           std::to_string(size) + " bytes could not be had");
    }
}

BinaryReader::BinaryReader(std::span<const std::byte> bytes, std::string path)
    : bytes_(bytes), path_(std::move(path)) {}

uint8_t BinaryReader::Byte() { return std::to_integer<uint8_t>(Bytes(1)[0]); }

int32_t BinaryReader::Int32() {
    int32_t value = 0;
    std::memcpy(&value, Bytes(sizeof value).data(), sizeof value);
    return value;
}

float BinaryReader::Float() { return std::bit_cast<float>(Int32()); }

std::span<const std::byte> BinaryReader::Bytes(size_t count) {
    if (count > Remaining())
        Lack(std::to_string(count) + (count == 1 ? " byte" : " bytes"));
    const auto result = bytes_.subspan(position_, count);
    position_ += count;
    return result;
}

void BinaryReader::RequireRecords(int64_t count, size_t recordSize,
                                  const std::string& what) const {
    if (count < 0 || static_cast<uint64_t>(count) > Remaining() / recordSize)
        Lack(std::to_string(count) + " " + what + " of " + std::to_string(recordSize) +
             " bytes or more");
}

void BinaryReader::Lack(const std::string& expected) const {
    throw RuntimeError(ErrorNumber::InputPastEnd,
                       path_ + ", offset " + std::to_string(position_) + ": expected " +
                           expected + ", found " + std::to_string(Remaining()) +
                           " bytes left");
}

} // namespace vardenix
