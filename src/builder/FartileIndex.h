#pragma once

#include "files/Digest.h"
#include "files/FileMark.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// The digest of a tile picture that has this mark, read in this format (PictureFormat).
struct KnownPicture {
    FileMark Mark; // one that is not present is no picture
    int32_t Format = 0;
    vardenix::Digest Digest{};

    bool operator==(const KnownPicture&) const = default;
};

// What the file beside the containers says: which files the containers are that it is
// about, by day and by night, what each of their far tiles was made of and the CRC-32 of
// its bytes in both, and the digests of pictures.
struct FartileIndex {
    std::array<FileIdentity, 2> Containers;
    std::vector<Digest> Keys;                  // by far tile
    std::vector<std::array<uint32_t, 2>> Sums; // as many
    std::vector<KnownPicture> Pictures;

    bool operator==(const FartileIndex&) const = default;
};

// Far tiles and pictures beyond those of any theater.
constexpr uint64_t MostFartilesOfIndex = uint64_t{1} << 23;
constexpr uint64_t MostPicturesOfIndex = uint64_t{1} << 18;

// Bytes of the file for so many far tiles and pictures.
uint64_t BytesOfIndex(uint64_t fartiles, uint64_t pictures);

// The bytes of the file: a signature, both counts, the containers, keys, checksums,
// pictures, and a checksum of all of it.
std::vector<std::byte> FartileIndexBytes(const FartileIndex& index);
// None for bytes that are no such file, whole and of this version.
std::optional<FartileIndex> ParseFartileIndex(std::span<const std::byte> bytes);

} // namespace vardenix
