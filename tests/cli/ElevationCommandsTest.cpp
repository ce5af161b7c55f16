// elevation get and set of the real vardenix-cli. The theater is 32 posts a side, so its
// finest elevations are 128 a side.
#include "cli/CliTheater.h"
#include "support/FaultShimLink.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class ElevationCommands : public CliTheater {
protected:
    static constexpr int Width = 128;
    static constexpr int SeaTile = 8192;

    void SetUp() override {
        CliTheater::SetUp();
        finest_ = MadeLevel::Random(Width, 7);
        // Two whole segments of sea, at (2, 1) and (3, 1).
        for (int y = 1; y <= 16; ++y)
            for (int x = 17; x <= 48; ++x)
                finest_.At(x, y) = {SeaTile, 0, 1, 2, 3};
        const PairBytes pair = ScatteredPair(finest_);
        folder_.Write("my theater/terrain/theater.L0", pair.L);
        folder_.Write("my theater/terrain/theater.O0", pair.O);
        std::string values;
        for (const MadePost& post : finest_.Posts)
            values += Int16Bytes(post.Elevation);
        folder_.Write("my heights.elv", values);
    }
    ProgramResult Elevation(const std::string& verb,
                            const std::vector<std::string>& rest) {
        std::vector<std::string> arguments{"elevation", verb};
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        return RunOn(arguments);
    }
    std::string L0() const { return Terrain("theater.L0"); }
    std::string O0() const { return Terrain("theater.O0"); }
    std::string Elv() const { return folder_.File("my heights.elv"); }
    std::string AllBytes() const { return Slurp(L0()) + Slurp(O0()) + Slurp(Elv()); }

    MadeLevel finest_;
};

TEST_F(ElevationCommands, GetTellsTheSameOfBothKinds) {
    for (const auto& [x, y] : {std::pair{0, 0}, {127, 64}, {63, 127}, {20, 3}}) {
        const int feet = finest_.At(x + 1, y + 1).Elevation;
        for (const std::string& file : {L0(), Elv()}) {
            const ProgramResult told =
                Elevation("get", {file, std::to_string(x), std::to_string(y), "--json"});
            EXPECT_EQ(told.ExitCode, 0) << told.Errors;
            EXPECT_EQ(nlohmann::json::parse(told.Output),
                      (nlohmann::json{{"x", x}, {"y", y}, {"elevation", feet}}));
        }
    }
    finest_.At(6, 8).Elevation = -77;
    folder_.Write("my theater/terrain/theater.L0", ScatteredPair(finest_).L);
    // The extension counts in any case.
    EXPECT_EQ(Elevation("get", {Terrain("THEATER.l0"), "5", "7"}).Output,
              "x: 5\ny: 7\nelevation: -77\n");
}

TEST_F(ElevationCommands, SetInAL0FileChangesOneElevationAndNoOtherField) {
    const ProgramResult result = Elevation("set", {L0(), "5", "7", "-32768"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(result.Output, "1 elevation set in " + L0() + "\n");
    finest_.At(6, 8).Elevation = -32768;
    EXPECT_TRUE(ReadPair(L0(), O0()).Posts == finest_.Posts);
    EXPECT_EQ(Elevation("set", {L0(), "127", "127", "32767"}).ExitCode, 0);
    finest_.At(128, 128).Elevation = 32767;
    EXPECT_TRUE(ReadPair(L0(), O0()).Posts == finest_.Posts);
}

TEST_F(ElevationCommands, SeaOfAL0FileSharesABlockUntilItRises) {
    EXPECT_EQ(Elevation("set", {L0(), "0", "127", "1"}).ExitCode, 0);
    finest_.At(1, 128).Elevation = 1;
    // 64 segments, two of them one block.
    EXPECT_EQ(Slurp(L0()).size(), 63U * 2304);
    EXPECT_EQ(Slurp(O0()).substr(4, 4), Slurp(O0()).substr(8, 4));
    EXPECT_TRUE(ReadPair(L0(), O0()).Posts == finest_.Posts);
    EXPECT_EQ(Elevation("set", {L0(), "16", "0", "3"}).ExitCode, 0);
    finest_.At(17, 1).Elevation = 3;
    EXPECT_EQ(Slurp(L0()).size(), 64U * 2304);
    EXPECT_TRUE(ReadPair(L0(), O0()).Posts == finest_.Posts);
}

TEST_F(ElevationCommands, SetInAnElvFileChangesTwoBytes) {
    std::string expected = Slurp(Elv());
    expected.replace((7 * Width + 5) * 2, 2, Int16Bytes(-2));
    EXPECT_EQ(Elevation("set", {Elv(), "5", "7", "-2"}).ExitCode, 0);
    EXPECT_EQ(Slurp(Elv()), expected);
}

TEST_F(ElevationCommands, Level2IsLeftAlone) {
    const std::string before = PairOnDisk();
    EXPECT_EQ(Elevation("set", {L0(), "5", "7", "1"}).ExitCode, 0);
    EXPECT_EQ(Elevation("set", {Elv(), "5", "7", "1"}).ExitCode, 0);
    EXPECT_EQ(PairOnDisk(), before);
}

TEST_F(ElevationCommands, WrongArgumentsAreExplainedAndNothingIsWritten) {
    struct Wrong {
        std::vector<std::string> Arguments;
        std::string Words;
    };
    const std::string before = AllBytes();
    for (const auto& [arguments, words] : std::vector<Wrong>{
             {{"set", L0(), "128", "0", "1"},
              "X: 128 lies outside the terrain of " + L0()},
             {{"set", Elv(), "0", "128", "1"}, "give a number from 0 to 127"},
             {{"get", L0(), "-1", "0"}, "X: -1 lies outside"},
             {{"set", L0(), "0", "0", "40000"}, "'40000' is no whole number from -32768"},
             {{"set", L0(), "0", "0", "-32769"}, "to 32767"},
             {{"set", L0(), "0", "0", "high"}, "FEET: 'high'"},
             {{"set", L0(), "0", "0"}, "FEET is required"},
             {{"get", L0(), "0"}, "Y is required"},
             {{"get", L0() + "x", "0", "0"}, "ends neither in .l0 nor in .elv"},
             {{"set", Terrain("theater.L2"), "0", "0", "1"}, "ends neither in .l0"},
             {{"set", "elv", "0", "0", "1"}, "elv ends neither"},
             {{"put", L0(), "0", "0", "1"}, "'put' is no command of"}}) {
        const ProgramResult result =
            Elevation(arguments[0], {arguments.begin() + 1, arguments.end()});
        EXPECT_EQ(result.ExitCode, 2) << words;
        EXPECT_NE(result.Errors.find(words), std::string::npos)
            << words << " in " << result.Errors;
    }
    EXPECT_EQ(AllBytes(), before);
}

TEST_F(ElevationCommands, FilesOfAnotherTheaterAreRefused) {
    const std::string before = AllBytes();
    const std::string small = folder_.Write("small.elv", std::string(2 * 64 * 64, '\0'));
    folder_.Write("small.L0", std::string(2304, '\0'));
    folder_.Write("small.O0", std::string(4 * 16, '\0'));
    for (const std::string& file : {small, folder_.File("small.L0")})
        for (const std::vector<std::string>& command :
             {std::vector<std::string>{"get", file, "0", "0"},
              {"set", file, "0", "0", "1"}}) {
            const ProgramResult result =
                Elevation(command[0], {command.begin() + 1, command.end()});
            EXPECT_EQ(result.ExitCode, 3);
            EXPECT_NE(result.Errors.find("The size of L0 file doesn't appear to be valid "
                                         "for this theater\n"),
                      std::string::npos)
                << result.Errors;
            EXPECT_NE(result.Errors.find("has 128 elevations a side"), std::string::npos);
        }
    EXPECT_EQ(Slurp(small), std::string(2 * 64 * 64, '\0'));
    EXPECT_EQ(Slurp(folder_.File("small.L0")), std::string(2304, '\0'));
    EXPECT_EQ(AllBytes(), before);
}

TEST_F(ElevationCommands, MissingFilesAreRunTimeErrors) {
    const ProgramResult elv = Elevation("get", {folder_.File("none.elv"), "0", "0"});
    EXPECT_EQ(elv.ExitCode, 3);
    EXPECT_NE(elv.Errors.find("Run-time error '53'"), std::string::npos);
    EXPECT_EQ(Elevation("set", {folder_.File("none.L0"), "0", "0", "1"}).ExitCode, 3);
    EXPECT_FALSE(fs::exists(folder_.File("none.L0")));
    EXPECT_FALSE(fs::exists(folder_.File("none.O0")));
    fs::remove(O0());
    const ProgramResult l0 = Elevation("set", {L0(), "0", "0", "1"});
    EXPECT_EQ(l0.ExitCode, 3);
    EXPECT_NE(l0.Errors.find(".O0 File not found\n" + O0() + "\n"), std::string::npos)
        << l0.Errors;
    EXPECT_FALSE(fs::exists(O0()));
}

// Somebody else's program makes the O0 file shorter between the reading and the saving.
TEST_F(ElevationCommands, ASaveOverAChangedO0FileEndsInASentence) {
    const FaultShimLink shim(FAULT_SHIM);
    std::vector<std::string> environment = shim.Environment("shrink", 2);
    environment.push_back("FAULT_FILE=" + O0());
    const std::string l0 = Slurp(L0());
    const ProgramResult result =
        RunOn({"elevation", "set", L0(), "5", "7", "1"}, environment);
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("The file was changed by another program"),
              std::string::npos)
        << result.Errors;
    EXPECT_NE(result.Errors.find("--overwrite"), std::string::npos);
    EXPECT_NE(result.Errors.find("was left as it is"), std::string::npos)
        << result.Errors;
    EXPECT_EQ(result.Output, "");
    EXPECT_EQ(Slurp(L0()), l0);
    EXPECT_EQ(Slurp(O0()).size(), 4U);
}

} // namespace
} // namespace vardenix::tests
