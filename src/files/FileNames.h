#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vardenix {

// Paths are UTF-8 texts in which "\" and "/" both separate. They become real files only
// here. A name is taken as it stands where something of that name is there; only
// otherwise the folder is listed for one that differs in the case of the letters A to Z.
// "Not there" is what the system calls so (ENOENT, ENOTDIR); whatever else keeps it from
// answering is thrown as the error it is (70, 57, 75 and so on), with the path.

// What a name has to stand for: a folder in the place of a wanted file does not hide a
// file whose name differs in case.
enum class PathKind { Anything, File, Folder };

// The text with this system's slashes, none twice and none at the end; no disk is asked.
std::filesystem::path PathAsItStands(std::string_view text);

// The real file or folder that a text names, whether it exists or not: the text as it
// stands, without listing anything. Where its last folder is there as it stands, that is
// the folder meant, and only the name is looked for in it. Else every folder that the
// text can mean is tried, exact names first and then by bytes. What is not there keeps
// the case of its text, in the folders that are.
std::filesystem::path RealPath(std::string_view text, PathKind kind = PathKind::Anything);

// RealPath below a folder that is taken as it stands, as are the folders above it.
std::filesystem::path RealPathBelow(const std::filesystem::path& folder,
                                    std::string_view rest,
                                    PathKind kind = PathKind::Anything);

// RealPath of a file that is only to be found: an empty folder is not the folder meant,
// though it is there as it stands.
std::filesystem::path RealPathToRead(std::string_view text);

// The end of the chain where `path` is a link; a link to nothing ends there too.
std::filesystem::path FollowLinks(const std::filesystem::path& path);

// A real path as a text of the program.
std::string TextOfPath(const std::filesystem::path& path);

// What a text names as the disk has it, for messages; never throws the system's refusals.
std::string ShownPath(std::string_view text);

// A regular file is there (a folder is not a file).
bool FileExists(std::string_view text);
bool FolderExists(std::string_view text);

// Bytes of a file; error 53 when there is none.
uint64_t FileLength(std::string_view text);

// Error 53 when there is no such file, else the system's refusal (70, 75).
void DeleteFile(std::string_view text);

// Deletes a folder that the program made, with all its contents; nothing happens when
// there is none. The name counts as it stands, and no link is followed: what one leads to
// stays.
void DeleteFolderTree(std::string_view text);

// Whether two texts name the same file, existing or not, links followed.
bool SameFile(std::string_view a, std::string_view b);

// The part behind the last slash of either kind, all of it when there is none; and the
// part up to and including that slash.
std::string AfterLastSlash(std::string_view text);
std::string UpToLastSlash(std::string_view text);

// The text with a backslash added unless it already ends in a slash of either kind.
std::string WithTrailingSlash(std::string_view text);

// The names of one folder, read once, for whoever looks up thousands of them. Finds what
// RealPath would find at the time it was made. In a folder that may be entered but not
// listed names are found as they stand.
class FolderIndex {
public:
    // A folder that is not there has no names.
    explicit FolderIndex(std::string_view folder);

    bool HasFile(std::string_view name) const;
    // What has that name, in any case where nothing matches exactly.
    std::optional<std::filesystem::path> Find(std::string_view name) const;

private:
    std::filesystem::path folder_;
    bool listed_ = true;
    std::unordered_map<std::string, std::vector<std::string>> byUpperName_;
};

} // namespace vardenix
