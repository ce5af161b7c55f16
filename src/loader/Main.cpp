// Loader: finishes an update once the program that began it has ended, and starts the
// program again, with the arguments that it was given itself.
#include "files/OwnFolders.h"
#include "loader/InterruptedUpdate.h"
#include "loader/LoaderList.h"
#include "platform/Processes.h"
#include "texts/RuntimeError.h"

#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

constexpr int LookAgain = 20; // milliseconds

// Whether a process runs a program of the folder, also one that has been replaced since.
bool IsProgramOf(const std::string& folder, pid_t process) {
    std::error_code error;
    const fs::path program =
        fs::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
    return !error && program.parent_path() == fs::path(folder);
}

// Whoever started us is our parent for as long as it runs. When it has ended before we
// could look, or was never the program, there is nobody to wait for.
void WaitForProgram(Processes& processes, const std::string& folder) {
    const pid_t parent = ::getppid();
    if (!IsProgramOf(folder, parent))
        return;
    while (::getppid() == parent)
        processes.Sleep(LookAgain);
}

int Load(int count, char** arguments) {
    SystemProcesses processes;
    const std::string folder = ProgramFolder();
    WaitForProgram(processes, folder);
    if (FinishUpdate(folder))
        LeaveNotice();
    std::string line = QuotedWord(folder + "/vardenix");
    for (int i = 1; i < count; ++i)
        line += " " + QuotedWord(arguments[i]);
    processes.Start(line);
    return 0;
}

} // namespace
} // namespace vardenix

int main(int count, char** arguments) {
    try {
        return vardenix::Load(count, arguments);
    } catch (const std::exception&) {
        return 3; // there is no program to start, and nobody to tell
    }
}
