#include "files/OwnFolders.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "texts/RuntimeError.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr mode_t ForItsUserAlone = 0700;
constexpr mode_t RightsOfOthers = 077;
// Somebody who wants to be in the way can take a name or two.
constexpr int TemporaryNames = 10;

std::string AbsoluteOf(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return value != nullptr && value[0] == '/' ? value : "";
}

// As the system's list of users has it, for a session without HOME.
std::string ListedHome() {
    std::array<char, 16384> room{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, room.data(), room.size(), &found) != 0 ||
        found == nullptr || found->pw_dir == nullptr || found->pw_dir[0] != '/')
        return {};
    return found->pw_dir;
}

// False when something is there already.
bool MakeFolder(const fs::path& folder) {
    if (::mkdir(folder.c_str(), ForItsUserAlone) == 0)
        return true;
    if (errno != EEXIST)
        ThrowSystemError(errno, "making the folder", TextOfPath(folder));
    return false;
}

// Whether the folder is this user's alone, made now where nothing is there.
bool TakeForOneself(const fs::path& folder) {
    MakeFolder(folder);
    const auto status = StatusOfLink(folder);
    if (!IsFolder(status) || status->st_uid != ::geteuid())
        return false;
    return (status->st_mode & RightsOfOthers) == 0 ||
           ::chmod(folder.c_str(), ForItsUserAlone) == 0;
}

std::string TemporaryFolder() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    return error ? "/tmp" : TextOfPath(folder);
}

} // namespace

std::string ProgramFolder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? TextOfPath(fs::current_path()) : TextOfPath(program.parent_path());
}

std::string ProgramFile() {
    constexpr std::string_view replaced = " (deleted)"; // as the system shows it
    std::error_code error;
    std::string program = TextOfPath(fs::read_symlink("/proc/self/exe", error));
    if (program.ends_with(replaced) && !fs::exists(program, error))
        program.resize(program.size() - replaced.size());
    return program;
}

std::string OwnFilesFolder(const std::string& programFolder) {
    // What the system's packages hold is theirs, also for those who could write there.
    const fs::path folder = PathAsItStands(programFolder);
    if (::access((folder / "by-package").c_str(), F_OK) != 0 &&
        ::access(folder.c_str(), W_OK) == 0)
        return programFolder;
    return UsersDataFolder();
}

std::string UsersDataFolder() {
    const std::string data = AbsoluteOf("XDG_DATA_HOME");
    if (!data.empty())
        return data + "/vardenix";
    std::string home = AbsoluteOf("HOME");
    if (home.empty())
        home = ListedHome();
    return home.empty() ? home : home + "/.local/share/vardenix";
}

void MakeOwnFilesFolder(const std::string& folder) {
    if (folder.empty())
        throw RuntimeError(ErrorNumber::PathNotFound,
                           "there is no folder for the program's own files: its own "
                           "folder is read-only and HOME names none");
    // A link to another disk is the user's own.
    if (!FolderExists(folder))
        MakeScratchFolder(folder);
}

std::string OwnTemporaryFolder() {
    const std::string base =
        TemporaryFolder() + "/vardenix-" + std::to_string(::geteuid());
    for (int i = 0; i < TemporaryNames; ++i) {
        std::string name = i == 0 ? base : base + "-" + std::to_string(i);
        if (TakeForOneself(name))
            return name;
    }
    throw RuntimeError(ErrorNumber::PermissionDenied,
                       base + " and the names behind it belong to somebody else");
}

void KeepOwnTemporaryFolder(const std::string& folder) {
    if (!TakeForOneself(PathAsItStands(folder)))
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           TextOfPath(PathAsItStands(folder)) +
                               " belongs to somebody else");
}

void MakeScratchFolder(const std::string& folder) {
    const fs::path path = PathAsItStands(folder);
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error)
        ThrowSystemError(error.value(), "making the folder",
                         TextOfPath(path.parent_path()));
    if (!MakeFolder(path) && !IsFolder(StatusOfLink(path)))
        ThrowSystemError(ENOTDIR, "making the folder", TextOfPath(path));
}

} // namespace vardenix
