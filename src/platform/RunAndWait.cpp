#include "platform/RunAndWait.h"

#include "platform/RuntimeError.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace vardenix {

namespace {

// No terminal for the program: neither input nor output.
class QuietFiles {
public:
    QuietFiles() {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY,
                                           0);
        for (const int output : {STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions_, output, "/dev/null", O_WRONLY,
                                               0);
    }
    QuietFiles(const QuietFiles&) = delete;
    QuietFiles& operator=(const QuietFiles&) = delete;
    ~QuietFiles() { ::posix_spawn_file_actions_destroy(&actions_); }

    const posix_spawn_file_actions_t* Actions() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

} // namespace

int RunAndWait(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const QuietFiles files;
    pid_t child = 0;
    const int failure = ::posix_spawnp(&child, pointers[0], files.Actions(), nullptr,
                                       pointers.data(), environ);
    if (failure == ENOENT || failure == ENOTDIR)
        return -1;
    if (failure != 0)
        ThrowSystemError(failure, "starting", arguments.front());
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace vardenix
