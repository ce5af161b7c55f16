// No output of any command replaces a file of the theater that it reads.
#include "cli/CliTheater.h"
#include "cli/CommandTable.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

struct Command {
    std::vector<std::string> Before; // of the output
    std::vector<std::string> Behind;
    std::string Ending; // of a name that the command takes for its output
    bool TakesTheater = true;
};

// By the name that the list of commands has.
std::map<std::string, Command> CommandsWithOutputs(const std::string& features) {
    return {
        {"check --report", {{"check", "--report"}, {}, ".txt"}},
        {"preview OUT", {{"preview"}, {}, ".png"}},
        {"render OUT", {{"render"}, {}, ".bmp"}},
        {"far-tile OUT", {{"far-tile", "0"}, {}, ".png"}},
        {"place export FILE", {{"place", "export"}, {}, ".place"}},
        {"heights export FILE", {{"heights", "export"}, {}, ".tif"}},
        {"tiles export FILE", {{"tiles", "export"}, {}, ".tif"}},
        {"features import --out",
         {{"features", "import", features, "--out"}, {}, ".tdf"}},
        {"map export-palette OUT", {{"map", "export-palette"}, {}, ".pal"}},
        {"features export --out",
         {{"features", "export", "0", "0", "9", "9", features, "--out"}, {}, "", false}},
        {"region export OUT", {{"region", "export"}, {"0", "0", "1", "1"}, ".exp"}},
        {"mea OUT", {{"mea"}, {}, ".mea"}},
        {"tc OUT", {{"tc"}, {}, ".tc"}},
        {"tm OUT", {{"tm"}, {}, ".tm"}}};
}

class Outputs : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        features_ = folder_.Write("in.tdf", "CITY 1 1,1 7\n");
    }
    ProgramResult RunWith(const Command& command, const std::string& out) {
        std::vector<std::string> line = command.Before;
        line.push_back(out);
        line.insert(line.end(), command.Behind.begin(), command.Behind.end());
        return command.TakesTheater ? RunOn(line) : Run(line);
    }
    std::map<std::string, std::string> TheaterOnDisk() const {
        std::map<std::string, std::string> files;
        for (const auto& entry :
             fs::recursive_directory_iterator(folder_.File("my theater")))
            if (entry.is_regular_file())
                files[entry.path()] = Slurp(entry.path());
        return files;
    }
    std::string features_;
};

TEST_F(Outputs, OfEveryCommandAreInTheListOfThisTest) {
    CommandLine line("vardenix-cli", "", "", "");
    auto all = line.Root();
    AddAllCommands(all);
    std::set<std::string> known;
    for (const auto& [name, command] : CommandsWithOutputs(""))
        known.insert(name);
    const std::vector<std::string> found = line.Outputs();
    EXPECT_EQ(std::set<std::string>(found.begin(), found.end()), known);
}

TEST_F(Outputs, ReplaceNoFileOfTheTheater) {
    const auto before = TheaterOnDisk();
    for (const auto& [name, command] : CommandsWithOutputs(features_))
        for (const char* file :
             {"terrain/theater.L2", "TERRAIN/theater.o2", "terrain/theater.map",
              "texture/Texture.bin", "texture/texture/sea.dds", "terrain/theater.L0"}) {
            const ProgramResult result =
                RunWith(command, folder_.File("my theater/" + std::string(file)));
            EXPECT_EQ(result.ExitCode, 2) << name << " " << file << result.Errors;
            EXPECT_EQ(TheaterOnDisk(), before) << name << " " << file;
        }
}

TEST_F(Outputs, ReplaceNoFileOfTheTheaterThroughALinkOfAnyKind) {
    const auto before = TheaterOnDisk();
    for (const auto& [name, command] : CommandsWithOutputs(features_)) {
        if (!command.TakesTheater)
            continue;
        for (const bool symbolic : {true, false}) {
            const std::string link = folder_.File("link" + command.Ending);
            fs::remove(link);
            if (symbolic)
                fs::create_symlink(Terrain("theater.map"), link);
            else
                fs::create_hard_link(Terrain("theater.map"), link);
            EXPECT_EQ(RunWith(command, link).ExitCode, 2) << name;
            EXPECT_EQ(TheaterOnDisk(), before) << name;
        }
    }
}

} // namespace
} // namespace vardenix::tests
