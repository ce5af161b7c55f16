#include "updater/MinorUpdate.h"

#include "files/CopyFile.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/StagedFile.h"
#include "loader/LoaderList.h"
#include "platform/Dialogs.h"
#include "platform/Registry.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr const char* ProgramKey = "SOFTWARE\\Vardenix";
constexpr mode_t RightsOfNewFiles = 0755;

class Planner {
public:
    Planner(const ProgramFolders& folders, Dialogs& dialogs,
            const std::function<void(const std::string&)>& showText, UpdateLog& log)
        : folders_(folders), dialogs_(dialogs), showText_(showText), log_(log) {}

    // How many of the entries that follow are passed over.
    size_t Take(const UpdateListEntry& entry, const UpdateListEntry* next) {
        if (entry.Command == "COPY") {
            Copy(entry.FileName);
        } else if (entry.Command == "MSG") {
            dialogs_.Notice(entry.Param, {}, BoxIcon::Information);
            log_.Write("Executed command MSG with param: " + entry.Param);
        } else if (entry.Command == "MSGYN") {
            return Ask(entry.Param, next) ? 0 : 1;
        } else if (entry.Command == "README") {
            showText_(Found(entry.Param));
            log_.Write("Executed command README with param: " + entry.Param);
        } else if (entry.Command == "DELETE") {
            Delete(entry);
        }
        return 0;
    }

    MinorUpdate Update;

private:
    // As the folder has it, or will have it.
    std::string RealName(const std::string& name) const {
        for (const auto& [known, source] : Update.Files)
            if (UpperCase(known) == UpperCase(name))
                return known;
        return RealPathBelow(PathAsItStands(folders_.AppPath), name, PathKind::File)
            .filename();
    }

    // Whether the file that is there, if one is, cannot be written over: a program that
    // runs, or a file without the right.
    bool IsInUse(const std::string& name) const {
        const fs::path path = PathAsItStands(folders_.AppPath) / name;
        const SystemFile file(
            ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        return !file.IsOpen() && errno != ENOENT;
    }

    bool IsThere(const std::string& name) const {
        const auto planned = Update.Files.find(name);
        if (planned != Update.Files.end())
            return !planned->second.empty();
        return FileExists(folders_.AppPath + name);
    }

    // A file as the update leaves it.
    std::string Found(const std::string& name) const {
        const auto planned = Update.Files.find(RealName(name));
        if (planned != Update.Files.end() && !planned->second.empty())
            return planned->second;
        if (planned != Update.Files.end() || !FileExists(folders_.AppPath + name))
            throw RuntimeError(ErrorNumber::FileNotFound,
                               ShownPath(folders_.AppPath + name));
        return folders_.AppPath + name;
    }

    void Copy(const std::string& fileName) {
        const std::string name = RealName(fileName);
        const std::string source =
            TextOfPath(RealPath(folders_.UpdateTempFolder + fileName, PathKind::File));
        if (!IsInUse(name)) {
            Update.Files[name] = source;
            Update.Done.push_back("Copied file " + folders_.AppPath + fileName);
            return;
        }
        Update.Files[name + "$"] = source;
        Defer(name + "$");
        Update.Done.push_back(fileName + " file was added for later rename.");
    }

    void Delete(const UpdateListEntry& entry) {
        const std::string name = RealName(entry.Param);
        if (IsThere(name)) {
            Update.Files[name].clear();
            Update.Done.push_back("File deleted " + folders_.AppPath + entry.FileName);
            return;
        }
        // Loaders have always got a line without a name here.
        Defer(entry.FileName + "*");
        Update.Done.push_back(entry.FileName + " file was added for later delete.");
    }

    void Defer(const std::string& line) {
        if (std::ranges::find(Update.Deferred, line) == Update.Deferred.end())
            Update.Deferred.push_back(line);
    }

    bool Ask(const std::string& question, const UpdateListEntry* next) {
        const BoxAnswer answer =
            dialogs_.MessageBox(question, {}, BoxIcon::Question, BoxButtons::YesNo);
        log_.Write("Executed command MSGYN with param: " + question);
        if (answer == BoxAnswer::Yes)
            return true;
        if (next != nullptr)
            log_.Write("Answer was No, index was increased. Command " + next->Command +
                       ": " + next->Param + " will not be executed");
        return false;
    }

    const ProgramFolders& folders_;
    Dialogs& dialogs_;
    const std::function<void(const std::string&)>& showText_;
    UpdateLog& log_;
};

// From the second letter on.
std::string WithoutFirst(const std::string& version) {
    size_t at = std::min<size_t>(1, version.size());
    while (at < version.size() && (static_cast<unsigned char>(version[at]) >> 6) == 2)
        ++at; // inside a letter of several bytes
    return version.substr(at);
}

std::vector<std::string> NamesTouchedBy(const MinorUpdate& update) {
    // With what a save that is killed leaves of the two files that are written here.
    std::vector<std::string> names{"registry.ini", "registry.inix"};
    for (const auto& [name, source] : update.Files) {
        names.push_back(name);
        if (name.ends_with('$')) // what the loader will replace
            names.push_back(name.substr(0, name.size() - 1));
    }
    if (!update.Deferred.empty())
        names.insert(names.end(), {LoaderListName, std::string(LoaderListName) + "x"});
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

// The file whose rights a new one gets: the one that it replaces, now or by the loader.
fs::path Replaced(const fs::path& place) {
    const std::string text = place.string();
    return text.ends_with('$') ? fs::path(text.substr(0, text.size() - 1)) : place;
}

// What is new may be run by whom the archive says, and changed by nobody else.
mode_t RightsOf(const std::string& source, const fs::path& place) {
    const auto old = StatusOf(Replaced(place));
    if (IsFile(old))
        return old->st_mode;
    const auto given = StatusOf(PathAsItStands(source));
    return (given ? given->st_mode & RightsOfNewFiles : 0) | S_IRUSR | S_IWUSR;
}

void Place(const std::string& source, const fs::path& place, const fs::path& scratch) {
    CopyFile(PathAsItStands(source), scratch, RightsOf(source, place));
    if (std::rename(scratch.c_str(), place.c_str()) != 0)
        ThrowSystemError(errno, "replacing", TextOfPath(place));
}

// One that the list copied and deleted again was never there.
void Remove(const fs::path& place) {
    if (::unlink(place.c_str()) != 0 && errno != ENOENT)
        ThrowSystemError(errno, "deleting", TextOfPath(place));
}

} // namespace

MinorUpdate PlanMinorUpdate(const std::vector<UpdateListEntry>& entries,
                            const ProgramFolders& folders, Dialogs& dialogs,
                            const std::function<void(const std::string&)>& showText,
                            UpdateLog& log) {
    Planner planner(folders, dialogs, showText, log);
    for (size_t i = 0; i < entries.size(); ++i)
        i += planner.Take(entries[i], i + 1 < entries.size() ? &entries[i + 1] : nullptr);
    return std::move(planner.Update);
}

std::optional<KeptFiles> CarryOut(const MinorUpdate& update,
                                  const std::string& updateVersion,
                                  const ProgramFolders& folders, Registry& registry,
                                  UpdateLog& log) {
    const fs::path folder = PathAsItStands(folders.AppPath);
    KeptFiles kept(folders.AppPath);
    if (!kept.SetAside().empty())
        log.Write(kept.SetAside());
    kept.Keep(NamesTouchedBy(update));
    try {
        for (const auto& [name, source] : update.Files) {
            if (source.empty())
                Remove(folder / name);
            else
                Place(source, folder / name, PathAsItStands(kept.Scratch()));
        }
        for (const std::string& line : update.Done)
            log.Write(line);
        const std::string version = WithoutFirst(updateVersion);
        registry.WriteText(ProgramKey, "Version", version);
        log.Write(std::string("Registry key HKEY_LOCAL_MACHINE\\") + ProgramKey +
                  "\\Version set to " + version);
        if (update.Deferred.empty()) {
            kept.LetGo();
            return std::nullopt;
        }
        log.Write("Files are marked for deletion/rename. Writing them down for the "
                  "loader");
        StagedFile list(folders.AppPath + LoaderListName);
        for (const std::string& line : update.Deferred)
            list.WriteText(line + "\r\n");
        list.Commit();
        return kept;
    } catch (...) {
        kept.PutBack();
        log.Write("The files are the old ones");
        throw;
    }
}

} // namespace vardenix
