#include "platform/Processes.h"

#include "platform/RuntimeError.h"

#include <cerrno>
#include <chrono>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace vardenix {

namespace {

// Runs `arguments` detached: a shell between us and the program ends at once, so that
// nobody has to wait for the program and it outlives us.
void Spawn(std::vector<std::string> arguments, const std::string& shown) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    const int failure =
        ::posix_spawnp(&child, pointers[0], nullptr, nullptr, pointers.data(), environ);
    if (failure != 0)
        ThrowSystemError(failure, "starting", shown);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw RuntimeError(ErrorNumber::FileNotFound, "starting " + shown);
}

} // namespace

void SystemProcesses::Start(const std::string& commandLine) {
    static const std::string detached = "(eval \"$1\") </dev/null >/dev/null 2>&1 &";
    Spawn({"/bin/sh", "-c", detached, "sh", commandLine}, commandLine);
}

void SystemProcesses::Open(const std::string& address) {
    static const std::string opener = "type xdg-open >/dev/null || exit 1; xdg-open "
                                      "\"$1\" </dev/null >/dev/null 2>&1 &";
    Spawn({"/bin/sh", "-c", opener, "sh", address}, address);
}

void SystemProcesses::Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace vardenix
