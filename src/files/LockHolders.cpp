#include "files/LockHolders.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace vardenix {

namespace {

// A line of the system's list: "1: FLOCK  ADVISORY  WRITE 123 fd:01:4567 0 EOF", with
// "->" behind the number for those that wait.
struct ListedLock {
    pid_t Process = 0;
    ino_t Inode = 0;
    bool Writes = false;
};

std::optional<ListedLock> LockOfLine(const std::string& line) {
    std::istringstream words(line);
    std::string number;
    std::string kind;
    std::string advisory;
    std::string way;
    std::string file;
    ListedLock lock;
    if (!(words >> number >> kind >> advisory >> way >> lock.Process >> file) ||
        kind != "FLOCK" || file.rfind(':') == std::string::npos)
        return {};
    std::istringstream(file.substr(file.rfind(':') + 1)) >> lock.Inode;
    lock.Writes = way == "WRITE";
    return lock;
}

std::string NameOfUser(uid_t user) {
    std::array<char, 4096> texts{};
    struct passwd entry {};
    struct passwd* found = nullptr;
    if (::getpwuid_r(user, &entry, texts.data(), texts.size(), &found) == 0 &&
        found != nullptr)
        return found->pw_name;
    return "user " + std::to_string(user);
}

// By its effective user; none for a process that is not seen from here.
std::optional<uid_t> UserOfProcess(const std::string& folder) {
    std::ifstream status(folder + "/status");
    uid_t real = 0;
    uid_t effective = 0;
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("Uid:") &&
            std::istringstream(line.substr(4)) >> real >> effective)
            return effective;
    return {};
}

std::optional<LockHolder> HolderOf(const ListedLock& lock) {
    const std::string folder = "/proc/" + std::to_string(lock.Process);
    const auto user = UserOfProcess(folder);
    if (lock.Process <= 0 || !user)
        return {};
    LockHolder holder{lock.Process, {}, *user, NameOfUser(*user), lock.Writes};
    std::ifstream name(folder + "/comm");
    std::getline(name, holder.Program);
    return holder;
}

} // namespace

std::vector<LockHolder> HoldersOf(int handle) {
    std::vector<LockHolder> holders;
    struct stat status {};
    if (::fstat(handle, &status) != 0)
        return holders;
    std::ifstream list("/proc/locks");
    for (std::string line; std::getline(list, line);) {
        const auto lock = LockOfLine(line);
        // Some file systems have another device here than their files tell.
        if (!lock || lock->Inode != status.st_ino || lock->Process == ::getpid())
            continue;
        if (const auto holder = HolderOf(*lock))
            holders.push_back(*holder);
    }
    return holders;
}

std::string TextOfHolders(const std::vector<LockHolder>& holders) {
    if (holders.empty())
        return "another program";
    const LockHolder& first = holders.front();
    std::string text = (first.Program.empty() ? "a program" : first.Program) +
                       " (process " + std::to_string(first.Process) + " of " +
                       first.User + ")";
    if (holders.size() > 1)
        text += " and " + std::to_string(holders.size() - 1) + " more";
    return text;
}

} // namespace vardenix
