// bin of the real vardenix-cli, seen by the tests' own readers of the files.
#include "cli/CliTheater.h"
#include "support/CatalogueReader.h"
#include "support/FaultShimLink.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

// A DXT1 picture of 8 by 8, all of one colour.
std::string Dds(int color) {
    std::string header = "DDS " + Int32Bytes(124) + Int32Bytes(0x81007) + Int32Bytes(8) +
                         Int32Bytes(8) + Int32Bytes(32) + std::string(52, '\0') +
                         Int32Bytes(32) + Int32Bytes(4) + "DXT1" + std::string(20, '\0') +
                         Int32Bytes(0x1000) + std::string(16, '\0');
    for (int block = 0; block < 4; ++block)
        header += Int16Bytes(color) + Int16Bytes(0) + Int32Bytes(0);
    return header;
}

class BinCommandsOfCli : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        folder_.Write("my theater/texture/Texture.bin",
                      CatalogueBytes({{1, {{"SEA.PCX", 1}, {"SHORE.PCX", 0, 1}}},
                                      {4, {{"LAND.PCX"}}},
                                      {9, {{"TOWN.PCX"}}}}));
        level_.At(5, 6).Tile = 32;
        WriteLevel();
    }
    std::string BinPath() const { return folder_.File("my theater/texture/Texture.bin"); }
    FoundCatalogue Catalogue() const { return ReadCatalogue(BinPath()); }
    // The names of the tiles that the three marked posts show.
    std::string Shown() const {
        MadeLevel found = OnDisk();
        const FoundCatalogue catalogue = Catalogue();
        return catalogue.NameOf(found.At(4, 6).Tile) + " " +
               catalogue.NameOf(found.At(5, 6).Tile) + " " +
               catalogue.NameOf(found.At(30, 31).Tile);
    }
    void Done(const std::vector<std::string>& arguments) {
        std::vector<std::string> all{"bin"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ProgramResult result = RunOn(all);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    }
    // Refused as usage, with nothing written.
    std::string Refused(const std::vector<std::string>& arguments) {
        const std::string before = Slurp(BinPath()) + PairOnDisk();
        std::vector<std::string> all{"bin"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ProgramResult result = RunOn(all);
        EXPECT_EQ(result.ExitCode, 2) << result.Output << result.Errors;
        EXPECT_EQ(Slurp(BinPath()) + PairOnDisk(), before);
        return result.Errors;
    }
};

constexpr const char* Before = "SHORE.PCX TOWN.PCX LAND.PCX";

TEST_F(BinCommandsOfCli, ListTellsSetsAndTilesAsJson) {
    const ProgramResult result = RunOn({"bin", "list", "--json"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    std::string text = result.Output;
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(
        text,
        "{\"sets\":[{\"set\":0,\"type\":\"Water\",\"tiles\":["
        "{\"number\":0,\"name\":\"SEA.PCX\",\"areas\":1,\"paths\":0,\"used\":1021},"
        "{\"number\":1,\"name\":\"SHORE.PCX\",\"areas\":0,\"paths\":1,\"used\":1}]},"
        "{\"set\":1,\"type\":\"Plains\",\"tiles\":[{\"number\":16,\"name\":"
        "\"LAND.PCX\",\"areas\":0,\"paths\":0,\"used\":1}]},{\"set\":2,\"type\":"
        "\"Urban\",\"tiles\":[{\"number\":32,\"name\":\"TOWN.PCX\",\"areas\":0,"
        "\"paths\":0,\"used\":1}]}]}");
}

TEST_F(BinCommandsOfCli, AnAppendedSetKeepsTheLandscape) {
    ASSERT_EQ(Shown(), Before);
    const std::string one = folder_.Write("in/new 1.dds", Dds(0xF800));
    const std::string two = folder_.Write("in/H2.dds", Dds(0x07E0));
    Done({"append-set", one, two, "--type", "Thin Forest", "--before", "1"});
    EXPECT_EQ(Catalogue().Story(), "1:SEA.PCX,SHORE.PCX 6:HNEW 1.PCX,H2.PCX 4:LAND.PCX "
                                   "9:TOWN.PCX");
    EXPECT_EQ(Catalogue().NumTiles, 6);
    EXPECT_EQ(Shown(), Before);
    MadeLevel found = OnDisk();
    EXPECT_EQ(found.At(30, 31).Tile, 32);
    EXPECT_EQ(found.At(4, 6).Elevation, -20);
    EXPECT_EQ(Slurp(folder_.File("my theater/texture/texture/Hnew 1.dds")), Dds(0xF800));
    for (const char* name : {"Hnew 1N.dds", "Mnew 1.dds", "Lnew 1N.dds", "M2N.dds"})
        EXPECT_TRUE(std::filesystem::exists(
            folder_.File("my theater/texture/texture/" + std::string(name))))
            << name;
}

TEST_F(BinCommandsOfCli, AfterAndLastPutASetBehindAnother) {
    const std::string picture = folder_.Write("in/a.dds", Dds(0));
    Done({"append-set", picture, "--type", "Rocky", "--after", "0"});
    Done({"append-set", picture, "--type", "Swamp", "--last", "--overwrite"});
    EXPECT_EQ(Catalogue().Story(),
              "1:SEA.PCX,SHORE.PCX 8:HA.PCX 4:LAND.PCX 9:TOWN.PCX 3:HA.PCX");
    EXPECT_EQ(Shown(), Before);
}

TEST_F(BinCommandsOfCli, PicturesOfAnotherTileAreReplacedOnlyWhenTold) {
    const std::string land = folder_.Write("in/land.dds", Dds(0xF800));
    Done({"append-tile", "0", land}); // number 2
    level_.At(7, 7).Tile = 2;
    WriteLevel();
    const std::string target = folder_.File("my theater/texture/texture/Hland.dds");
    ASSERT_EQ(Slurp(target), Dds(0xF800));
    const std::string other = folder_.Write("in2/LAND.DDS", Dds(0x07E0));
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"append-tile", "1", other},
          {"replace-tile", "0", other},
          {"append-set", other, "--type", "Rocky", "--last"}}) {
        const std::string told = Refused(command);
        EXPECT_NE(told.find("tile 2 (HLAND.PCX), which 1 post shows"), std::string::npos)
            << told;
        EXPECT_NE(told.find("--overwrite"), std::string::npos) << told;
        EXPECT_EQ(Slurp(target), Dds(0xF800));
    }
    Done({"replace-tile", "2", other}); // its own
    EXPECT_EQ(Slurp(target), Dds(0x07E0));
    Done({"append-tile", "1", land, "--overwrite"});
    EXPECT_EQ(Slurp(target), Dds(0xF800));
}

TEST_F(BinCommandsOfCli, NamesThatTheCatalogueCutsAreTakenOnlyWhenTold) {
    const std::string fits = folder_.Write("in/abcdefghijklmno.dds", Dds(0xF800));
    const std::string withH = folder_.Write("in/Habcdefghijklmn2.dds", Dds(0xF800));
    Done({"append-tile", "1", fits});
    Done({"append-tile", "1", withH});
    const std::string tooLong = folder_.Write("in/abcdefghijklmnop1.dds", Dds(0xF800));
    const std::string told = Refused({"append-tile", "1", tooLong});
    EXPECT_NE(told.find("abcdefghijklmnop1.dds: at most 15 letters"), std::string::npos)
        << told;
    Done({"append-tile", "1", tooLong, "--overwrite"});
    // Two that the catalogue could not tell apart, whatever is told.
    const std::string second = folder_.Write("in/abcdefghijklmnopqrst2.dds", Dds(0x07E0));
    const std::string third = folder_.Write("in/abcdefghijklmnopqrst3.dds", Dds(0x07E0));
    const std::string before = Slurp(BinPath());
    const ProgramResult both = RunOn(
        {"bin", "append-set", second, third, "--type", "Rocky", "--last", "--overwrite"});
    EXPECT_EQ(both.ExitCode, 3);
    EXPECT_NE(both.Errors.find("would both become the tile"), std::string::npos);
    EXPECT_EQ(Slurp(BinPath()), before);
}

TEST_F(BinCommandsOfCli, PicturesAndCatalogueTakeTheirPlacesTogether) {
    const std::string land = folder_.Write("in/land.dds", Dds(0xF800));
    Done({"append-tile", "0", land});
    const std::string target = folder_.File("my theater/texture/texture/Hland.dds");
    Spill(land, Dds(0x07E0));
    const std::string before = Slurp(BinPath());
    // Somebody changes the catalogue while it is staged.
    const FaultShimLink shim(FAULT_SHIM);
    std::vector<std::string> environment = shim.Environment("touch", 1);
    environment.push_back("FAULT_FILE=" + BinPath() + "x");
    environment.push_back("FAULT_TOUCHED=" + BinPath());
    EXPECT_EQ(RunOn({"bin", "replace-tile", "2", land}, environment).ExitCode, 3);
    EXPECT_EQ(Slurp(target), Dds(0xF800));
    EXPECT_EQ(RunOn({"bin", "replace-tile", "2", land}).ExitCode, 0);
    EXPECT_EQ(Slurp(target), Dds(0x07E0));
}

TEST_F(BinCommandsOfCli, SetsAreMovedRetypedAndDeletedWithTheirPosts) {
    Done({"move-set", "0", "--after", "2"});
    EXPECT_EQ(Catalogue().Story(), "4:LAND.PCX 9:TOWN.PCX 1:SEA.PCX,SHORE.PCX");
    EXPECT_EQ(Shown(), Before);
    Done({"set-type", "1", "Thick Forest"});
    EXPECT_EQ(Catalogue().Story(), "4:LAND.PCX 7:TOWN.PCX 1:SEA.PCX,SHORE.PCX");
    Done({"delete-set", "1"});
    EXPECT_EQ(Catalogue().Story(), "4:LAND.PCX 1:SEA.PCX,SHORE.PCX");
    EXPECT_EQ(Shown(), "SHORE.PCX LAND.PCX LAND.PCX"); // the town fell to tile 0
    EXPECT_EQ(Catalogue().NumTiles, 3);
}

TEST_F(BinCommandsOfCli, KeptNumbersLeaveLevelTwoAlone) {
    const std::string pair = PairOnDisk();
    Done({"delete-set", "1", "--keep-numbers"});
    Done({"move-set", "0", "--after", "1", "--keep-numbers"});
    EXPECT_EQ(PairOnDisk(), pair);
    EXPECT_EQ(Catalogue().Story(), "9:TOWN.PCX 1:SEA.PCX,SHORE.PCX");
}

TEST_F(BinCommandsOfCli, TilesComeChangeAndGo) {
    const std::string picture = folder_.Write("in/a.dds", Dds(0));
    Done({"append-tile", "1", picture});
    EXPECT_EQ(Catalogue().NameOf(17), "HA.PCX");
    Done({"replace-tile", "1", picture, "--overwrite"});
    EXPECT_EQ(Catalogue().Story(), "1:SEA.PCX,HA.PCX 4:LAND.PCX,HA.PCX 9:TOWN.PCX");
    EXPECT_EQ(Catalogue().Sets[0].Tiles[1].Paths.size(), 1U); // they stay
    Done({"delete-tile", "16"});
    EXPECT_EQ(Catalogue().Story(), "1:SEA.PCX,HA.PCX 4:HA.PCX 9:TOWN.PCX");
    EXPECT_EQ(OnDisk().At(30, 31).Tile, 0);
    EXPECT_NE(Refused({"delete-tile", "16"}).find("only tile"), std::string::npos);
}

TEST_F(BinCommandsOfCli, AreasAndPathsAreListedAddedAndDeleted) {
    Done({"areas", "16", "--add", "thick forest,100,200.5,-3"});
    EXPECT_EQ(Catalogue().Sets[1].Tiles[0].Areas.at(0), "7:-3,100,200.5");
    Done({"paths", "16", "--add", "Road,1,2,3,4"});
    Done({"paths", "16", "--add", "Bridge,1,2,3,4,75.25"});
    EXPECT_EQ(Catalogue().Sets[1].Tiles[0].Paths.at(0), "10:50,1,2,3,4");
    EXPECT_EQ(Catalogue().Sets[1].Tiles[0].Paths.at(1), "12:75.25,1,2,3,4");
    Done({"paths", "16", "--delete", "1"});
    EXPECT_EQ(Catalogue().Sets[1].Tiles[0].Paths.size(), 1U);
    EXPECT_EQ(RunOn({"bin", "paths", "16"}).Output,
              "1  Bridge  75.25000  1.00000  2.00000  3.00000  4.00000\n");
}

TEST_F(BinCommandsOfCli, UnusedPicturesAreListedAndDeletedOnRequest) {
    const std::string pictures = "my theater/texture/texture/";
    folder_.Write(pictures + "notes.txt", "x");
    EXPECT_EQ(RunOn({"bin", "unused-pictures"}).Output, "notes.txt\n");
    EXPECT_TRUE(std::filesystem::exists(folder_.File(pictures + "notes.txt")));
    EXPECT_EQ(RunOn({"bin", "unused-pictures", "--delete"}).ExitCode, 0);
    EXPECT_FALSE(std::filesystem::exists(folder_.File(pictures + "notes.txt")));
    EXPECT_TRUE(std::filesystem::exists(folder_.File(pictures + "sea.dds")));
}

TEST_F(BinCommandsOfCli, WhatDoesNotFitIsRefusedBeforeAnythingIsWritten) {
    const std::string picture = folder_.Write("in/a.dds", Dds(0));
    EXPECT_NE(Refused({"delete-set", "3"}).find("sets 0 to 2"), std::string::npos);
    Refused({"append-set", picture, "--type", "Rocky"});
    Refused({"append-set", picture, "--type", "Rocky", "--last", "--before", "1"});
    Refused({"append-set", "a.tga", "--type", "Rocky", "--last"});
    Refused({"append-set", picture, "--type", "Mud", "--last"});
    Refused({"move-set", "1", "--before", "1"});
    Refused({"move-set", "1"});
    Refused({"set-type", "0", "Mud"});
    Refused({"replace-tile", "2", picture});
    Refused({"delete-tile", "17"});
    Refused({"areas", "99"});
    Refused({"areas", "0", "--delete", "2"});
    Refused({"areas", "0", "--add", "Road,1,2,3"});
    Refused({"areas", "0", "--add", "Water,1,2"});
    Refused({"areas", "0", "--add", "Water,1,2,x"});
    std::vector<std::string> many(17, picture);
    many.insert(many.begin(), "append-set");
    many.insert(many.end(), {"--type", "Rocky", "--last"});
    EXPECT_NE(Refused(many).find("17"), std::string::npos);
}

TEST_F(BinCommandsOfCli, ABrokenPictureIsNamedAndNothingChanges) {
    const std::string before = Slurp(BinPath()) + PairOnDisk();
    const std::string good = folder_.Write("in/a.dds", Dds(0));
    const std::string bad = folder_.Write("in/b.dds", Dds(0).substr(0, 150));
    const ProgramResult result =
        RunOn({"bin", "append-set", good, bad, "--type", "Rocky", "--before", "0"});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("b.dds"), std::string::npos) << result.Errors;
    EXPECT_EQ(Slurp(BinPath()) + PairOnDisk(), before);
    EXPECT_FALSE(
        std::filesystem::exists(folder_.File("my theater/texture/texture/Ha.dds")));
}

// Catalogue and level 2 are saved as one: killed anywhere, both are old or both new.
TEST_F(BinCommandsOfCli, AKilledSaveLeavesCatalogueAndLevelTwoThatFit) {
    const FaultShimLink shim(FAULT_SHIM);
    const std::string oldBin = Slurp(BinPath());
    const std::string newStory = "4:LAND.PCX 9:TOWN.PCX 1:SEA.PCX,SHORE.PCX";
    std::string found;
    for (const char* mode : {"kill", "full"}) {
        for (int at = 1; found.empty() || found.back() != '.'; ++at) {
            Spill(BinPath(), oldBin);
            WriteLevel();
            const ProgramResult run = RunOn({"bin", "move-set", "0", "--after", "2"},
                                            shim.Environment(mode, at));
            ASSERT_EQ(RunOn({"bin", "list"}).ExitCode, 0) << mode << at; // it mends
            ASSERT_EQ(Shown(), Before) << mode << at;
            found += Catalogue().Story() == newStory ? 'n' : 'o';
            if (run.ExitCode == 0)
                found += '.';
            ASSERT_LT(at, 100);
        }
        EXPECT_EQ(found.substr(0, 4), "oooo") << mode;
        EXPECT_TRUE(found.ends_with("n.")) << mode;
        found.clear();
    }
}

} // namespace
} // namespace vardenix::tests
