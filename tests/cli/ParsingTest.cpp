// How the arguments of a command are taken apart, without a program or a theater.
#include "cli/CommandLine.h"

#include <gtest/gtest.h>

namespace vardenix {
// No command of these tests looks at it.
class CommandContext {};
} // namespace vardenix

namespace vardenix::tests {
namespace {

using Words = std::vector<std::string>;
enum class Level { L0, L1, L5 };

// A program with a command of every kind of argument, and a family.
class Parsing : public testing::Test {
protected:
    Parsing() {
        Command all = line_.Root();
        Command add = all.AddCommand("add", "Adds");
        add.Number("SET", set_, "Set").Required();
        add.Texts("PICTURE", pictures_, "Pictures").Required();
        add.Run([this](CommandContext&) { return set_; });
        Command show = all.AddCommand("show", "Shows");
        show.Text("--name", name_, "Name");
        show.Text("--other", other_, "Other");
        show.Texts("--file", files_, "Files");
        show.Number("--tile", tile_, "Tile", {0, 300});
        show.Number("--height", height_, "Feet");
        show.Numbers("--row", rows_, "Rows", {-5, 5});
        show.Real("--share", share_, "Share", {-2, 2.5});
        show.Flag("--json", json_, "JSON");
        show.Choice("--level", level_, levels_, "Level");
        show.ChoiceList("--levels", chosen_, levels_, "Levels");
        show.Run([](CommandContext&) { return 0; });
        Command bin = all.AddCommand("bin", "The catalogue");
        Command tile = bin.AddCommand("tile", "Tiles");
        for (const std::string name : {"drop", "keep"}) {
            Command command = tile.AddCommand(name, name + "s");
            command.Check([this, name] { checked_ += name + "1 "; });
            command.Check([this, name] {
                checked_ += name + "2 ";
                if (refuse_)
                    throw UsageError("PLACE", "no");
            });
            command.Run([](CommandContext&) { return 7; });
        }
    }
    // The exit code of the work.
    int Run(const Words& arguments) {
        const ParsedLine parsed = line_.Parse(arguments);
        CommandContext context;
        return parsed.Run ? parsed.Run(context) : -1;
    }
    std::string Refusal(const Words& arguments) {
        try {
            line_.Parse(arguments);
        } catch (const UsageError& error) {
            return error.what();
        }
        return "taken";
    }

    CommandLine line_{"program", "9.8.7", "About it.", "The end."};
    int32_t set_ = 0;
    Words pictures_;
    std::string name_ = "the usual";
    std::optional<std::string> other_;
    Words files_;
    int16_t tile_ = 3;
    std::optional<int16_t> height_;
    std::vector<int32_t> rows_;
    double share_ = 0.25;
    bool json_ = false;
    Level level_ = Level::L1;
    std::vector<Level> chosen_;
    const Choices<Level> levels_{{"l0", Level::L0}, {"l1", Level::L1}, {"l5", Level::L5}};
    std::string checked_;
    bool refuse_ = false;
};

TEST_F(Parsing, PositionsAreTakenInTheirOrderAndTheLastTakesTheRest) {
    EXPECT_EQ(Run({"add", "5", "a b.tga", "c,d", "-", "[e]", "[f,g]"}), 5);
    EXPECT_EQ(pictures_, (Words{"a b.tga", "c,d", "-", "[e]", "[f,g]"}));
    EXPECT_EQ(Refusal({"add", "5"}), "PICTURE is required");
    EXPECT_EQ(Refusal({"add"}), "SET is required");
}

TEST_F(Parsing, WhatIsNotGivenKeepsItsValue) {
    EXPECT_EQ(Run({"show"}), 0);
    EXPECT_EQ(name_, "the usual");
    EXPECT_FALSE(other_.has_value());
    EXPECT_EQ(tile_, 3);
    EXPECT_FALSE(height_.has_value());
    EXPECT_EQ(share_, 0.25);
    EXPECT_FALSE(json_);
    EXPECT_EQ(level_, Level::L1);
    EXPECT_TRUE(files_.empty() && rows_.empty() && chosen_.empty());
}

TEST_F(Parsing, EveryKindOfOptionIsTaken) {
    EXPECT_EQ(Run({"show", "--name", "a, b", "--other=[x]", "--tile", "010", "--height",
                   "-32768", "--share", "-1.5", "--json", "--level", "l5"}),
              0);
    EXPECT_EQ(name_, "a, b");
    EXPECT_EQ(other_, "[x]");
    EXPECT_EQ(tile_, 10);
    EXPECT_EQ(height_, -32768);
    EXPECT_EQ(share_, -1.5);
    EXPECT_TRUE(json_);
    EXPECT_EQ(level_, Level::L5);
}

TEST_F(Parsing, OptionsThatMayBeRepeatedAddUp) {
    EXPECT_EQ(Run({"show", "--file", "a,b", "--row", "1,-2", "--levels", "l5", "--file",
                   "[c]", "--row", "5", "--levels", "l0,l5"}),
              0);
    EXPECT_EQ(files_, (Words{"a,b", "[c]"}));
    EXPECT_EQ(rows_, (std::vector<int32_t>{1, -2, 5}));
    EXPECT_EQ(chosen_, (std::vector<Level>{Level::L5, Level::L0, Level::L5}));
    // One word each time, so that what follows is not theirs.
    EXPECT_NE(Refusal({"show", "--file", "a", "b"}).find("not expected: b"),
              std::string::npos);
    EXPECT_NE(Refusal({"show", "--tile", "1", "--tile", "2"}).find("--tile"),
              std::string::npos);
}

TEST_F(Parsing, NumbersAreDecimalAndInTheirRange) {
    for (const std::string text : {"", "0x10", "1.0", "1e2", " 1", "1 ", "+1", "301",
                                   "-1", "99999999999999999999"})
        EXPECT_EQ(Refusal({"show", "--tile", text}),
                  "--tile: '" + text + "' is no whole number from 0 to 300");
    EXPECT_EQ(Run({"show", "--tile", "300"}), 0);
    EXPECT_EQ(Run({"show", "--tile", "0"}), 0);
    EXPECT_EQ(Refusal({"show", "--height", "32768"}),
              "--height: '32768' is no whole number from -32768 to 32767");
    EXPECT_EQ(Refusal({"show", "--row", "1,6"}),
              "--row: '6' is no whole number from -5 to 5");
    EXPECT_EQ(Refusal({"show", "--row", "1,"}),
              "--row: '' is no whole number from -5 to 5");
    EXPECT_EQ(Refusal({"add", "x", "a"}),
              "SET: 'x' is no whole number from -2147483648 to 2147483647");
    for (const std::string text : {"", "nan", "inf", "2.6", "-2.1", "1,5", "0x1", "1 "})
        EXPECT_EQ(Refusal({"show", "--share", text}),
                  "--share: '" + text + "' is no number from -2 to 2.5");
}

TEST_F(Parsing, WordsAreThoseOfTheList) {
    EXPECT_EQ(Refusal({"show", "--level", "l2"}), "--level: 'l2' is none of l0, l1, l5");
    EXPECT_EQ(Refusal({"show", "--level", "L0"}), "--level: 'L0' is none of l0, l1, l5");
    EXPECT_EQ(Refusal({"show", "--levels", "l0,,l1"}),
              "--levels: '' is none of l0, l1, l5");
}

TEST_F(Parsing, AValueThatWasForgottenIsNotMadeUp) {
    EXPECT_EQ(Refusal({"show", "--name", ""}), "--name: give a text that is not empty");
    EXPECT_EQ(Refusal({"show", "--name", "--json"}),
              "--name: '--json' is an option and no value; a file of that name is "
              "./--json");
    EXPECT_NE(Refusal({"show", "--name"}).find("--name"), std::string::npos);
    EXPECT_EQ(Refusal({"add", "1", "a", ""}), "PICTURE: give a text that is not empty");
    EXPECT_EQ(Run({"show", "--name", "./--json"}), 0);
    EXPECT_FALSE(json_);
}

TEST_F(Parsing, ACommandThatIsNotThereIsNamed) {
    EXPECT_EQ(Refusal({"paint", "--fast", "x"}),
              "'paint' is no command of program; there are add, show, bin");
    EXPECT_EQ(Refusal({"bin", "tile", "[drop]"}),
              "'[drop]' is no command of program bin tile; there are drop, keep");
    EXPECT_EQ(Refusal({}), "name a command of program: add, show, bin");
    EXPECT_EQ(Refusal({"bin"}), "name a command of program bin: tile");
    EXPECT_NE(Refusal({"show", "paint"}).find("paint"), std::string::npos);
    EXPECT_NE(Refusal({"show", "--fast"}).find("--fast"), std::string::npos);
}

TEST_F(Parsing, TheCommandsOwnChecksComeInOrderWhenTheLineIsRight) {
    EXPECT_EQ(Run({"bin", "tile", "keep"}), 7);
    EXPECT_EQ(checked_, "keep1 keep2 ");
    checked_.clear();
    Refusal({"bin", "tile", "keep", "more"});
    EXPECT_EQ(checked_, "");
    refuse_ = true;
    EXPECT_EQ(Refusal({"bin", "tile", "drop"}), "PLACE: no");
    EXPECT_EQ(checked_, "drop1 drop2 ");
}

TEST_F(Parsing, OptionsMayExcludeAndNeedOneAnother) {
    bool a = false;
    bool b = false;
    bool c = false;
    Command command = line_.Root().AddCommand("choose", "Chooses");
    const Argument first = command.Flag("--a", a, "A");
    command.Flag("--b", b, "B").Excludes(first);
    command.Flag("--c", c, "C").Needs(first);
    command.Run([](CommandContext&) { return 0; });
    EXPECT_NE(Refusal({"choose", "--a", "--b"}).find("excludes"), std::string::npos);
    EXPECT_NE(Refusal({"choose", "--c"}).find("requires"), std::string::npos);
    a = b = c = false;
    EXPECT_EQ(Run({"choose", "--c", "--a"}), 0);
    EXPECT_TRUE(a && c && !b);
}

TEST_F(Parsing, HelpShowsRangesWordsAndTheValuesOfAFirstStart) {
    EXPECT_EQ(line_.Parse({"--version"}).Told, "9.8.7");
    const std::string all = line_.Parse({"--help"}).Told;
    for (const char* words : {"About it.", "The end.", "add", "The catalogue"})
        EXPECT_NE(all.find(words), std::string::npos) << all;
    const std::string show = line_.Parse({"show", "--help"}).Told;
    for (const char* words : {"--name", "the usual", "0..300", "[3]", "-2..2.5", "[0.25]",
                              "{l0, l1, l5}", "[l1]"})
        EXPECT_NE(show.find(words), std::string::npos) << words << " in\n" << show;
    EXPECT_NE(line_.Parse({"bin", "tile", "--help"}).Told.find("drops"),
              std::string::npos);
}

} // namespace
} // namespace vardenix::tests
