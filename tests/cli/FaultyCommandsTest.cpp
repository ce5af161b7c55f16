// Every command that writes, with each of its calls to the system failing once, and with
// the program killed at each that changes the disk. The commands run in a child of the
// test, which has the shim between itself and the system.
#include "cli/CliTheater.h"
#include "cli/Commands.h"
#include "platform/RuntimeError.h"
#include "services/PictureMaker.h"
#include "support/FaultShim.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>; // by their names in the folder

constexpr int Killed = 99;
constexpr int RunTimeError = 3;

int RunHere(const std::vector<std::string>& arguments) {
    CommandLine line("vardenix-cli", "", "", "");
    Command all = line.Root();
    for (const auto add : {AddCheck, AddGet, AddSet, AddFill, AddSaveAs, AddElevation,
                           AddPreview, AddRebuild, AddRebuildElevation})
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

class FaultyCommands : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        calls_ = static_cast<int*>(mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE,
                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0));
        WriteFinest();
        folder_.Write("report.txt", "an older report\r\n");
        old_ = OnDiskNow();
    }
    void TearDown() override { munmap(calls_, sizeof(int)); }

    // A L0 pair and an .elv file, four heights to a post.
    void WriteFinest() {
        const PairBytes pair = ScatteredPair(MadeLevel::Random(128, 3));
        folder_.Write("my theater/terrain/theater.L0", pair.L);
        folder_.Write("my theater/terrain/theater.O0", pair.O);
        folder_.Write("my theater/terrain/theater.elv",
                      std::string(size_t{128} * 128 * 2, '\1'));
    }
    // The other levels, small pictures, and containers of before.
    void WriteRebuilt() {
        for (const int level : {0, 1, 3}) {
            const int width = level < 2 ? 32 << (2 - level) : 32 >> (level - 2);
            const PairBytes pair = ScatteredPair(MadeLevel::Random(width, 8));
            folder_.Write("my theater/terrain/theater.L" + std::to_string(level), pair.L);
            folder_.Write("my theater/terrain/theater.O" + std::to_string(level), pair.O);
        }
        for (const char* tile : {"sea", "seaN", "shore", "shoreN", "land", "landN"})
            folder_.Write("my theater/texture/texture/" + std::string(tile) + ".dds",
                          DdsHeader(8, 8, {"DXT1"}) + std::string(32, '\7'));
        for (const char* container : {"fartiles.dds", "fartilesN.dds"})
            folder_.Write("my theater/texture/" + std::string(container), "old");
        old_ = OnDiskNow();
    }
    // The exit code, -1 for a crash.
    int RunWith(const char* mode, int at, std::vector<std::string> arguments) {
        if (std::count(arguments.begin(), arguments.end(), "--dds") +
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
    Files OnDiskNow() const {
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
    void PutBack(const Files& files) const {
        const Files now = OnDiskNow();
        for (const auto& [name, bytes] : now)
            if (!files.contains(name))
                fs::remove(folder_.File(name));
        for (const auto& [name, bytes] : files)
            if (!now.contains(name) || now.at(name) != bytes)
                folder_.Write(name, bytes);
    }

    // `reading` is a command that opens what was written. Where `failing` is not 1, only
    // each so manieth call fails; a kill and a full disk come at every one.
    void TryEveryCall(const std::vector<std::string>& writing,
                      const std::vector<std::string>& reading, int failing = 1) {
        ASSERT_EQ(RunWith("none", 0, writing), done_);
        const Files done = OnDiskNow();
        ASSERT_NE(done, old_);
        TryEveryCall("fail", writing, reading, done, failing);
        for (const char* mode : {"full", "kill"})
            TryEveryCall(mode, writing, reading, done, 1);
    }
    void TryEveryCall(const char* mode, const std::vector<std::string>& writing,
                      const std::vector<std::string>& reading, const Files& done,
                      int step) {
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
    // What a kill leaves beside a file that no theater has stays until that file is
    // written the next time.
    Files Found(bool killed) const {
        Files found = OnDiskNow();
        if (killed)
            for (const char* name : {"report.txtx", "heights.bmpx"})
                found.erase(name);
        return found;
    }
    std::string Difference(const Files& found) const {
        std::string names;
        for (const auto& [name, bytes] : found)
            if (!old_.contains(name) || old_.at(name) != bytes)
                names += name + ": " + std::to_string(bytes.size()) + " bytes\n";
        for (const auto& [name, bytes] : old_)
            if (!found.contains(name))
                names += name + " is gone\n";
        return names;
    }

    bool readsBack_ = false; // it reads what it has written, and may fail then
    int done_ = 0;           // what the writing command ends with
    int* calls_ = nullptr;   // that the last command made
    Files old_;
};

TEST_F(FaultyCommands, SetLosesNothing) {
    TryEveryCall({"set", "3", "5", "--elevation", "77"}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, FillLosesNothing) {
    TryEveryCall({"fill", "1", "2", "20", "30", "--tile", "1"}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, SaveAsLosesNothing) {
    // A pair is there already, so that there is something to lose.
    const PairBytes pair = ScatteredPair(MadeLevel::Random(16, 4));
    folder_.Write("copy/theater.L2", pair.L);
    folder_.Write("copy/theater.O2", pair.O);
    old_ = OnDiskNow();
    const std::string copy = folder_.File("copy/theater.L2");
    const std::string theater = folder_.File("my theater/");
    TryEveryCall({"save-as", copy, "--theater", theater},
                 {"get", "0", "0", "--l2", copy, "--bin", theater + "texture/Texture.bin",
                  "--map", theater + "terrain/theater.map", "--dds",
                  theater + "texture/texture"});
}

TEST_F(FaultyCommands, ElevationSetLosesNothingOfAL0File) {
    const std::string file = Terrain("theater.L0");
    TryEveryCall({"elevation", "set", file, "40", "50", "77"},
                 {"elevation", "get", file, "0", "0"});
}

TEST_F(FaultyCommands, ElevationSetLosesNothingOfAnElvFile) {
    const std::string file = Terrain("theater.elv");
    TryEveryCall({"elevation", "set", file, "40", "50", "77"},
                 {"elevation", "get", file, "0", "0"});
}

TEST_F(FaultyCommands, CheckLosesNothingOfAReport) {
    done_ = 1; // two posts have a tile that is not in the catalogue
    level_.At(3, 3).Tile = 700;
    WriteLevel();
    old_ = OnDiskNow();
    TryEveryCall({"check", "--report", folder_.File("report.txt")}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, PreviewLosesNothingOfAnOlderPicture) {
    folder_.Write("heights.bmp", "an older picture");
    old_ = OnDiskNow();
    TryEveryCall({"preview", folder_.File("heights.bmp")}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, RebuildLosesNothing) {
    WriteRebuilt();
    TryEveryCall({"rebuild", "--far", "--far-size", "8"}, {"get", "0", "0"}, 17);
}

TEST_F(FaultyCommands, RebuildElevationLosesNothing) {
    WriteRebuilt();
    readsBack_ = true;
    TryEveryCall({"rebuild-elevation", Terrain("theater.elv"), "--method", "mean"},
                 {"get", "0", "0"}, 17);
}

} // namespace
} // namespace vardenix::tests
