#include "files/KeptFiles.h"

#include "files/CopyFile.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/OwnFolders.h"
#include "files/PlainName.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "texts/RuntimeError.h"
#include "texts/TextLines.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr const char* ListName = "kept.lst";
constexpr uint64_t LongestList = 1 << 20;

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
    if (!IsPlainFile(PathOf(aside_, ListName)))
        return;
    const std::string text = TextOf(ReadWholeFile(aside_ + ListName, LongestList));
    std::string_view rest = text;
    std::string_view line;
    while (NextLine(rest, line)) {
        const std::string name(line.substr(line.empty() ? 0 : 1));
        if (!WhyNotPlain(name).empty() || (line[0] != '+' && line[0] != '-'))
            throw RuntimeError(ErrorNumber::BadFileName,
                               aside_ + ListName + ", line " +
                                   std::to_string(files_.size() + 1) +
                                   ": no name of a kept file");
        files_.push_back({name, line[0] == '+'});
    }
    any_ = true;
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

bool PutBackInterrupted(const std::string& programFolder) {
    std::optional<KeptFiles> kept;
    try {
        kept.emplace(programFolder);
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::PermissionDenied)
            return false; // somebody is still at it
        throw;
    }
    const bool any = kept->Any();
    if (any)
        kept->PutBack();
    else
        kept->Clear();
    return any;
}

} // namespace vardenix
