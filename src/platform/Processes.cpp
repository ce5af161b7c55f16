#include "platform/Processes.h"

#include "files/FileNames.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace vardenix {

namespace {

// Between quotes, two of them are one that belongs to the word.
std::vector<std::string> WordsOf(const std::string& commandLine) {
    std::vector<std::string> words;
    bool quoted = false;
    bool inWord = false;
    for (size_t i = 0; i < commandLine.size(); ++i) {
        const char letter = commandLine[i];
        if (letter == ' ' && !quoted) {
            inWord = false;
            continue;
        }
        if (!inWord)
            words.emplace_back();
        inWord = true;
        if (letter != '"') {
            words.back() += letter;
        } else if (quoted && commandLine.substr(i + 1, 1) == "\"") {
            words.back() += letter;
            ++i;
        } else {
            quoted = !quoted;
        }
    }
    return words;
}

// What a program is started with: no file or lock of ours, no signal that we ignore, a
// session of its own, so that it outlives us, and nobody to talk to.
class Detached {
public:
    Detached() {
        posix_spawn_file_actions_init(&files);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID |
                                                  POSIX_SPAWN_SETSIGMASK |
                                                  POSIX_SPAWN_SETSIGDEF);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
    }
    Detached(const Detached&) = delete;
    Detached& operator=(const Detached&) = delete;
    ~Detached() {
        posix_spawn_file_actions_destroy(&files);
        posix_spawnattr_destroy(&attributes);
    }

    posix_spawn_file_actions_t files{};
    posix_spawnattr_t attributes{};
};

// A command line need not be a path that the system can look at.
bool IsFileName(const std::string& commandLine) {
    try {
        return FileExists(commandLine);
    } catch (const RuntimeError&) {
        return false;
    }
}

bool HasSlash(const std::string& text) {
    return text.find_first_of("/\\") != std::string::npos;
}

} // namespace

std::string QuotedWord(const std::string& text) {
    return "\"" + ReplaceAll(text, "\"", "\"\"") + "\"";
}

void SystemProcesses::Spawn(const std::vector<std::string>& words,
                            const std::string& shown) {
    // Those that have ended meanwhile leave the system's table.
    std::erase_if(started_,
                  [](int program) { return ::waitpid(program, nullptr, WNOHANG) != 0; });
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words)
        pointers.push_back(const_cast<char*>(word.c_str()));
    pointers.push_back(nullptr);
    const Detached detached;
    pid_t program = 0;
    const int failure = ::posix_spawnp(&program, pointers[0], &detached.files,
                                       &detached.attributes, pointers.data(), environ);
    if (failure != 0)
        ThrowSystemError(failure, "starting", shown);
    started_.push_back(program);
}

void SystemProcesses::Start(const std::string& commandLine) {
    std::vector<std::string> words = IsFileName(commandLine)
                                         ? std::vector<std::string>{commandLine}
                                         : WordsOf(commandLine);
    if (words.empty())
        throw RuntimeError(ErrorNumber::FileNotFound,
                           "starting a program without a name");
    if (HasSlash(words[0]))
        words[0] = RealPath(words[0]).string();
    Spawn(words, commandLine);
}

void SystemProcesses::Open(const std::string& address) {
    Spawn({"xdg-open", address}, address);
}

void SystemProcesses::Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace vardenix
