// What is wrong on the command line is told before anything is opened: these theaters
// cannot be opened at all, and only the length of their O2 file can be told.
#include "cli/CliTheater.h"

#include <sstream>

namespace vardenix::tests {
namespace {

class Usage : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        folder_.Write("my theater/texture/Texture.bin", "broken");
    }
    void ExpectUsage(const std::vector<std::string>& arguments,
                     const std::string& words) {
        const ProgramResult result = RunOn(arguments);
        EXPECT_EQ(result.ExitCode, 2) << words;
        EXPECT_EQ(result.Output, "");
        EXPECT_NE(result.Errors.find(words), std::string::npos)
            << words << " in " << result.Errors;
    }
    std::string Picture() const { return folder_.File("out.png"); }
};

TEST_F(Usage, TheTheaterOfTheseTestsCannotBeOpened) {
    EXPECT_EQ(RunOn({"info"}).ExitCode, 3);
    EXPECT_EQ(RunOn({"render", Picture(), "--x", "31", "--y", "0"}).ExitCode, 3);
}

TEST_F(Usage, APositionBeyondTheTerrain) {
    const std::string fits = "; give a number from 0 to 31";
    ExpectUsage({"render", Picture(), "--x", "9999"}, "--x: 9999 lies outside");
    ExpectUsage({"render", Picture(), "--x", "32"}, fits);
    ExpectUsage({"render", Picture(), "--y", "32"}, "--y: 32 lies outside");
    ExpectUsage({"render", Picture(), "--x", "-1"}, "--x: -1 lies outside");
    ExpectUsage({"get", "32", "0"}, fits);
    ExpectUsage({"get", "0", "32"}, fits);
    ExpectUsage({"set", "32", "0", "--tile", "1"}, fits);
    ExpectUsage({"set", "0", "32", "--tile", "1"}, fits);
    ExpectUsage({"fill", "0", "0", "32", "0", "--tile", "1"}, "X2: 32 lies outside");
    ExpectUsage({"fill", "0", "32", "0", "0", "--tile", "1"}, "Y1: 32 lies outside");
    ExpectUsage({"elevation", "get", "none.elv", "128", "0"},
                "128 lies outside the terrain of none.elv; give a number from 0 to 127");
    ExpectUsage({"elevation", "set", "none.l0", "0", "128", "1"}, "from 0 to 127");
}

// A grid of 33 posts a side has two whole segments; the others would be lost by a save.
TEST_F(Usage, APositionThatASaveWouldLose) {
    folder_.Write("my theater/terrain/theater.O2", std::string(17, '\0'));
    ExpectUsage({"set", "32", "0", "--tile", "1"}, "from 0 to 31");
    ExpectUsage({"get", "33", "0"}, "from 0 to 32");
    EXPECT_EQ(RunOn({"get", "32", "0"}).ExitCode, 3);
}

TEST_F(Usage, APictureOfNoKnownKind) {
    for (const char* name : {"view.gif?", "view", "view.png.bak", "view.", "view.txt"}) {
        ExpectUsage({"render", folder_.File(name)},
                    std::string(name) + " ends in no extension of a picture");
        ExpectUsage({"preview", folder_.File(name)}, "OUT: ");
    }
    for (const char* name : {"a.png", "a.BMP", "a.jpeg", "a.jpg", "a.tga"})
        EXPECT_EQ(RunOn({"preview", folder_.File(name)}).ExitCode, 3);
}

TEST_F(Usage, NumbersThatAreNotDecimal) {
    for (const char* option :
         {"--x", "--y", "--zoom", "--grid", "--tile-pixels", "--brightness", "--alpha"})
        for (const char* text : {"0x10", "", "1.0", "5x", " 5"}) {
            const std::string told = std::string(option) + ": '" + text + "' is no";
            ExpectUsage({"render", Picture(), option, text}, told);
        }
    for (const char* option : {"--theater-index", "--x", "--y", "--zoom"})
        for (const char* text : {"0x1", ""}) {
            const ProgramResult result = Run({"settings", option, text});
            EXPECT_EQ(result.ExitCode, 2) << option << text;
            EXPECT_NE(result.Errors.find("' is no whole number"), std::string::npos);
        }
}

TEST_F(Usage, EmptyNames) {
    ExpectUsage({"check", "--report", ""}, "--report: give a text that is not empty");
    ExpectUsage({"check", "--report", "--json"}, "'--json' is an option and no value");
    ExpectUsage({"save-as", ""}, "PATH: give a text");
    ExpectUsage({"render", ""}, "OUT: give a text");
    ExpectUsage({"elevation", "get", "", "0", "0"}, "FILE: give a text");
    EXPECT_EQ(Run({"info", "--theater", ""}).ExitCode, 2);
    EXPECT_EQ(
        Run({"info", "--l2", "", "--bin", "b", "--map", "m", "--dds", "d"}).ExitCode, 2);
}

TEST_F(Usage, ANameToSaveAsThatIsNoneOfALevel2) {
    for (const char* name : {"theater.L2.bak", "theater", "theater.L2x", "theater.L3"})
        ExpectUsage({"save-as", folder_.File(name)}, "does not end in .L2");
}

TEST_F(Usage, ACommandThatIsNotThere) {
    ExpectUsage({"paint"}, "'paint' is no command of vardenix-cli; there are info, ");
    ExpectUsage({"elevation", "put"}, "'put' is no command of vardenix-cli elevation");
    ExpectUsage({"get", "1", "2", "info"}, "not expected: info");
}

// The program declares no more commands than a line needs.
TEST_F(Usage, EveryCommandOfTheHelpIsThereByItself) {
    std::istringstream help(Run({"--help"}).Output);
    std::string line;
    while (std::getline(help, line) && line != "Subcommands:") {
    }
    int count = 0;
    while (std::getline(help, line) && line.substr(0, 2) == "  ") {
        const std::string name = line.substr(2, line.find(' ', 2) - 2);
        const ProgramResult own = Run({name, "--help"});
        EXPECT_EQ(own.ExitCode, 0) << own.Errors;
        EXPECT_NE(own.Output.find("Usage: vardenix-cli " + name + " "), std::string::npos)
            << own.Output;
        ++count;
    }
    EXPECT_GE(count, 22);
}

} // namespace
} // namespace vardenix::tests
