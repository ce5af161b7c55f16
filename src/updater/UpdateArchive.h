#pragma once

#include "updater/Archives.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace vardenix {

// An update that is not carried out although nothing is broken: what() says why, as a
// sentence. Nothing has been changed.
class RefusedUpdate : public std::runtime_error {
public:
    explicit RefusedUpdate(const std::string& why) : std::runtime_error(why) {}
};

// What an archive may unpack to in all, in bytes, and in how many files.
constexpr uint64_t LargestUpdate = uint64_t{1} << 30;
constexpr size_t MostUpdateFiles = 10000;

// Extracts an archive of type 7z into its own folder, which must be the program's alone;
// everything else in it goes first. The archive's listing is looked through before, and
// what has been extracted after: only plain files, whose names are names of the folder,
// and not too much of them. RefusedUpdate for any other archive; false for one that is
// broken.
bool ExtractUpdate(const std::string& folder, const std::string& archiveName,
                   const ToolRunner& tools);

} // namespace vardenix
