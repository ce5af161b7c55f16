#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// A line of update.lst. "COPY" has FileName and Hash, every other command Param. Texts
// are UTF-8.
struct UpdateListEntry {
    std::string Command; // upper case; one that is not known does nothing
    std::string FileName;
    std::string Hash; // 32 hexadecimal digits in upper case
    std::string Param;
};

// The bytes of an update.lst, Windows-1252, one command a line: "COPY*name*hash",
// "MSG*text". Lines with fewer than two fields are passed over.
std::vector<UpdateListEntry> ReadUpdateList(std::string_view text);

// The first name of a file that may not be one, and why, as a sentence; empty when all
// may.
std::string WhyListRefused(const std::vector<UpdateListEntry>& entries);

} // namespace vardenix
