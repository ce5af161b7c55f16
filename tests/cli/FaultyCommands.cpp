#include "cli/FaultyCommands.h"

#include "cli/Commands.h"
#include "support/FaultShim.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {

namespace fs = std::filesystem;

namespace {

constexpr int Killed = 99;
constexpr int RunTimeError = 3;

int RunHere(const std::vector<std::string>& arguments) {
    CommandLine line("vardenix-cli", "", "", "");
    Command all = line.Root();
    for (const auto add : {AddCheck, AddGet, AddSet, AddFill, AddSaveAs, AddElevation,
                           AddPreview, AddMap, AddBin, AddFeatures, AddSearch, AddRegion,
                           AddDerived, AddRebuild, AddRebuildElevation})
        add(all);
    try {
        const ParsedLine parsed = line.Parse(arguments);
        CommandContext context;
        return parsed.Run(context);
    } catch (const UsageError&) {
        return 2;
    } catch (const RuntimeError&) {
        return RunTimeError;
    } catch (const std::bad_alloc&) {
        return RunTimeError;
    }
}

} // namespace

void FaultyCommands::SetUp() {
    CliTheater::SetUp();
    calls_ = static_cast<int*>(mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE,
                                    MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    WriteFinest();
    folder_.Write("report.txt", "an older report\r\n");
    old_ = OnDiskNow();
}

void FaultyCommands::TearDown() { munmap(calls_, sizeof(int)); }

// A L0 pair and an .elv file, four heights to a post.
void FaultyCommands::WriteFinest() {
    const PairBytes pair = ScatteredPair(MadeLevel::Random(128, 3));
    folder_.Write("my theater/terrain/theater.L0", pair.L);
    folder_.Write("my theater/terrain/theater.O0", pair.O);
    folder_.Write("my theater/terrain/theater.elv",
                  std::string(size_t{128} * 128 * 2, '\1'));
}

// The exit code, -1 for a crash.
int FaultyCommands::RunWith(const char* mode, int at,
                            std::vector<std::string> arguments) {
    const bool aboutATheater = arguments[0] != "features";
    if (aboutATheater &&
        std::count(arguments.begin(), arguments.end(), "--dds") +
                std::count(arguments.begin(), arguments.end(), "--theater") ==
            0)
        arguments.insert(arguments.end(), {"--theater", folder_.File("my theater")});
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        ArmFaults(mode, at);
        const int code = RunHere(arguments);
        *calls_ = FaultCalls();
        _exit(code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Files FaultyCommands::OnDiskNow() const {
    Files files;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path()))
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), folder_.Path())] =
                Slurp(entry.path().string());
    // The far tiles are whole without it, and it tells the time.
    files.erase("my theater/texture/fartiles.index");
    // This one tells it as well.
    for (char& c : files["report.txt"])
        c = c >= '0' && c <= '9' ? '#' : c;
    return files;
}

void FaultyCommands::PutBack(const Files& files) const {
    const Files now = OnDiskNow();
    for (const auto& [name, bytes] : now)
        if (!files.contains(name))
            fs::remove(folder_.File(name));
    for (const auto& [name, bytes] : files)
        if (!now.contains(name) || now.at(name) != bytes)
            folder_.Write(name, bytes);
}

void FaultyCommands::TryEveryCall(const std::vector<std::string>& writing,
                                  const std::vector<std::string>& reading, int failing) {
    ASSERT_EQ(RunWith("none", 0, writing), done_);
    const Files done = OnDiskNow();
    ASSERT_NE(done, old_);
    TryEveryCall("fail", writing, reading, done, failing);
    for (const char* mode : {"full", "kill"})
        TryEveryCall(mode, writing, reading, done, 1);
}

void FaultyCommands::TryEveryCall(const char* mode,
                                  const std::vector<std::string>& writing,
                                  const std::vector<std::string>& reading,
                                  const Files& done, int step) {
    int saved = 0;
    for (int at = 1;; at += step) {
        SCOPED_TRACE(std::string(mode) + " at call " + std::to_string(at));
        PutBack(old_);
        const int code = RunWith(mode, at, writing);
        const int calls = *calls_;
        ASSERT_TRUE(code == done_ || code == RunTimeError || code == Killed) << code;
        ASSERT_EQ(RunWith("none", 0, reading), 0);
        const Files found = Found(code == Killed);
        // All of the old or all of the new, and nothing lies about.
        ASSERT_TRUE(found == done || found == old_) << Difference(found);
        ASSERT_TRUE(code != done_ || found == done) << "done, but nothing is written";
        // One refusal is told of before anything has changed, or is got over.
        ASSERT_TRUE(std::string_view(mode) != "fail" || code != RunTimeError ||
                    found == old_ || readsBack_)
            << "failed, but all is written";
        saved += code == done_ ? 1 : 0;
        if (code == done_ && calls < at)
            break;
        ASSERT_LT(at, 2000);
    }
    EXPECT_GE(saved, 1);
}

Files FaultyCommands::Found(bool killed) const {
    Files found = OnDiskNow();
    if (killed)
        for (const std::string& name : leftovers_)
            found.erase(name);
    return found;
}

std::string FaultyCommands::Difference(const Files& found) const {
    std::string names;
    for (const auto& [name, bytes] : found)
        if (!old_.contains(name) || old_.at(name) != bytes)
            names += name + ": " + std::to_string(bytes.size()) + " bytes\n";
    for (const auto& [name, bytes] : old_)
        if (!found.contains(name))
            names += name + " is gone\n";
    return names;
}

} // namespace vardenix::tests
