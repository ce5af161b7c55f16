// Edits of vardenix-cli on disks that fill up or may not be written.
#include "cli/CliTheater.h"
#include "support/FaultShimLink.h"
#include "support/PlainUser.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class EditFaults : public CliTheater {
protected:
    const std::vector<std::string> fill_{"fill", "0", "0", "20", "20", "--tile", "9"};

    MadeLevel Filled() {
        MadeLevel level = level_;
        for (int y = 1; y <= 21; ++y)
            for (int x = 1; x <= 21; ++x)
                level.At(x, y).Tile = 9;
        return level;
    }
    // What the next opening makes of the pair: 'o' the old posts, 'n' the new ones, '?'
    // neither.
    char Reopened() {
        EXPECT_EQ(RunOn({"get", "0", "0"}).ExitCode, 0);
        const MadeLevel found = OnDisk();
        return found.Posts == level_.Posts     ? 'o'
               : found.Posts == Filled().Posts ? 'n'
                                               : '?';
    }
    void ExpectNothingLiesAbout() {
        EXPECT_FALSE(fs::exists(Terrain("theater.L2x")));
        EXPECT_FALSE(fs::exists(Terrain("theater.O2x")));
    }
};

TEST_F(EditFaults, AFullDiskIsAMessageAndTheOldPosts) {
    const FaultShimLink shim(FAULT_SHIM);
    std::string found;
    int code = 3;
    for (int at = 1; code == 3; ++at) {
        WriteLevel();
        const ProgramResult result = RunOn(fill_, shim.Environment("full", at));
        code = result.ExitCode;
        ASSERT_TRUE(code == 3 || code == 0) << "step " << at << ": " << code;
        if (code == 3) {
            EXPECT_NE(result.Errors.find("Run-time error '61'"), std::string::npos)
                << result.Errors;
            EXPECT_EQ(result.Output, "");
        }
        found += Reopened();
        ExpectNothingLiesAbout();
        ASSERT_LT(at, 100);
    }
    // Only when the L file has taken its place is the save as good as done: the next
    // opening puts the O file in its place as well.
    EXPECT_EQ(found.find_first_not_of("on"), std::string::npos) << found;
    EXPECT_EQ(found.find("no"), std::string::npos) << found;
    EXPECT_EQ(found.substr(0, 7), "ooooooo"); // opens, writes, flushes, first rename
    EXPECT_EQ(found.back(), 'n');
}

TEST_F(EditFaults, AFullDiskLeavesNoHalfCopy) {
    const FaultShimLink shim(FAULT_SHIM);
    fs::create_directory(folder_.File("my copies"));
    const ProgramResult result = RunOn({"save-as", folder_.File("my copies/theater.l2")},
                                       shim.Environment("full", 3));
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("Run-time error '61'"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(folder_.File("my copies")));
}

TEST_F(EditFaults, AFullDiskLeavesTheOldElevations) {
    const FaultShimLink shim(FAULT_SHIM);
    const std::string elv = folder_.Write("a b.elv", std::string(2 * 128 * 128, '\1'));
    for (int at = 1; at <= 4; ++at) { // open, write, flush, rename
        const ProgramResult result =
            RunOn({"elevation", "set", elv, "1", "2", "3"}, shim.Environment("full", at));
        EXPECT_EQ(result.ExitCode, 3) << at;
        EXPECT_EQ(Slurp(elv), std::string(2 * 128 * 128, '\1')) << at;
        EXPECT_FALSE(fs::exists(elv + "x")) << at;
    }
}

TEST_F(EditFaults, WhatMayNotBeWrittenIsAMessageAndTheOldPosts) {
    LetOthers(folder_.Path(), 7);
    const std::string data = folder_.File("my data");
    fs::create_directory(data);
    LetOthers(data, 7);
    // The settings' own folder must be there for a plain user, too.
    const std::vector<std::string> environment{"XDG_DATA_HOME=" + data};
    const std::string elv = folder_.Write("a b.elv", std::string(2 * 128 * 128, '\1'));
    const std::string before = PairOnDisk();
    const auto refusals = [&](const std::string& path, unsigned rights) {
        LetOthers(path, rights);
        const PlainUser user;
        EXPECT_EQ(RunOn({"get", "3", "5"}, environment).ExitCode, 0);
        for (const std::vector<std::string>& command :
             {fill_, {"elevation", "set", elv, "1", "2", "3"}}) {
            const ProgramResult result = RunOn(command, environment);
            EXPECT_EQ(result.ExitCode, 3) << path;
            EXPECT_NE(result.Errors.find("Run-time error '7"), std::string::npos)
                << result.Errors; // 70 or 75
        }
    };
    LetOthers(elv, 4);
    refusals(Terrain("theater.L2"), 4);
    LetOthers(Terrain("theater.L2"), 6);
    refusals(folder_.File("my theater/terrain"), 5);
    LetOthers(folder_.File("my theater/terrain"), 7);
    EXPECT_EQ(PairOnDisk(), before);
    EXPECT_EQ(Slurp(elv), std::string(2 * 128 * 128, '\1'));
    ExpectNothingLiesAbout();
}

} // namespace
} // namespace vardenix::tests
