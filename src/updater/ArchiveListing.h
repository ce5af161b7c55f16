#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

struct ArchivedFile {
    std::string Name;  // as the archive program shows it, UTF-8
    uint64_t Size = 0; // bytes, unpacked
    // No folder, no link of any kind, nothing else that is no plain file.
    bool IsPlain = false;
};

struct ArchiveListing {
    std::string Type; // "7z"
    std::vector<ArchivedFile> Files;
};

// Takes the technical listing of the archive program apart. What it does not say of a
// file counts against it: without attributes a file is not plain.
ArchiveListing ParseArchiveListing(std::string_view text);

} // namespace vardenix
