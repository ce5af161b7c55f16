#include "platform/BinaryReader.h"

#include "platform/FileNames.h"
#include "platform/RuntimeError.h"
#include "platform/SystemFile.h"

#include <bit>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

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

FileBytes ReadWholeFile(std::string_view path) {
    const std::filesystem::path real = RealPath(path, PathKind::File);
    const std::string text = TextOfPath(real);
    // Not blocking: a pipe in place of a file would wait for ever at the opening.
    const SystemFile file(::open(real.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen())
        ThrowSystemError(errno, "opening", text);
    struct stat status {};
    if (::fstat(file.Handle(), &status) != 0)
        ThrowSystemError(errno, "measuring", text);
    if (!S_ISREG(status.st_mode))
        throw RuntimeError(ErrorNumber::PathFileAccess, text + " is not a file");

    FileBytes bytes(static_cast<size_t>(status.st_size));
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            ::read(file.Handle(), bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            ThrowSystemError(errno, "reading", text);
        if (got == 0)
            throw RuntimeError(ErrorNumber::InputPastEnd,
                               text + " became shorter while it was read");
        done += static_cast<size_t>(got);
    }
    return bytes;
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
