#include "catalogue/TextureBinFile.h"
#include "cli/CliTheater.h"
#include "levels/TerrainStore.h"
#include "recovery/EarlierSaves.h"
#include "recovery/LogKeeper.h"
#include "support/FixedClock.h"
#include "support/RecordingProgress.h"

#include <memory>
#include <regex>

namespace vardenix {
namespace {

// What an editor has left in the user's own data.
class RecoveryCommands : public tests::CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        auto& terrain = state_.Terrain;
        terrain.LFilename = CliTheater::Terrain("theater.L2");
        terrain.OFilename = CliTheater::Terrain("theater.O2");
        LoadLFile(terrain, progress_, log_);
        state_.Catalogue.BinPath = folder_.File("my theater/texture/Texture.bin");
        OpenBinFileAlone(state_.Catalogue);
        state_.MAPFile = CliTheater::Terrain("theater.map");
        state_.MAPFileRead = IdentityOfRealPath(state_.MAPFile);
    }

    void Paint(int32_t serial, int32_t tile) {
        const Recording made(state_.Changes, {Paper::Level2}, "Paint 1 post");
        state_.Terrain.LxArr(serial).TileOffset = tile;
    }

    // With "TIME" for every time.
    std::string Output(const std::vector<std::string>& arguments, int exitCode = 0) {
        return Without(Run(arguments, environment_), exitCode);
    }
    std::string OutputOn(const std::vector<std::string>& arguments, int exitCode = 0) {
        return Without(RunOn(arguments, environment_), exitCode);
    }

    std::string data_ = folder_.File("data/vardenix");
    tests::RecordingProgress progress_;
    tests::FixedClock clock_;
    DebugLog log_{clock_};
    ProgramState state_;

private:
    static std::string Without(const tests::ProgramResult& result, int exitCode) {
        EXPECT_EQ(result.ExitCode, exitCode) << result.Errors;
        return std::regex_replace(
            result.Output, std::regex("[0-9]+ [A-Z][a-z]+ [0-9]{4} [0-9:]{8}"), "TIME");
    }

    std::vector<std::string> environment_{"XDG_DATA_HOME=" + folder_.File("data")};
};

TEST_F(RecoveryCommands, ALogIsListedShownAndDropped) {
    EXPECT_EQ(Output({"recovery", "list"}), "");
    {
        const LogKeeper keeper(state_, data_ + "/recovery");
        Paint(3, 2);
        Paint(4, 2);
    }
    EXPECT_EQ(Output({"recovery", "list"}),
              "1: TIME, 2 changes to " + state_.Terrain.LFilename +
                  "; is offered when the theater is opened\n");
    EXPECT_NE(Output({"recovery", "show", "1"})
                  .find("damaged: false\nstate: is offered when the theater is opened\n"
                        "TIME  Paint 1 post\nTIME  Paint 1 post\n"),
              std::string::npos);
    EXPECT_NE(
        Output({"recovery", "show", "1", "--json"}).find("\"change\": \"Paint 1 post\""),
        std::string::npos);
    tests::Spill(state_.Catalogue.BinPath, "another");
    EXPECT_NE(Output({"recovery", "list"}).find("does not fit: "), std::string::npos);
    Output({"recovery", "drop", "2"}, 2);
    EXPECT_EQ(Output({"recovery", "drop", "1"}), "1 is gone\n");
    EXPECT_EQ(Output({"recovery", "list", "--json"}), "[]\n");
}

TEST_F(RecoveryCommands, ALogThatIsNoneCanBeDroppedAndOneInUseCannot) {
    folder_.Write("data/vardenix/recovery/1.log", "no log");
    const LogKeeper keeper(state_, data_ + "/recovery");
    Paint(3, 2);
    EXPECT_NE(Output({"recovery", "list"}).find("2: a program is writing it\n"),
              std::string::npos);
    Output({"recovery", "drop", "2"}, 3);
    EXPECT_EQ(Output({"recovery", "drop", "1"}), "1 is gone\n");
    EXPECT_EQ(folder_.Names("data/vardenix/recovery"), "2.log");
}

TEST_F(RecoveryCommands, AnEarlierSaveIsWrittenAndWhatItReplacesIsOneMore) {
    {
        const SaveKeeper keeper(state_, data_ + "/saves");
        Paint(3, 2);
        SaveTheater(state_.Terrain, "", progress_);
        state_.Changes.Saved(Paper::Level2);
    }
    const tests::MadeLevel painted = OnDisk();
    EXPECT_EQ(OutputOn({"saves", "list"}), "l2 1: Level 2 as saved at TIME\n");
    OutputOn({"saves", "restore", "l2", "2"}, 3);
    EXPECT_EQ(OutputOn({"saves", "restore", "l2", "1"}),
              state_.Terrain.LFilename + " is what it was\n");
    EXPECT_TRUE(OnDisk().Posts == level_.Posts);
    EXPECT_EQ(OutputOn({"saves", "list"}), "l2 1: Level 2 as saved at TIME\n"
                                           "l2 2: Level 2 as saved at TIME\n");
    OutputOn({"saves", "restore", "l2", "1"});
    EXPECT_TRUE(OnDisk().Posts == painted.Posts);
    EXPECT_NE(OutputOn({"saves", "list", "--json"}).find("\"number\": 3"),
              std::string::npos);
}

} // namespace
} // namespace vardenix
