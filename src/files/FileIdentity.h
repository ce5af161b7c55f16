#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

struct stat;

namespace vardenix {

// Which file was there, and whether its bytes have been written since: what is asked
// before a file that was read is replaced. A change of rights or owner is no change.
struct FileIdentity {
    bool Present = false; // all else is 0 when nothing was there
    uint64_t Device = 0;
    uint64_t Inode = 0;
    uint64_t Size = 0;       // bytes
    int64_t Seconds = 0;     // of the last writing, since 1970
    int64_t Nanoseconds = 0; // 0 to 999,999,999

    bool operator==(const FileIdentity&) const = default;
};

// What a save does that finds another file in its place than was read.
enum class IfChanged { Refuse, Overwrite };

FileIdentity IdentityOfStatus(const struct ::stat& status);

// Links are followed. Not there is what ENOENT and ENOTDIR say; any other refusal is
// thrown with the path.
FileIdentity IdentityOfRealPath(const std::filesystem::path& path);

} // namespace vardenix
