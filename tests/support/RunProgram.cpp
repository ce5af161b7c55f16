#include "support/RunProgram.h"

#include "support/TestFolder.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {

ProgramResult RunProgram(const std::vector<std::string>& arguments) {
    const TestFolder folder;
    const std::string output = folder.Write("out", "");
    const std::string errors = folder.Write("err", "");
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
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(open(output.c_str(), O_WRONLY), STDOUT_FILENO);
        dup2(open(errors.c_str(), O_WRONLY), STDERR_FILENO);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(output), Slurp(errors)};
}

} // namespace vardenix::tests
