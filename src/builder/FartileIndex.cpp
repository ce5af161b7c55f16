#include "builder/FartileIndex.h"

#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace vardenix {

namespace {

// The last letter is the version.
constexpr std::array<char, 8> Signature{'V', 'X', 'F', 'T', 'I', 'D', 'X', '1'};
constexpr size_t StampBytes = 28; // size, seconds, nanoseconds, checksum
constexpr size_t HeadBytes = Signature.size() + 2 * StampBytes;
constexpr size_t ChecksumBytes = 4;

template <typename Number>
void Put(std::vector<std::byte>& bytes, Number number) {
    const auto raw = std::as_bytes(std::span(&number, 1));
    bytes.insert(bytes.end(), raw.begin(), raw.end());
}

// Takes the numbers that Put has put; the bytes are there.
template <typename Number>
void Take(std::span<const std::byte>& bytes, Number& number) {
    std::memcpy(&number, bytes.data(), sizeof number);
    bytes = bytes.subspan(sizeof number);
}

bool HasLengthOfIndex(uint64_t bytes) {
    return bytes >= BytesOfIndex(0) && bytes <= BytesOfIndex(MostFartilesOfIndex) &&
           (bytes - BytesOfIndex(0)) % sizeof(Digest) == 0;
}

} // namespace

uint64_t BytesOfIndex(uint64_t fartiles) {
    return HeadBytes + fartiles * sizeof(Digest) + ChecksumBytes;
}

std::vector<std::byte> FartileIndexBytes(const FartileIndex& index) {
    std::vector<std::byte> bytes;
    bytes.reserve(BytesOfIndex(index.Keys.size()));
    Put(bytes, Signature);
    for (const FileStamp& stamp : index.Containers) {
        Put(bytes, stamp.Size);
        Put(bytes, stamp.Seconds);
        Put(bytes, stamp.Nanoseconds);
        Put(bytes, stamp.Checksum);
    }
    for (const Digest& key : index.Keys)
        Put(bytes, key);
    Put(bytes, ChecksumOf(bytes));
    return bytes;
}

std::optional<FartileIndex> ParseFartileIndex(std::span<const std::byte> bytes) {
    if (!HasLengthOfIndex(bytes.size()))
        return {};
    const auto told = bytes.first(bytes.size() - ChecksumBytes);
    auto rest = bytes;
    std::array<char, Signature.size()> signature{};
    Take(rest, signature);
    FartileIndex index;
    for (FileStamp& stamp : index.Containers) {
        Take(rest, stamp.Size);
        Take(rest, stamp.Seconds);
        Take(rest, stamp.Nanoseconds);
        Take(rest, stamp.Checksum);
    }
    index.Keys.resize((rest.size() - ChecksumBytes) / sizeof(Digest));
    for (Digest& key : index.Keys)
        Take(rest, key);
    uint32_t checksum = 0;
    Take(rest, checksum);
    if (signature != Signature || checksum != ChecksumOf(told))
        return {};
    return index;
}

std::optional<FartileIndex> ReadFartileIndex(const std::string& path) {
    try {
        const ReadableFile file(path);
        if (!HasLengthOfIndex(file.Size()))
            return {};
        return ParseFartileIndex(file.ReadAll().Span());
    } catch (const RuntimeError&) {
        return {};
    }
}

} // namespace vardenix
