#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vardenix {

// Paths are UTF-8 texts in which "\" and "/" both separate. They become real files only
// here: on a disk that minds the case each component is matched exactly first, then
// without regard to the case of the letters A to Z. What is not there keeps the case of
// its text.

// The real file or folder that a text names, whether it exists or not.
std::filesystem::path RealPath(std::string_view text);

// A real path as a text of the program.
std::string TextOfPath(const std::filesystem::path& path);

// A regular file is there (a folder is not a file); never throws.
bool FileExists(std::string_view text);
bool FolderExists(std::string_view text);

// Bytes of a file; error 53 when there is none.
uint64_t FileLength(std::string_view text);

// Error 53 when there is no such file, else the system's refusal (70, 75).
void DeleteFile(std::string_view text);

// Deletes a folder with all its contents; nothing happens when there is none.
void DeleteFolderTree(std::string_view text);

// Makes one folder, or with its parents where they are missing.
void CreateFolder(std::string_view text);

// Whether two texts name the same file, existing or not.
bool SameFile(std::string_view a, std::string_view b);

// The part behind the last slash of either kind, all of it when there is none; and the
// part up to and including that slash.
std::string AfterLastSlash(std::string_view text);
std::string UpToLastSlash(std::string_view text);

// The text with a backslash added unless it already ends in a slash of either kind.
std::string WithTrailingSlash(std::string_view text);

// Letters A to Z only: other letters are matched as they stand, so they are left as they
// stand.
std::string UpperCase(std::string_view text);

// Every occurrence, with the exact case.
std::string ReplaceAll(std::string text, std::string_view from, std::string_view to);

// Blanks only, both ends; a tab is not a blank.
std::string_view TrimBlanks(std::string_view text);

// The names of one folder, read once, for whoever looks up thousands of them. Finds what
// RealPath would find at the time it was made.
class FolderIndex {
public:
    // A folder that is not there has no names.
    explicit FolderIndex(std::string_view folder);

    bool HasFile(std::string_view name) const;
    // What has that name in any case, where there is something; of several names that
    // differ in case only, the first by bytes.
    std::optional<std::filesystem::path> Find(std::string_view name) const;

private:
    std::unordered_map<std::string, std::filesystem::path> byUpperName_;
};

} // namespace vardenix
