#include "support/RunProgram.h"

#include "support/TestFolder.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {

namespace {

pid_t Start(const std::vector<std::string>& arguments,
            const std::vector<std::string>& environment, const std::string& output,
            const std::string& errors) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("QT_QPA_PLATFORM");
        for (const std::string& variable : environment)
            putenv(const_cast<char*>(variable.c_str()));
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(open(output.c_str(), O_WRONLY), STDOUT_FILENO);
        dup2(open(errors.c_str(), O_WRONLY), STDERR_FILENO);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    return child;
}

int StatusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

ProgramResult RunProgram(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment) {
    const TestFolder folder;
    const std::string output = folder.Write("out", "");
    const std::string errors = folder.Write("err", "");
    const int status = StatusOf(Start(arguments, environment, output, errors));
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(output), Slurp(errors)};
}

bool RunAndKill(const std::vector<std::string>& arguments,
                std::chrono::microseconds after) {
    const pid_t child = Start(arguments, {}, "/dev/null", "/dev/null");
    // Readable once the program has ended.
    pollfd ended{static_cast<int>(syscall(SYS_pidfd_open, child, 0)), POLLIN, 0};
    const timespec time{after.count() / 1000000, after.count() % 1000000 * 1000};
    ppoll(&ended, 1, &time, nullptr);
    kill(child, SIGKILL);
    const int status = StatusOf(child);
    close(ended.fd);
    return WIFSIGNALED(status);
}

} // namespace vardenix::tests
