// What lies about beside a theater, what other programs do to it, and what the system
// refuses.
#include "cli/CliTheater.h"
#include "support/FaultShimLink.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class Safety : public CliTheater {
protected:
    static std::string Joined(const std::vector<std::string>& words) {
        std::string line;
        for (const std::string& word : words)
            line += " '" + word + "'";
        return line;
    }
    // vardenix-cli on the theater, with `before` as a line of the shell in front of it.
    ProgramResult RunBehind(const std::string& before,
                            std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), VARDENIX_CLI);
        arguments.insert(arguments.end(), {"--theater", folder_.File("my theater")});
        return RunProgram({"/bin/sh", "-c", before + "; exec" + Joined(arguments)});
    }
    // A file of that many bytes that takes no room.
    static void MakeGiant(const std::string& path, uintmax_t bytes) {
        if (!fs::exists(path))
            Spill(path, "");
        fs::resize_file(path, bytes);
    }
    size_t FilesOfTerrain() const {
        return static_cast<size_t>(
            std::distance(fs::directory_iterator(Terrain("")), {}));
    }
    std::vector<std::string> TouchWhenStaged(const FaultShimLink& shim) const {
        std::vector<std::string> environment = shim.Environment("touch", 1);
        environment.push_back("FAULT_FILE=" + Terrain("theater.L2x"));
        environment.push_back("FAULT_TOUCHED=" + Terrain("theater.L2"));
        return environment;
    }
};

constexpr uintmax_t ThreeGiB = uintmax_t{3} << 30;
constexpr const char* LittleMemory = "ulimit -v 1000000";

TEST_F(Safety, AStrayFileThatLooksStagedCostsNothing) {
    const std::string before = PairOnDisk();
    for (const char* name : {"theater.O2x", "theater.L2x", "vardenix.journal"}) {
        folder_.Write(std::string("my theater/terrain/") + name, "");
        EXPECT_EQ(RunOn({"info"}).ExitCode, 0) << name;
        EXPECT_EQ(PairOnDisk(), before) << name;
        EXPECT_EQ(FilesOfTerrain(), 3U) << name;
    }
}

TEST_F(Safety, AFileThatAnotherProgramHasChangedIsLeftAloneUnlessToldOtherwise) {
    const FaultShimLink shim(FAULT_SHIM);
    // A region of one post: tile 1.
    const std::string region =
        folder_.Write("one.exp", std::string("\1\0\0\0\1\0\0\0\1\0\0\0", 12));
    const std::string before = PairOnDisk();
    const std::string level = Slurp(Terrain("theater.L2"));
    const std::string offsets = Slurp(Terrain("theater.O2"));
    const std::string tile = std::to_string(OnDisk().At(2, 2).Tile);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"set", "1", "1", "--tile", "1"},
          {"search", "--cell", "0:tile=" + tile, "--set", "tile=1"},
          {"region", "import", region, "1", "1"}}) {
        SCOPED_TRACE(command[0]);
        const ProgramResult refused = RunOn(command, TouchWhenStaged(shim));
        EXPECT_EQ(refused.ExitCode, 3);
        EXPECT_NE(refused.Errors.find("changed by another program since it was opened"),
                  std::string::npos)
            << refused.Errors;
        EXPECT_EQ(PairOnDisk(), before);
        EXPECT_EQ(FilesOfTerrain(), 3U);
        std::vector<std::string> told = command;
        told.emplace_back("--overwrite");
        EXPECT_EQ(RunOn(told, TouchWhenStaged(shim)).ExitCode, 0);
        EXPECT_EQ(OnDisk().At(2, 2).Tile, 1);
        Spill(Terrain("theater.L2"), level);
        Spill(Terrain("theater.O2"), offsets);
    }
}

TEST_F(Safety, TheGroupIsKeptWhereTheOwnerCannotBe) {
    const bool superuser = geteuid() == 0;
    const uid_t user = superuser ? 12345 : geteuid();
    const gid_t group = superuser ? 54321 : getegid();
    ASSERT_EQ(chown(Terrain("theater.L2").c_str(), user, group), 0);
    ASSERT_EQ(chmod(Terrain("theater.L2").c_str(), 0660), 0);
    const FaultShimLink shim(FAULT_SHIM);
    EXPECT_EQ(
        RunOn({"set", "1", "1", "--tile", "1"}, shim.Environment("owner", 1)).ExitCode,
        0);
    struct stat status {};
    ASSERT_EQ(stat(Terrain("theater.L2").c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_uid, geteuid());
    EXPECT_EQ(status.st_mode & 07777, 0660U);
    EXPECT_EQ(OnDisk().At(2, 2).Tile, 1);
}

TEST_F(Safety, AReportIsWholeOrAsItWas) {
    level_.At(3, 3).Tile = 700;
    WriteLevel();
    const std::string report = folder_.Write("report.txt", "an older one\r\n");
    const FaultShimLink shim(FAULT_SHIM);
    EXPECT_EQ(RunOn({"check", "--report", report}, shim.Environment("full", 2)).ExitCode,
              3);
    EXPECT_EQ(Slurp(report), "an older one\r\n");
    EXPECT_EQ(RunOn({"check", "--report", report}).ExitCode, 1);
    EXPECT_EQ(RunOn({"check", "--report", report}).ExitCode, 1);
    const std::string text = Slurp(report);
    EXPECT_EQ(text.find("an older one\r\n"), 0U);
    const size_t first = text.find("X,Y\tTile Offset");
    EXPECT_NE(first, std::string::npos);
    EXPECT_NE(text.find("X,Y\tTile Offset", first + 1), std::string::npos);
}

TEST_F(Safety, AReportIsNoFileOfATheaterAndNoPipe) {
    level_.At(3, 3).Tile = 700;
    WriteLevel();
    folder_.Write("my theater/terrain/THEATER.elv", "heights");
    const std::string own = Terrain("report.txt");
    fs::create_symlink(Terrain("theater.L2"), own);
    const std::string before = PairOnDisk();
    for (const std::string& path :
         {Terrain("theater.L2"), Terrain("THEATER.O2"), Terrain("theater.L5"), own,
          Terrain("theater.map"), Terrain("THEATER.elv"),
          folder_.File("my theater/texture/texture.bin"), folder_.File("new.dds")})
        EXPECT_EQ(RunOn({"check", "--report", path}).ExitCode, 2) << path;
    EXPECT_EQ(PairOnDisk(), before);
    const std::string pipe = folder_.File("pipe.txt");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_EQ(RunOn({"check", "--report", pipe}).ExitCode, 3);
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(Safety, GiantsAreMeasuredBeforeTheyAreRead) {
    MakeGiant(Terrain("theater.map"), ThreeGiB);
    EXPECT_EQ(RunBehind(LittleMemory, {"info"}).ExitCode, 0); // 1112 bytes of it
    // Blocks anywhere in it are found.
    MakeGiant(Terrain("theater.L2"), ThreeGiB);
    EXPECT_EQ(RunBehind(LittleMemory, {"set", "1", "1", "--tile", "1"}).ExitCode, 0);
    level_.At(2, 2).Tile = 1;
    EXPECT_TRUE(OnDisk().Posts == level_.Posts);

    const std::string elv = Terrain("theater.elv");
    MakeGiant(elv, ThreeGiB);
    const ProgramResult height =
        RunBehind(LittleMemory, {"elevation", "get", elv, "0", "0"});
    EXPECT_EQ(height.ExitCode, 3);
    EXPECT_NE(height.Errors.find("doesn't appear to be valid"), std::string::npos);

    MakeGiant(folder_.File("my theater/texture/Texture.bin"), ThreeGiB);
    const ProgramResult catalogue = RunBehind(LittleMemory, {"info"});
    EXPECT_EQ(catalogue.ExitCode, 3);
    EXPECT_NE(catalogue.Errors.find("at most 67108864"), std::string::npos)
        << catalogue.Errors;
    MakeGiant(Terrain("theater.O2"), ThreeGiB);
    EXPECT_EQ(RunBehind(LittleMemory, {"info"}).ExitCode, 3);
}

TEST_F(Safety, AGiantFeatureFileIsMeasuredBeforeItIsRead) {
    const std::string file = folder_.File("giant.tdf");
    MakeGiant(file, ThreeGiB);
    const ProgramResult result =
        RunProgram({"/bin/sh", "-c",
                    std::string(LittleMemory) + "; exec" +
                        Joined({VARDENIX_CLI, "features", "info", file})});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("at most 536870912"), std::string::npos)
        << result.Errors;
}

TEST_F(Safety, NoRoomForOpenFilesIsAnErrorAndNoCrash) {
    const ProgramResult result = RunBehind(
        "for f in 3 4 5 6 7 8 9; do eval \"exec $f<&-\"; done; ulimit -n 4", {"info"});
    EXPECT_EQ(result.ExitCode, 3) << result.Errors;
    EXPECT_NE(result.Errors, "");
}

TEST_F(Safety, PairsAreSavedWhereTheFileSystemKnowsNoRights) {
    const FaultShimLink shim(FAULT_SHIM);
    const ProgramResult result =
        RunOn({"set", "1", "1", "--tile", "1"}, shim.Environment("rights", 1));
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(OnDisk().At(2, 2).Tile, 1);
}

TEST_F(Safety, AFolderOfAKilledCommandGoesWithTheNext) {
    const std::string temp = folder_.File("temp");
    fs::create_directory(temp);
    const std::string own = temp + "/vardenix-" + std::to_string(geteuid());
    fs::create_directories(own + "/vardenix-cli-killed/deep");
    fs::create_directory(own + "/another");
    fs::permissions(own, fs::perms::owner_all);
    const std::string picture = folder_.Write("in/a.dds", "no picture");
    RunOn({"bin", "append-tile", "1", picture}, {"TMPDIR=" + temp});
    EXPECT_FALSE(fs::exists(own + "/vardenix-cli-killed"));
    EXPECT_TRUE(fs::exists(own + "/another"));
    EXPECT_EQ(std::distance(fs::directory_iterator(own), {}), 1);
}

TEST_F(Safety, AFolderOfARunningCommandStays) {
    const std::string temp = folder_.File("temp");
    const std::string own = temp + "/vardenix-" + std::to_string(geteuid());
    const std::string used = own + "/vardenix-cli-used";
    fs::create_directories(used);
    fs::permissions(own, fs::perms::owner_all);
    const int handle = open(used.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(handle, LOCK_EX), 0);
    const std::string picture = folder_.Write("in/a.dds", "no picture");
    RunOn({"bin", "append-tile", "1", picture}, {"TMPDIR=" + temp});
    EXPECT_TRUE(fs::exists(used));
    close(handle);
}

TEST_F(Safety, PicturesThatCannotBeReadAreTold) {
    const ProgramResult result = RunOn({"render", folder_.File("view.bmp")});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_NE(result.Errors.find("texture/sea.dds could not be read"), std::string::npos)
        << result.Errors;
}

TEST_F(Safety, ACutTheaterMapIsTold) {
    const std::string map = Terrain("theater.map");
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"map", "show"},
          {"map", "set", "l0-width", "32"},
          {"info"}}) {
        fs::resize_file(map, 700);
        const ProgramResult result = RunOn(command);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_NE(result.Errors.find("theater.map is cut: 700 of 1112 bytes"),
                  std::string::npos)
            << command[0] << result.Errors;
    }
}

TEST_F(Safety, AFolderWithTheLevelsNameInItIsOpened) {
    fs::rename(folder_.File("my theater"), folder_.File("theater.L2 old"));
    const ProgramResult result =
        Run({"get", "3", "5", "--theater", folder_.File("theater.L2 old")});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_NE(result.Output.find("elevation: -20"), std::string::npos);
}

TEST_F(Safety, ALimitOnTheSizeOfFilesIsAnErrorLikeAFullDisk) {
    const std::string before = PairOnDisk();
    const ProgramResult result =
        RunBehind("ulimit -f 4", {"set", "1", "1", "--tile", "1"});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("Run-time error '61'"), std::string::npos)
        << result.Errors;
    EXPECT_EQ(PairOnDisk(), before);
    EXPECT_EQ(FilesOfTerrain(), 3U);
}

TEST_F(Safety, TheWishToEndTakesAwayWhatWasStaged) {
    const FaultShimLink shim(FAULT_SHIM);
    const std::string before = PairOnDisk();
    int untouched = 0;
    for (int at = 1; at <= 8; ++at) {
        WriteLevel();
        const ProgramResult result =
            RunOn({"set", "1", "1", "--tile", "1"}, shim.Environment("term", at));
        EXPECT_EQ(result.ExitCode, -1) << at; // the signal ended it after all
        EXPECT_EQ(FilesOfTerrain(), 3U) << at;
        untouched += PairOnDisk() == before ? 1 : 0;
    }
    EXPECT_GE(untouched, 1);
    EXPECT_LT(untouched, 8);
}

} // namespace
} // namespace vardenix::tests
