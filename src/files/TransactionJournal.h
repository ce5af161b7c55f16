#pragma once

#include "files/FileIdentity.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// What a transaction of several files writes down before the first of them takes its
// place, so that whoever finds it half done can prove what is there and finish it. It
// lies in the folder of each of the files under one name, and goes when the last file has
// its place:
//
//     Vardenix journal 1
//     file theater.L2
//     staged 9437184 9a0b1c2d
//     replaces 2049 131 9437190 1763726400 123456789
//     file ../texture/Texture.bin
//     staged 81920 00c0ffee
//     replaces nothing
//     end 5d41402a
//
// Lines end with LF. A file is named as seen from the journal's folder, bytes below 32,
// 127 and "%" as "%" and two hexadecimal digits; it is staged under that name plus "x".
// "staged" gives the new file's bytes and their CRC-32; "replaces" the device, inode,
// bytes, and seconds and nanoseconds of the last writing of the file that stood there
// when the transaction was committed. "end" is the CRC-32 of all bytes before its line.
struct JournalEntry {
    std::string Name; // as seen from the journal's folder
    uint64_t Size = 0;
    uint32_t Checksum = 0;
    FileIdentity Replaced;

    bool operator==(const JournalEntry&) const = default;
};

std::string JournalText(const std::vector<JournalEntry>& entries);

// Nothing unless the bytes are a whole journal of one entry or more.
std::optional<std::vector<JournalEntry>> ParseJournal(std::span<const std::byte> bytes);

// Where the journal of a folder lies, and where one that does not count is set aside.
std::filesystem::path JournalOf(const std::filesystem::path& folder);
std::filesystem::path AsideOf(const std::filesystem::path& journal);

constexpr uint64_t LargestJournal = uint64_t{1} << 20; // bytes

} // namespace vardenix
