#include "files/FileNames.h"

#include "files/FileStatus.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr int MostLinks = 40; // as the system counts them

bool IsSlash(char c) { return c == '/' || c == '\\'; }

size_t LastSlash(std::string_view text) { return text.find_last_of("/\\"); }

bool Is(const std::optional<struct stat>& status, PathKind kind) {
    switch (kind) {
    case PathKind::File:
        return IsFile(status);
    case PathKind::Folder:
        return IsFolder(status);
    case PathKind::Anything:
        break;
    }
    return status.has_value();
}

// A link to nothing has its name too.
bool IsThere(const fs::path& path, PathKind kind) {
    return Is(kind == PathKind::Anything ? StatusOfLink(path) : StatusOf(path), kind);
}

// The folder that a name without one lies in is there.
bool FolderIsThere(const fs::path& folder) {
    return folder.empty() || IsFolder(StatusOf(folder));
}

// Looks a name up component by component without regard to case.
class AnyCaseSearch {
public:
    explicit AnyCaseSearch(PathKind kind) : kind_(kind) {}

    std::optional<fs::path> Find(const fs::path& folder, const fs::path& rest) const {
        return Below(folder, rest.begin(), rest.end());
    }

private:
    using Component = fs::path::const_iterator;

    std::optional<fs::path> Below(const fs::path& folder, Component at,
                                  Component end) const {
        const fs::path exact = folder / *at;
        const bool isThere = StatusOfLink(exact).has_value();
        if (isThere)
            if (auto found = Through(exact, at, end))
                return found;
        if (*at == "." || *at == ".." || at->has_root_directory())
            return std::nullopt;
        return InOtherCase(folder, at, end, isThere);
    }

    std::optional<fs::path> Through(const fs::path& path, Component at,
                                    Component end) const {
        if (std::next(at) != end)
            return Below(path, std::next(at), end);
        return IsThere(path, kind_) ? std::optional(path) : std::nullopt;
    }

    // A refusal behind one candidate stands only when no other leads to anything.
    std::optional<fs::path> InOtherCase(const fs::path& folder, Component at,
                                        Component end, bool exactIsThere) const {
        const FolderNames listed = NamesIn(folder);
        // Who names a folder of theirs exactly means no other that they may not see.
        if (listed.Refusal == EACCES && exactIsThere)
            return std::nullopt;
        if (listed.Refusal != 0)
            ThrowSystemError(listed.Refusal, "listing", folder.string());
        const std::string wanted = UpperCase(at->native());
        std::optional<RuntimeError> refusal;
        for (const std::string& name : listed.Names) {
            if (name == at->native() || UpperCase(name) != wanted)
                continue;
            try {
                if (auto found = Through(folder / name, at, end))
                    return found;
            } catch (const RuntimeError& error) {
                refusal = refusal.value_or(error);
            }
        }
        if (refusal)
            throw RuntimeError(*refusal);
        return std::nullopt;
    }

    PathKind kind_;
};

std::optional<fs::path> FindPath(const fs::path& folder, const fs::path& told,
                                 PathKind kind) {
    // Most names are right as they stand.
    if (IsThere(folder / told, kind))
        return folder / told;
    const fs::path last = folder / told.parent_path();
    return FolderIsThere(last) ? AnyCaseSearch(kind).Find(last, told.filename())
                               : AnyCaseSearch(kind).Find(folder, told);
}

bool IsEmptyFolder(const fs::path& folder) {
    const FolderNames found = NamesIn(folder);
    return found.Refusal == 0 && found.Names.size() == 2; // "." and ".."
}

} // namespace

fs::path PathAsItStands(std::string_view text) {
    std::string native;
    for (const char c : text)
        if (!IsSlash(c))
            native += c;
        else if (native.empty() || native.back() != '/')
            native += '/';
    if (native.size() > 1 && native.back() == '/')
        native.pop_back();
    return native;
}

fs::path RealPath(std::string_view text, PathKind kind) {
    return RealPathBelow({}, text, kind);
}

fs::path RealPathBelow(const fs::path& folder, std::string_view rest, PathKind kind) {
    fs::path told = PathAsItStands(rest);
    if (!folder.empty())
        told = told.relative_path();
    if (told.empty())
        return folder;
    if (auto found = FindPath(folder, told, kind))
        return *found;
    if (kind != PathKind::Anything)
        if (auto found = FindPath(folder, told, PathKind::Anything))
            return *found;
    if (FolderIsThere(folder / told.parent_path()))
        return folder / told;
    return RealPathBelow(folder, told.parent_path().native(), PathKind::Folder) /
           told.filename();
}

fs::path RealPathToRead(std::string_view text) {
    const fs::path told = PathAsItStands(text);
    fs::path real = RealPath(text, PathKind::File);
    if (IsThere(real, PathKind::Anything) || !IsEmptyFolder(told.parent_path()))
        return real;
    return AnyCaseSearch(PathKind::File).Find({}, told).value_or(real);
}

fs::path FollowLinks(const fs::path& path) {
    fs::path target = path;
    for (int links = 0;; ++links) {
        const auto status = StatusOfLink(target);
        if (!status || !S_ISLNK(status->st_mode))
            return target;
        std::error_code error;
        const fs::path next = fs::read_symlink(target, error);
        if (error || links == MostLinks)
            ThrowSystemError(error ? error.value() : ELOOP, "following the link",
                             TextOfPath(target));
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
}

std::string TextOfPath(const fs::path& path) { return path.string(); }

std::string ShownPath(std::string_view text) {
    try {
        return TextOfPath(RealPath(text));
    } catch (const RuntimeError&) {
        return TextOfPath(PathAsItStands(text));
    }
}

bool FileExists(std::string_view text) {
    return !text.empty() && IsFile(StatusOf(RealPath(text, PathKind::File)));
}

bool FolderExists(std::string_view text) {
    return !text.empty() && IsFolder(StatusOf(RealPath(text, PathKind::Folder)));
}

uint64_t FileLength(std::string_view text) {
    const fs::path path = RealPath(text, PathKind::File);
    std::error_code error;
    const uint64_t length = fs::file_size(path, error);
    if (error)
        ThrowSystemError(error.value(), "measuring", TextOfPath(path));
    return length;
}

void DeleteFile(std::string_view text) {
    const fs::path path = RealPath(text, PathKind::File);
    if (IsFolder(StatusOf(path)))
        ThrowSystemError(EISDIR, "deleting", TextOfPath(path));
    std::error_code error;
    if (!fs::remove(path, error))
        ThrowSystemError(error ? error.value() : ENOENT, "deleting", TextOfPath(path));
}

void DeleteFolderTree(std::string_view text) {
    const fs::path path = PathAsItStands(text);
    std::error_code error;
    fs::remove_all(path, error);
    if (error)
        ThrowSystemError(error.value(), "deleting the folder", TextOfPath(path));
}

bool SameFile(std::string_view a, std::string_view b) {
    const fs::path pathA = FollowLinks(RealPath(a));
    const fs::path pathB = FollowLinks(RealPath(b));
    const auto statusA = StatusOf(pathA);
    const auto statusB = StatusOf(pathB);
    if (statusA && statusB)
        return statusA->st_dev == statusB->st_dev && statusA->st_ino == statusB->st_ino;
    return pathA.lexically_normal() == pathB.lexically_normal();
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

FolderIndex::FolderIndex(std::string_view folder)
    : folder_(RealPath(folder, PathKind::Folder)) {
    const FolderNames found = NamesIn(folder_);
    listed_ = found.Refusal == 0;
    if (!listed_ && found.Refusal != EACCES)
        ThrowSystemError(found.Refusal, "listing", TextOfPath(folder_));
    for (const std::string& name : found.Names)
        byUpperName_[UpperCase(name)].push_back(name);
}

std::optional<fs::path> FolderIndex::Find(std::string_view name) const {
    if (!listed_) {
        fs::path exact = folder_ / name;
        return StatusOfLink(exact) ? std::optional(std::move(exact)) : std::nullopt;
    }
    const auto found = byUpperName_.find(UpperCase(name));
    if (found == byUpperName_.end())
        return std::nullopt;
    const std::vector<std::string>& names = found->second;
    const auto exact = std::find(names.begin(), names.end(), name);
    return folder_ / (exact != names.end() ? *exact : names.front());
}

bool FolderIndex::HasFile(std::string_view name) const {
    if (!listed_)
        return IsFile(StatusOf(folder_ / name));
    const auto found = byUpperName_.find(UpperCase(name));
    return found != byUpperName_.end() &&
           std::any_of(found->second.begin(), found->second.end(),
                       [this](const std::string& each) {
                           return IsFile(StatusOf(folder_ / each));
                       });
}

} // namespace vardenix
