#include "platform/FileNames.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

char UpperLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsSlash(char c) { return c == '/' || c == '\\'; }

// The entry of `folder` that differs from `name` in case only; of several the first by
// bytes, so that the answer does not depend on the order of the disk.
std::optional<fs::path> FindIgnoringCase(const fs::path& folder,
                                         const std::string& name) {
    const std::string wanted = UpperCase(name);
    std::optional<fs::path> best;
    std::error_code error;
    const fs::path listed = folder.empty() ? fs::path(".") : folder;
    for (fs::directory_iterator it(listed, error), end; !error && it != end;
         it.increment(error)) {
        fs::path candidate = it->path().filename();
        if (UpperCase(candidate.native()) == wanted && (!best || candidate < *best))
            best = std::move(candidate);
    }
    return best;
}

fs::path MatchComponent(const fs::path& folder, const std::string& name) {
    std::error_code error;
    fs::path exact = folder / name;
    if (name == "." || name == ".." || fs::exists(fs::symlink_status(exact, error)))
        return exact;
    if (const auto other = FindIgnoringCase(folder, name))
        return folder / *other;
    return exact;
}

size_t LastSlash(std::string_view text) { return text.find_last_of("/\\"); }

} // namespace

fs::path RealPath(std::string_view text) {
    std::string native(text);
    std::replace(native.begin(), native.end(), '\\', '/');
    // Most names are right as they stand.
    std::error_code error;
    if (fs::exists(fs::symlink_status(native, error)))
        return native;

    fs::path path = !native.empty() && native[0] == '/' ? "/" : "";
    bool present = true; // nothing can lie below what is not there
    size_t begin = 0;
    while (begin < native.size()) {
        const size_t end = std::min(native.find('/', begin), native.size());
        if (end > begin) {
            const std::string name = native.substr(begin, end - begin);
            path = present ? MatchComponent(path, name) : path / name;
            present = present && fs::exists(fs::symlink_status(path, error));
        }
        begin = end + 1;
    }
    return path;
}

std::string TextOfPath(const fs::path& path) { return path.string(); }

bool FileExists(std::string_view text) {
    std::error_code error;
    return !text.empty() && fs::is_regular_file(RealPath(text), error);
}

bool FolderExists(std::string_view text) {
    std::error_code error;
    return !text.empty() && fs::is_directory(RealPath(text), error);
}

uint64_t FileLength(std::string_view text) {
    std::error_code error;
    const uint64_t length = fs::file_size(RealPath(text), error);
    if (error)
        ThrowSystemError(error.value(), "measuring", std::string(text));
    return length;
}

void DeleteFile(std::string_view text) {
    const fs::path path = RealPath(text);
    std::error_code error;
    if (fs::is_directory(path, error))
        ThrowSystemError(EISDIR, "deleting", std::string(text));
    if (!fs::remove(path, error))
        ThrowSystemError(error ? error.value() : ENOENT, "deleting", std::string(text));
}

void DeleteFolderTree(std::string_view text) {
    std::error_code error;
    fs::remove_all(RealPath(text), error);
    if (error)
        ThrowSystemError(error.value(), "deleting the folder", std::string(text));
}

void CreateFolder(std::string_view text) {
    std::error_code error;
    fs::create_directories(RealPath(text), error);
    if (error)
        ThrowSystemError(error.value(), "making the folder", std::string(text));
}

bool SameFile(std::string_view a, std::string_view b) {
    const fs::path pathA = RealPath(a);
    const fs::path pathB = RealPath(b);
    std::error_code error;
    return pathA.lexically_normal() == pathB.lexically_normal() ||
           fs::equivalent(pathA, pathB, error);
}

std::string AfterLastSlash(std::string_view text) {
    const size_t slash = LastSlash(text);
    return std::string(slash == std::string_view::npos ? text : text.substr(slash + 1));
}

std::string UpToLastSlash(std::string_view text) {
    const size_t slash = LastSlash(text);
    return std::string(slash == std::string_view::npos ? std::string_view{}
                                                       : text.substr(0, slash + 1));
}

std::string WithTrailingSlash(std::string_view text) {
    std::string result(text);
    if (result.empty() || !IsSlash(result.back()))
        result += '\\';
    return result;
}

std::string UpperCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), UpperLetter);
    return result;
}

std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
    for (size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string_view TrimBlanks(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

FolderIndex::FolderIndex(std::string_view folder) {
    std::error_code error;
    for (fs::directory_iterator it(RealPath(folder), error), end; !error && it != end;
         it.increment(error)) {
        const fs::path name = it->path().filename();
        const auto [place, isNew] =
            byUpperName_.try_emplace(UpperCase(name.native()), it->path());
        if (!isNew && name < place->second.filename())
            place->second = it->path();
    }
}

std::optional<fs::path> FolderIndex::Find(std::string_view name) const {
    const auto found = byUpperName_.find(UpperCase(name));
    if (found == byUpperName_.end())
        return std::nullopt;
    return found->second;
}

bool FolderIndex::HasFile(std::string_view name) const {
    const auto found = Find(name);
    std::error_code error;
    return found && fs::is_regular_file(*found, error);
}

} // namespace vardenix
