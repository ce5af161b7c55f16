#include "platform/RunAndWait.h"

#include "files/SystemFile.h"
#include "platform/RunAndRead.h"
#include "texts/RuntimeError.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace vardenix {

namespace {

// No terminal for the program: neither input nor output, unless somebody reads it.
class QuietFiles {
public:
    explicit QuietFiles(int output = -1) {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY,
                                           0);
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_WRONLY,
                                               0);
        if (output >= 0)
            ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    }
    QuietFiles(const QuietFiles&) = delete;
    QuietFiles& operator=(const QuietFiles&) = delete;
    ~QuietFiles() { ::posix_spawn_file_actions_destroy(&actions_); }

    const posix_spawn_file_actions_t* Actions() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

// The number of the program that was started; 0 when there is none of that name.
pid_t Begin(std::vector<std::string>& arguments, const QuietFiles& files) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    const int failure = ::posix_spawnp(&child, pointers[0], files.Actions(), nullptr,
                                       pointers.data(), environ);
    if (failure == ENOENT || failure == ENOTDIR)
        return 0;
    if (failure != 0)
        ThrowSystemError(failure, "starting", arguments.front());
    return child;
}

constexpr int AskEvery = 50; // ms

// Until there is something to read, or the end of it. False when nobody wants it any
// more.
bool WaitForOutput(const SystemFile& reading, const std::function<bool()>& goOn) {
    if (!goOn)
        return true;
    struct pollfd waited {
        reading.Handle(), POLLIN, 0
    };
    while (::poll(&waited, 1, AskEvery) == 0)
        if (!goOn())
            return false;
    return true;
}

int ExitCodeOf(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

int RunAndWait(std::vector<std::string> arguments) {
    const pid_t child = Begin(arguments, QuietFiles());
    return child == 0 ? -1 : ExitCodeOf(child);
}

ProgramOutput RunAndRead(std::vector<std::string> arguments, size_t most,
                         const std::function<bool()>& goOn) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        ThrowSystemError(errno, "starting", arguments.front());
    const SystemFile reading(ends[0]);
    SystemFile writing(ends[1]);
    const pid_t child = Begin(arguments, QuietFiles(writing.Handle()));
    writing.Close();
    ProgramOutput output;
    if (child == 0)
        return output;
    std::array<char, 4096> room{};
    ssize_t count = 0;
    for (;;) {
        if (!WaitForOutput(reading, goOn)) {
            output.Stopped = true;
            ::kill(child, SIGKILL);
            break;
        }
        count = ::read(reading.Handle(), room.data(), room.size());
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            break;
        if (count < 0)
            continue;
        if (output.Text.size() + static_cast<size_t>(count) > most) {
            output.Whole = false;
            ::kill(child, SIGKILL);
            break;
        }
        output.Text.append(room.data(), static_cast<size_t>(count));
    }
    output.ExitCode = ExitCodeOf(child);
    return output;
}

} // namespace vardenix
