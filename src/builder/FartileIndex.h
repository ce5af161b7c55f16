#pragma once

#include "builder/RewrittenFile.h"
#include "files/Digest.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// What the file beside the containers says: how the containers look that it is about, by
// day and by night, and what each of their far tiles was made of.
struct FartileIndex {
    std::array<FileStamp, 2> Containers;
    std::vector<Digest> Keys; // by far tile

    bool operator==(const FartileIndex&) const = default;
};

// Far tiles beyond those of any theater.
constexpr uint64_t MostFartilesOfIndex = uint64_t{1} << 23;

// Bytes of the file for so many far tiles.
uint64_t BytesOfIndex(uint64_t fartiles);

// The bytes of the file: a signature, both stamps, the keys, a checksum of all of it.
std::vector<std::byte> FartileIndexBytes(const FartileIndex& index);
// None for bytes that are no such file, whole and of this version.
std::optional<FartileIndex> ParseFartileIndex(std::span<const std::byte> bytes);

// None as well for a file that is not there or cannot be read, whatever the reason: far
// tiles can always be made anew.
std::optional<FartileIndex> ReadFartileIndex(const std::string& path);

} // namespace vardenix
