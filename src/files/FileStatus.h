#pragma once

#include <cstdint>
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

// What a name in a folder stands for, as far as the folder tells. Not every file system
// does, and a link has to be followed: those are unknown.
enum class ListedKind : uint8_t { File, NoFile, Unknown };

// The names in a folder, in the order of their bytes; none for a folder that is not
// there. A refusal of the system (an errno value) is given back, not thrown.
struct FolderNames {
    std::vector<std::string> Names;
    std::vector<ListedKind> Kinds; // of each name
    int Refusal = 0;
};
FolderNames NamesIn(const std::filesystem::path& folder);

// Whether what lies in the folder can be looked at; names may be readable where it
// cannot.
bool MayBeEntered(const std::filesystem::path& folder);

} // namespace vardenix
