#include "bineditor/TileIntake.h"

#include "support/PictureMaker.h"
#include "support/PlainUser.h"
#include "support/RecordingProgress.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::BlockTile;
using tests::ErrorOf;
using tests::Slurp;
using tests::TestFolder;

class TileIntakeTest : public testing::Test {
protected:
    TileIntakeTest() {
        std::filesystem::create_directory(folder_.File("dds"));
        std::filesystem::create_directory(folder_.File("Temp"));
        place_ = {folder_.File("dds/"), folder_.File("Temp/"), "C:\\VX\\", 16, 8};
    }

    std::string Chosen(const std::string& name, const std::string& bytes) {
        return folder_.Write("from/" + name, bytes);
    }
    bool TakeIn(const std::vector<std::string>& files) {
        return TakeInPictures(files, place_, progress_);
    }
    std::string Picture(const std::string& name) {
        return Slurp(folder_.File("dds/" + name));
    }
    static std::string Names(const std::string& folder) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        std::string text;
        for (const std::string& name : names)
            text += (text.empty() ? "" : " ") + name;
        return text;
    }
    std::string Pictures() { return Names(folder_.File("dds")); }
    std::string Scratch() { return Names(folder_.File("Temp")); }
    // "16x8" by the header.
    static std::string SizeOf(const std::string& dds) {
        const auto number = [&](size_t at) {
            return static_cast<unsigned char>(dds.at(at)) +
                   256 * static_cast<unsigned char>(dds.at(at + 1));
        };
        return std::to_string(number(16)) + "x" + std::to_string(number(12));
    }

    TestFolder folder_;
    IntakePlace place_;
    tests::RecordingProgress progress_;
};

TEST_F(TileIntakeTest, AFamilyOfSixComesFromADayAndItsNight) {
    const std::string day = BlockTile(32, 32, "DXT1");
    const std::string night = BlockTile(32, 32, "DXT3");
    Chosen("1234N.dds", night);
    ASSERT_TRUE(TakeIn({Chosen("1234.dds", day)}));
    EXPECT_EQ(Pictures(),
              "H1234.dds H1234N.dds L1234.dds L1234N.dds M1234.dds M1234N.dds");
    EXPECT_EQ(Picture("H1234.dds"), day);
    EXPECT_EQ(Picture("H1234N.dds"), night);
    for (const char* name : {"M1234.dds", "M1234N.dds"})
        EXPECT_EQ(SizeOf(Picture(name)), "16x16");
    for (const char* name : {"L1234.dds", "L1234N.dds"})
        EXPECT_EQ(SizeOf(Picture(name)), "8x8");
    EXPECT_EQ(Scratch(), "run.bat");
}

TEST_F(TileIntakeTest, ANameWithItsHGivesTheSameFamilyAndLooksForItsOwnNight) {
    const std::string night = BlockTile(32, 32, "DXT5");
    Chosen("H1234N.dds", night);
    Chosen("1234N.dds", BlockTile(32, 32, "DXT1"));
    ASSERT_TRUE(TakeIn({Chosen("H1234.dds", BlockTile(32, 32, "DXT1"))}));
    EXPECT_EQ(Pictures(),
              "H1234.dds H1234N.dds L1234.dds L1234N.dds M1234.dds M1234N.dds");
    EXPECT_EQ(Picture("H1234N.dds"), night);
}

TEST_F(TileIntakeTest, WithoutANightItIsBlackAndAsWideAsTheDay) {
    ASSERT_TRUE(TakeIn({Chosen("a.dds", BlockTile(32, 16, "DXT1"))}));
    const std::string night = Picture("HaN.dds");
    EXPECT_EQ(SizeOf(night), "32x32");
    EXPECT_EQ(night.substr(84, 4), "DXT1");
    ASSERT_EQ(night.size(), 128U + 64 * 8);
    for (size_t block = 128; block < night.size(); block += 8) {
        // Both ends black, and no transparent code, which 3 is when they are equal.
        EXPECT_EQ(night.substr(block, 4), std::string(4, '\0'));
        for (size_t i = 4; i < 8; ++i)
            for (int shift = 0; shift < 8; shift += 2)
                ASSERT_NE(static_cast<unsigned char>(night[block + i]) >> shift & 3, 3);
    }
    EXPECT_EQ(SizeOf(Picture("MaN.dds")), "16x16");
    EXPECT_EQ(SizeOf(Picture("LaN.dds")), "8x8");
    EXPECT_EQ(Picture("Ha.dds"), BlockTile(32, 16, "DXT1"));
}

TEST_F(TileIntakeTest, AChosenFileThatIsItsOwnTargetStaysAsItIs) {
    const std::string day = BlockTile(32, 32, "DXT1");
    const std::string path = folder_.Write("dds/H7.dds", day);
    const auto before = std::filesystem::last_write_time(path);
    std::filesystem::last_write_time(path, before - std::chrono::hours(5));
    ASSERT_TRUE(TakeIn({path}));
    EXPECT_EQ(Picture("H7.dds"), day);
    EXPECT_EQ(std::filesystem::last_write_time(path), before - std::chrono::hours(5));
    EXPECT_EQ(Pictures(), "H7.dds H7N.dds L7.dds L7N.dds M7.dds M7N.dds");
}

TEST_F(TileIntakeTest, PicturesOfTheSameNameAreReplacedWhateverTheirCase) {
    folder_.Write("dds/h1.DDS", "old");
    folder_.Write("dds/m1n.dds", "old");
    ASSERT_TRUE(TakeIn({Chosen("1.dds", BlockTile(16, 16, "DXT1"))}));
    EXPECT_EQ(Pictures(), "H1N.dds L1.dds L1N.dds M1.dds h1.DDS m1n.dds");
    EXPECT_EQ(Picture("h1.DDS"), BlockTile(16, 16, "DXT1"));
    EXPECT_NE(Picture("m1n.dds"), "old");
}

TEST_F(TileIntakeTest, SixteenComeTogetherWhateverTheThreads) {
    std::vector<std::string> files;
    std::string all;
    for (int i = 10; i < 26; ++i)
        files.push_back(Chosen(std::to_string(i) + ".dds", BlockTile(16, 16, "DXT1")));
    ASSERT_TRUE(TakeIn(files));
    for (int i = 10; i < 26; ++i)
        for (const char* letter : {"H", "M", "L"})
            for (const char* night : {"", "N"})
                EXPECT_NE(Pictures().find(letter + std::to_string(i) + night + ".dds"),
                          std::string::npos);
    // Told between two pictures; the other threads may have begun with the first ones.
    const std::string story = progress_.Story();
    EXPECT_TRUE(story.starts_with("text ")) << story;
    EXPECT_NE(story.find(".dds|bar "), std::string::npos) << story;
    EXPECT_NE(story.find("|events"), std::string::npos) << story;
}

TEST_F(TileIntakeTest, ABrokenPictureOfManyLeavesTheFolderAsItWas) {
    folder_.Write("dds/H1.dds", "what was there");
    const std::string good = Chosen("1.dds", BlockTile(16, 16, "DXT1"));
    const std::string whole = BlockTile(16, 16, "DXT1");
    for (const std::string& bad :
         {std::string("no DDS at all"), whole.substr(0, whole.size() - 1),
          tests::DdsHeader(4000000000U, 4000000000U, {"DXT1"}) + "x", std::string()}) {
        const std::string path = Chosen("2.dds", bad);
        const RuntimeError error = ErrorOf([&] { TakeIn({good, path}); });
        EXPECT_EQ(error.NumberValue(), 481);
        EXPECT_NE(error.Detail().find("2.dds"), std::string::npos);
        EXPECT_EQ(Pictures(), "H1.dds");
        EXPECT_EQ(Picture("H1.dds"), "what was there");
        EXPECT_EQ(Scratch(), "");
    }
}

TEST_F(TileIntakeTest, ABrokenNightIsNamed) {
    Chosen("1N.dds", "no DDS");
    const RuntimeError error =
        ErrorOf([&] { TakeIn({Chosen("1.dds", BlockTile(16, 16, "DXT1"))}); });
    EXPECT_EQ(error.NumberValue(), 481);
    EXPECT_NE(error.Detail().find("1N.dds"), std::string::npos);
    EXPECT_EQ(Pictures(), "");
    EXPECT_EQ(Scratch(), "");
}

TEST_F(TileIntakeTest, AFileGoneSinceItWasChosenIsNamed) {
    const RuntimeError error = ErrorOf([&] { TakeIn({folder_.File("from/9.dds")}); });
    EXPECT_EQ(error.NumberValue(), 53);
    EXPECT_NE(error.Detail().find("9.dds"), std::string::npos);
}

TEST_F(TileIntakeTest, AFolderWithoutRightsIsNamedAndStaysAsItWas) {
    const std::string good = Chosen("1.dds", BlockTile(16, 16, "DXT1"));
    folder_.Write("dds/H1.dds", "what was there");
    for (const char* name : {"", "from", "Temp"})
        tests::LetOthers(folder_.File(name), 7);
    tests::LetOthers(good, 6);
    tests::LetOthers(folder_.File("dds"), 5);
    {
        const tests::PlainUser user;
        const RuntimeError error = ErrorOf([&] { TakeIn({good}); });
        EXPECT_TRUE(error.NumberValue() == 70 || error.NumberValue() == 75)
            << error.what();
        EXPECT_NE(error.Detail().find("H1.dds"), std::string::npos) << error.what();
    }
    EXPECT_EQ(Pictures(), "H1.dds");
    EXPECT_EQ(Picture("H1.dds"), "what was there");
}

TEST_F(TileIntakeTest, NothingChosenIsTakenInAtOnce) {
    EXPECT_TRUE(TakeInPictures({}, place_, progress_, [] { return true; }));
    EXPECT_EQ(Pictures(), "");
}

TEST_F(TileIntakeTest, AStopLeavesNothing) {
    const std::string one = Chosen("1.dds", BlockTile(16, 16, "DXT1"));
    const std::string two = Chosen("2.dds", BlockTile(16, 16, "DXT1"));
    for (int after : {0, 1}) {
        int asked = 0;
        EXPECT_FALSE(TakeInPictures({one, two}, place_, progress_,
                                    [&] { return asked++ >= after; }));
        EXPECT_EQ(Pictures(), "");
    }
}

TEST_F(TileIntakeTest, TwoThatWouldBecomeTheSamePictureAreRefused) {
    const RuntimeError error = ErrorOf([&] {
        TakeIn({Chosen("1.dds", BlockTile(16, 16, "DXT1")),
                Chosen("H1.dds", BlockTile(16, 16, "DXT3"))});
    });
    EXPECT_EQ(error.NumberValue(), 52);
    EXPECT_EQ(error.Detail(),
              "1.dds and H1.dds would both become H1.dds; choose only one of them");
    EXPECT_EQ(Pictures(), "");
}

TEST_F(TileIntakeTest, ANightChosenBesideItsDayIsATileOfItsOwnToo) {
    const std::string night = BlockTile(16, 16, "DXT3");
    ASSERT_TRUE(
        TakeIn({Chosen("1.dds", BlockTile(16, 16, "DXT1")), Chosen("1N.dds", night)}));
    EXPECT_EQ(Pictures(), "H1.dds H1N.dds H1NN.dds L1.dds L1N.dds L1NN.dds M1.dds "
                          "M1N.dds M1NN.dds");
    EXPECT_EQ(Picture("H1N.dds"), night);
}

TEST_F(TileIntakeTest, NamesThatLeadOutOfTheFolderAreRefusedBeforeAnythingIsWritten) {
    for (const char* name : {"..\\x.dds", "../x.dds", "a/b.dds", "a..dds", "a\\b.dds"}) {
        TileFamily family;
        const RuntimeError error =
            ErrorOf([&] { MakeTileFamily(folder_.File("from/"), name, place_, family); });
        EXPECT_EQ(error.NumberValue(), 52) << name;
    }
    EXPECT_EQ(Scratch() + Pictures(), "");
    EXPECT_EQ(ErrorOf([&] { TakeIn({Chosen("a..b.dds", "")}); }).NumberValue(), 52);
    // A letter that the catalogue cannot hold.
    EXPECT_EQ(ErrorOf([&] { TakeIn({Chosen("\xC4\x8C.dds", "")}); }).NumberValue(), 52);
}

TEST_F(TileIntakeTest, SizesOfTheSettingsAreBroughtIntoTheirRange) {
    Configuration settings;
    settings.MTile = -3;
    settings.LTile = 32767;
    const IntakePlace place = IntakePlaceOf("/d/", {}, settings);
    EXPECT_EQ(place.MTile, 1);
    EXPECT_EQ(place.LTile, 8192);
}

} // namespace
} // namespace vardenix
