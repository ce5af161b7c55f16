#include "files/KeptFiles.h"

#include "files/CopyFile.h"
#include "files/FileNames.h"
#include "files/FileOwner.h"
#include "files/FileStatus.h"
#include "files/OwnFolders.h"
#include "files/PlainName.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "texts/RuntimeError.h"
#include "texts/TextLines.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr const char* ListName = "kept.lst";
constexpr off_t LongestList = 1 << 20;
constexpr int MostAside = 100;

fs::path PathOf(const std::string& folder, const std::string& name) {
    return PathAsItStands(folder) / name;
}

void Flush(const std::string& folder) {
    if (!FlushFolder(PathAsItStands(folder)))
        ThrowSystemError(errno, "flushing the folder", folder);
}

void RemoveFile(const fs::path& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        ThrowSystemError(errno, "deleting", TextOfPath(path));
}

std::string TextOf(const FileBytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

KeptFiles::KeptFiles(const std::string& programFolder)
    : folder_(WithTrailingSlash(programFolder)), aside_(folder_ + "UpdateKept/") {
    if (!IsFolder(StatusOfLink(PathAsItStands(aside_))))
        return;
    lock_.emplace(aside_, FolderLock::Exclusive, std::chrono::milliseconds(0));
    ReadList();
}

std::string KeptFiles::Aside(size_t line) const { return aside_ + std::to_string(line); }

std::string KeptFiles::Scratch() const { return aside_ + "new"; }

void KeptFiles::ReadList() {
    std::string why = WhyFolderDoesNotCount();
    if (why.empty() && StatusOfLink(PathOf(aside_, ListName))) {
        why = WhyListDoesNotCount();
        any_ = why.empty();
    }
    if (!why.empty())
        PutAside(why);
}

std::string KeptFiles::WhyFolderDoesNotCount() const {
    const auto status = StatusOfLink(PathAsItStands(aside_));
    if (!status || BelongsHere(*status, PathAsItStands(folder_)))
        return {};
    // Whoever has it may be at work where this user cannot see it.
    if (!lock_->Held())
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           TextOfPath(PathAsItStands(aside_)) +
                               " belongs to another user");
    return "it belongs to another user";
}

std::string KeptFiles::WhyListDoesNotCount() {
    const auto status = StatusOfLink(PathOf(aside_, ListName));
    if (!IsFile(status) || status->st_size > LongestList)
        return std::string(ListName) + " is no list";
    if (!BelongsHere(*status, PathAsItStands(folder_)))
        return std::string(ListName) + " belongs to another user";
    const std::string text = TextOf(ReadWholeFile(aside_ + ListName, LongestList));
    if (!text.ends_with('\n'))
        return std::string(ListName) + " is cut";
    std::string_view rest = text;
    std::string_view line;
    while (NextLine(rest, line)) {
        const Kept file{std::string(line.substr(line.empty() ? 0 : 1)),
                        line.starts_with('+')};
        const std::string why = file.WasThere || line.starts_with('-')
                                    ? WhyFileDoesNotCount(file, files_.size() + 1)
                                    : "begins with neither + nor -";
        if (!why.empty())
            return "line " + std::to_string(files_.size() + 1) + " of " + ListName + " " +
                   why;
        files_.push_back(file);
    }
    return HasMoreAside() ? std::string(ListName) + " lacks files" : "";
}

std::string KeptFiles::WhyFileDoesNotCount(const Kept& file, size_t line) const {
    if (std::string why = WhyNotPlain(file.Name); !why.empty())
        return why;
    if (std::ranges::any_of(files_,
                            [&](const Kept& other) { return other.Name == file.Name; }))
        return "comes twice";
    for (const fs::path& path :
         {PathOf(folder_, file.Name), PathAsItStands(Aside(line))}) {
        const auto status = StatusOfLink(path);
        if (!status)
            continue;
        if (!S_ISREG(status->st_mode) && !S_ISLNK(status->st_mode))
            return "names what is no file";
        if (!BelongsHere(*status, PathAsItStands(folder_)))
            return "names a file of another user";
    }
    return {};
}

// Whether something lies aside that no line of the list is about.
bool KeptFiles::HasMoreAside() const {
    const FolderNames names = NamesIn(PathAsItStands(aside_));
    if (names.Refusal != 0)
        ThrowSystemError(names.Refusal, "listing", aside_);
    return std::ranges::any_of(names.Names, [this](const std::string& name) {
        if (name.find_first_not_of("0123456789") != std::string::npos)
            return false;
        for (size_t i = 0; i < files_.size(); ++i)
            if (files_[i].WasThere && name == std::to_string(i + 1))
                return false;
        return true;
    });
}

void KeptFiles::PutAside(const std::string& why) {
    const fs::path from = PathAsItStands(aside_);
    fs::path to; // the last one is taken where all are, and then refuses
    for (int i = 1; i <= MostAside; ++i) {
        to = from;
        to += ".aside" + (i == 1 ? std::string() : std::to_string(i));
        if (!StatusOfLink(to))
            break;
    }
    const bool renamed = std::rename(from.c_str(), to.c_str()) == 0;
    lock_.reset();
    files_.clear();
    setAside_ = "What an update kept of the old files in " + TextOfPath(from) +
                " does not count: " + why + ". Nothing of it has been put back; it " +
                (renamed ? "lies in " + TextOfPath(to) + " now." : "could not be moved.");
}

void KeptFiles::Clear() {
    any_ = false;
    files_.clear();
    DeleteFolderTree(aside_);
    lock_.reset();
}

void KeptFiles::Keep(const std::vector<std::string>& names) {
    if (any_)
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           aside_ + ": another update is at work");
    Clear();
    MakeScratchFolder(aside_);
    lock_.emplace(aside_, FolderLock::Exclusive, std::chrono::milliseconds(0));
    try {
        KeepAll(names);
    } catch (...) {
        Clear();
        throw;
    }
}

void KeptFiles::KeepAll(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        const auto status = StatusOfLink(PathOf(folder_, name));
        if (status && !S_ISREG(status->st_mode) && !S_ISLNK(status->st_mode))
            throw RuntimeError(ErrorNumber::PathFileAccess,
                               folder_ + name + " is no file");
        if (status && !BelongsHere(*status, PathAsItStands(folder_)))
            throw RuntimeError(ErrorNumber::PermissionDenied,
                               TextOfPath(PathOf(folder_, name)) +
                                   " belongs to another user");
        files_.push_back({name, status.has_value()});
        list += (status ? "+" : "-") + name + "\n";
        KeepOne(files_.back(), files_.size());
    }
    Flush(aside_);
    StagedFile file(aside_ + ListName);
    file.WriteText(list);
    file.Commit();
    Flush(folder_);
    any_ = true;
}

// The very file where the disk can give it a second name, else a copy.
void KeptFiles::KeepOne(const Kept& file, size_t line) const {
    if (!file.WasThere)
        return;
    const fs::path from = PathOf(folder_, file.Name);
    const fs::path to = PathAsItStands(Aside(line));
    if (::link(from.c_str(), to.c_str()) == 0)
        return;
    const auto status = StatusOfLink(from);
    if (!IsFile(status))
        ThrowSystemError(errno, "keeping", TextOfPath(from));
    CopyFile(from, to, status->st_mode);
}

void KeptFiles::PutBack() {
    for (size_t i = 0; i < files_.size(); ++i)
        PutBackOne(files_[i], i + 1);
    Flush(folder_);
    LetGo();
}

void KeptFiles::PutBackOne(const Kept& file, size_t line) const {
    const fs::path place = PathOf(folder_, file.Name);
    if (!file.WasThere) {
        RemoveFile(place);
        return;
    }
    // What does not lie aside any more has been put back before.
    if (::rename(PathAsItStands(Aside(line)).c_str(), place.c_str()) != 0 &&
        errno != ENOENT)
        ThrowSystemError(errno, "putting back", TextOfPath(place));
}

void KeptFiles::LetGo() {
    RemoveFile(PathOf(aside_, ListName));
    Flush(aside_);
    Clear();
}

} // namespace vardenix
