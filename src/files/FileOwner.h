#pragma once

#include <filesystem>
#include <sys/stat.h>

namespace vardenix {

// Whether a file in a folder is this user's, or that of whom the folder belongs to, who
// could put anything there at any time: on file systems that know one owner only, all
// files are. In a folder that anybody may write anybody's file may lie.
bool BelongsHere(const struct stat& file, const std::filesystem::path& folder);

} // namespace vardenix
