#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace vardenix {

// What is there under a real path; nothing for ENOENT and ENOTDIR, and the error of any
// other refusal. StatusOf follows links, StatusOfLink tells of the link itself.
std::optional<struct stat> StatusOf(const std::filesystem::path& path);
std::optional<struct stat> StatusOfLink(const std::filesystem::path& path);

bool IsFile(const std::optional<struct stat>& status);
bool IsFolder(const std::optional<struct stat>& status);

// The names in a folder, in the order of their bytes; none for a folder that is not
// there. A refusal of the system (an errno value) is given back, not thrown.
struct FolderNames {
    std::vector<std::string> Names;
    int Refusal = 0;
};
FolderNames NamesIn(const std::filesystem::path& folder);

} // namespace vardenix
