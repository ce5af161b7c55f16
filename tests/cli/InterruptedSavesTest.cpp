// What the next command makes of what a killed one has left in any folder of a theater,
// and of what somebody else has put there.
#include "cli/CliTheater.h"
#include "support/FaultShimLink.h"
#include "support/JournalMaker.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class InterruptedSaves : public CliTheater {
protected:
    std::string Pictures(const std::string& name) const {
        return folder_.File("my theater/texture/texture/" + name);
    }
    // Half of a family of pictures has its place.
    void KillAnIntake() {
        folder_.Write("my theater/texture/texture/Hsea.dds", "old H");
        folder_.Write("my theater/texture/texture/Msea.dds", "old M");
        JournalMaker journal;
        journal.Add("Hsea.dds", "new H", Pictures("Hsea.dds"));
        journal.Add("Msea.dds", "new M", Pictures("Msea.dds"));
        Spill(Pictures("vardenix.journal"), journal.Text());
        Spill(Pictures("new"), "new H");
        fs::rename(Pictures("new"), Pictures("Hsea.dds"));
        Spill(Pictures("Msea.ddsx"), "new M");
    }
};

TEST_F(InterruptedSaves, OfPicturesAreFinishedByEveryOpening) {
    for (const std::vector<std::string>& command : {std::vector<std::string>{"info"},
                                                    {"get", "1", "1"},
                                                    {"map", "show"},
                                                    {"bin", "list"},
                                                    {"set", "1", "1", "--tile", "1"}}) {
        KillAnIntake();
        EXPECT_EQ(RunOn(command).ExitCode, 0) << command[0];
        EXPECT_EQ(Slurp(Pictures("Msea.dds")), "new M") << command[0];
        EXPECT_FALSE(fs::exists(Pictures("vardenix.journal"))) << command[0];
        EXPECT_FALSE(fs::exists(Pictures("Msea.ddsx"))) << command[0];
    }
}

TEST_F(InterruptedSaves, AreNoUnusedPictures) {
    for (const char* name : {"HX.ddsx", "vardenix.journal.aside", "HX.dds"})
        Spill(Pictures(name), "x");
    const ProgramResult result = RunOn({"bin", "unused-pictures", "--delete"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(result.Output, "HX.dds\n");
    EXPECT_TRUE(fs::exists(Pictures("HX.ddsx")));
    EXPECT_TRUE(fs::exists(Pictures("vardenix.journal.aside")));
    EXPECT_FALSE(fs::exists(Pictures("HX.dds")));
}

TEST_F(InterruptedSaves, FromElsewhereMoveNoFileAndAreTold) {
    const std::string letter = folder_.Write("letters/theater.map", "a letter");
    const std::string draft = folder_.Write("letters/theater.mapx", "a draft");
    JournalMaker journal;
    journal.Add("../../letters/theater.map", "a draft", letter);
    const std::string text = journal.Text();
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"info"}, {"map", "show"}}) {
        Spill(Terrain("vardenix.journal"), text);
        const ProgramResult result = RunOn(command);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_NE(result.Errors.find("set aside"), std::string::npos) << result.Errors;
        EXPECT_EQ(Slurp(letter), "a letter");
        EXPECT_EQ(Slurp(draft), "a draft");
        EXPECT_FALSE(fs::exists(Terrain("vardenix.journal")));
        EXPECT_EQ(Slurp(Terrain("vardenix.journal.aside")), text);
    }
}

TEST_F(InterruptedSaves, OfMoreFilesThanWereNamedAreError70) {
    const std::string bin = folder_.File("my theater/texture/Texture.bin");
    const std::string old = Slurp(bin);
    JournalMaker journal;
    journal.Add("../texture/Texture.bin", old, bin);
    Spill(Terrain("vardenix.journal"), journal.Text());
    Spill(bin + "x", old);
    const ProgramResult result = Run({"map", "show", "--map", Terrain("theater.map")});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("'70'"), std::string::npos) << result.Errors;
    EXPECT_NE(result.Errors.find("vardenix-cli info --theater"), std::string::npos);
    EXPECT_TRUE(fs::exists(Terrain("vardenix.journal")));
    EXPECT_EQ(RunOn({"map", "show"}).ExitCode, 0);
    EXPECT_FALSE(fs::exists(Terrain("vardenix.journal")));
}

// Whatever the disk refuses to tell while a save is finished, its second half stays.
TEST_F(InterruptedSaves, SurviveARefusalToLookAtAnyOfTheirFiles) {
    const std::string old = Slurp(Terrain("theater.O2"));
    const std::string offsets = old.substr(4, 4) + old.substr(0, 4) + old.substr(8);
    ASSERT_NE(offsets, old);
    const std::string level = Slurp(Terrain("theater.L2"));
    const FaultShimLink shim(FAULT_SHIM);
    for (const std::string& file : {Terrain("theater.O2x"), Terrain("vardenix.journal"),
                                    Terrain(""), Terrain("theater.L2")})
        for (int at = 1; at <= 6; ++at) {
            Spill(Terrain("theater.O2"), old);
            JournalMaker journal;
            journal.Add("theater.L2", level, folder_.File("nothing"));
            journal.Add("theater.O2", offsets, Terrain("theater.O2"));
            Spill(Terrain("vardenix.journal"), journal.Text());
            Spill(Terrain("theater.O2x"), offsets);
            std::vector<std::string> environment = shim.Environment("refuse", at);
            environment.push_back("FAULT_FILE=" + (file.ends_with('/')
                                                       ? file.substr(0, file.size() - 1)
                                                       : file));
            const ProgramResult result = RunOn({"info"}, environment);
            // Refused and left as it was, or finished.
            const bool left = fs::exists(Terrain("theater.O2x")) &&
                              fs::exists(Terrain("vardenix.journal"));
            const bool finished = Slurp(Terrain("theater.O2")) == offsets &&
                                  !fs::exists(Terrain("theater.O2x"));
            EXPECT_TRUE(result.ExitCode == 3 ? left || finished : finished)
                << file << " at " << at << ": " << result.ExitCode << result.Errors;
        }
}

} // namespace
} // namespace vardenix::tests
