#include "builder/FartileIndex.h"

#include "files/StagedFile.h"

#include <cstring>

namespace vardenix {

namespace {

// The last letter is the version.
constexpr std::array<char, 8> Signature{'V', 'X', 'F', 'T', 'I', 'D', 'X', '2'};
// Device, inode, size, seconds and nanoseconds of the last writing.
constexpr size_t IdentityBytes = 40;
constexpr size_t PictureBytes = IdentityBytes + 16 + 4 + sizeof(Digest);
constexpr size_t FartileBytes = sizeof(Digest) + 8;
constexpr size_t HeadBytes = Signature.size() + 2 * 4 + 2 * IdentityBytes;
constexpr size_t ChecksumBytes = 4;

template <typename Value>
void Put(std::vector<std::byte>& bytes, const Value& value) {
    const auto raw = std::as_bytes(std::span(&value, 1));
    bytes.insert(bytes.end(), raw.begin(), raw.end());
}

void PutIdentity(std::vector<std::byte>& bytes, const FileIdentity& file) {
    Put(bytes, file.Device);
    Put(bytes, file.Inode);
    Put(bytes, file.Size);
    Put(bytes, file.Seconds);
    Put(bytes, file.Nanoseconds);
}

// Takes the values that Put has put; the bytes are there.
template <typename Value>
void Take(std::span<const std::byte>& bytes, Value& value) {
    std::memcpy(&value, bytes.data(), sizeof value);
    bytes = bytes.subspan(sizeof value);
}

// No file has the inode 0.
void TakeIdentity(std::span<const std::byte>& bytes, FileIdentity& file) {
    Take(bytes, file.Device);
    Take(bytes, file.Inode);
    Take(bytes, file.Size);
    Take(bytes, file.Seconds);
    Take(bytes, file.Nanoseconds);
    file.Present = file.Inode != 0;
}

} // namespace

uint64_t BytesOfIndex(uint64_t fartiles, uint64_t pictures) {
    return HeadBytes + fartiles * FartileBytes + pictures * PictureBytes + ChecksumBytes;
}

std::vector<std::byte> FartileIndexBytes(const FartileIndex& index) {
    std::vector<std::byte> bytes;
    bytes.reserve(BytesOfIndex(index.Keys.size(), index.Pictures.size()));
    Put(bytes, Signature);
    Put(bytes, static_cast<uint32_t>(index.Keys.size()));
    Put(bytes, static_cast<uint32_t>(index.Pictures.size()));
    for (const FileIdentity& container : index.Containers)
        PutIdentity(bytes, container);
    const auto keys = std::as_bytes(std::span(index.Keys));
    bytes.insert(bytes.end(), keys.begin(), keys.end());
    const auto sums = std::as_bytes(std::span(index.Sums));
    bytes.insert(bytes.end(), sums.begin(), sums.end());
    for (const KnownPicture& picture : index.Pictures) {
        PutIdentity(bytes, picture.Mark.Identity);
        Put(bytes, picture.Mark.ChangedSeconds);
        Put(bytes, picture.Mark.ChangedNanoseconds);
        Put(bytes, picture.Format);
        Put(bytes, picture.Digest);
    }
    Put(bytes, ChecksumOf(bytes));
    return bytes;
}

std::optional<FartileIndex> ParseFartileIndex(std::span<const std::byte> bytes) {
    if (bytes.size() < BytesOfIndex(0, 0))
        return {};
    const auto told = bytes.first(bytes.size() - ChecksumBytes);
    auto rest = bytes;
    std::array<char, Signature.size()> signature{};
    uint32_t fartiles = 0;
    uint32_t pictures = 0;
    Take(rest, signature);
    Take(rest, fartiles);
    Take(rest, pictures);
    if (signature != Signature || BytesOfIndex(fartiles, pictures) != bytes.size())
        return {};
    FartileIndex index;
    for (FileIdentity& container : index.Containers)
        TakeIdentity(rest, container);
    index.Keys.resize(fartiles);
    for (Digest& key : index.Keys)
        Take(rest, key);
    index.Sums.resize(fartiles);
    for (auto& sums : index.Sums)
        Take(rest, sums);
    index.Pictures.resize(pictures);
    for (KnownPicture& picture : index.Pictures) {
        TakeIdentity(rest, picture.Mark.Identity);
        Take(rest, picture.Mark.ChangedSeconds);
        Take(rest, picture.Mark.ChangedNanoseconds);
        Take(rest, picture.Format);
        Take(rest, picture.Digest);
    }
    uint32_t checksum = 0;
    Take(rest, checksum);
    if (checksum != ChecksumOf(told))
        return {};
    return index;
}

} // namespace vardenix
