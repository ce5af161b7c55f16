#include "workspace/RestorePoint.h"

#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

constexpr LocalTime Afternoon{
    .Year = 2026, .Month = 11, .Day = 21, .Hour = 15, .Minute = 5};

// A terrain of 16 by 16 posts whose tile numbers are their serials plus `base`.
Terrain Made(int32_t base) {
    Terrain terrain;
    terrain.MapWidth = 16;
    terrain.LxArr = PostArray(256);
    for (int32_t serial = 1; serial <= 256; ++serial)
        terrain.LxArr(serial).TileOffset = base + serial;
    return terrain;
}

int32_t Tile(const Terrain& terrain, int32_t serial) {
    return terrain.LxArr(serial).TileOffset;
}

class RestorePointTest : public testing::Test {
protected:
    std::string Folder() const { return folder_.Path() + "/"; }

    tests::TestFolder folder_;
};

TEST_F(RestorePointTest, IsNineBytesAPostInSerialOrderAndNothingElse) {
    Terrain terrain = Made(0);
    TerrainPost second{};
    second.TileOffset = 0x01020304;
    second.Elevation = -2;
    second.Palette = 5;
    second.X1 = 6;
    second.X2 = 7;
    terrain.LxArr(2) = second;
    CreateRestorePoint(terrain, Afternoon, Folder());
    const std::string bytes = tests::Slurp(folder_.File("VXUndo.tmp"));
    ASSERT_EQ(bytes.size(), 256u * 9);
    EXPECT_EQ(bytes.substr(0, 9), std::string("\1\0\0\0\0\0\0\0\0", 9));
    EXPECT_EQ(bytes.substr(9, 9), std::string("\4\3\2\1\xFE\xFF\5\6\7", 9));
    EXPECT_EQ(bytes.substr(255 * 9, 4), std::string("\0\1\0\0", 4));
}

TEST_F(RestorePointTest, BringsEveryPostBack) {
    CreateRestorePoint(Made(100), Afternoon, Folder());
    Terrain edited = Made(5000);
    EXPECT_EQ(RestoreFromPoint(edited, Folder()), Restored::Done);
    EXPECT_EQ(Tile(edited, 1), 101);
    EXPECT_EQ(Tile(edited, 256), 356);
    EXPECT_EQ(RestoreMessage(Restored::Done), "");
}

TEST_F(RestorePointTest, ANewPointReplacesTheOld) {
    CreateRestorePoint(Made(100), Afternoon, Folder());
    CreateRestorePoint(Made(700), Afternoon, Folder());
    Terrain terrain = Made(0);
    EXPECT_EQ(RestoreFromPoint(terrain, Folder()), Restored::Done);
    EXPECT_EQ(Tile(terrain, 1), 701);
}

TEST_F(RestorePointTest, WithoutAPointTheUserIsTold) {
    Terrain terrain = Made(3);
    EXPECT_EQ(RestoreFromPoint(terrain, Folder()), Restored::NoPoint);
    EXPECT_EQ(RestoreMessage(Restored::NoPoint), "You must first create an Undo Point");
    EXPECT_EQ(Tile(terrain, 1), 4);
}

// What others put where the user's own folder was, after the system had cleared it away.
TEST_F(RestorePointTest, NobodyElsesFolderIsWrittenToOrReadFrom) {
    const std::string own = folder_.File("vardenix-0");
    CreateRestorePoint(Made(100), Afternoon, own + "\\");
    EXPECT_EQ(std::filesystem::status(own).permissions(),
              static_cast<std::filesystem::perms>(0700));
    std::filesystem::rename(own, folder_.File("trap"));
    std::filesystem::create_directory_symlink(folder_.File("trap"), own);
    const std::string point = tests::Slurp(folder_.File("trap/VXUndo.tmp"));
    Terrain terrain = Made(3);
    EXPECT_THROW(CreateRestorePoint(terrain, Afternoon, own + "\\"), RuntimeError);
    EXPECT_THROW(RestoreFromPoint(terrain, own + "\\"), RuntimeError);
    EXPECT_EQ(Tile(terrain, 1), 4);
    EXPECT_EQ(tests::Slurp(folder_.File("trap/VXUndo.tmp")), point);
    // Without a folder there is no point in the working folder either.
    EXPECT_THROW(CreateRestorePoint(terrain, Afternoon, ""), RuntimeError);
    EXPECT_FALSE(std::filesystem::exists("VXUndo.tmp"));
}

TEST_F(RestorePointTest, AFolderThatTheSystemClearedIsMadeAgain) {
    const std::string own = folder_.File("vardenix-0");
    Terrain terrain = Made(3);
    EXPECT_EQ(RestoreFromPoint(terrain, own + "\\"), Restored::NoPoint);
    std::filesystem::remove(own);
    CreateRestorePoint(Made(100), Afternoon, own + "\\");
    EXPECT_EQ(RestoreFromPoint(terrain, own + "\\"), Restored::Done);
    EXPECT_EQ(Tile(terrain, 1), 101);
}

TEST_F(RestorePointTest, APointOfAnotherSizeIsRefused) {
    for (const size_t size : {size_t{0}, size_t{256 * 9 - 1}, size_t{256 * 9 + 9}}) {
        folder_.Write("VXUndo.tmp", std::string(size, '\1'));
        Terrain terrain = Made(3);
        EXPECT_EQ(RestoreFromPoint(terrain, Folder()), Restored::WrongSize) << size;
        EXPECT_EQ(Tile(terrain, 1), 4);
    }
    EXPECT_EQ(RestoreMessage(Restored::WrongSize),
              "The restore point belongs to a theater of another size.");
}

TEST_F(RestorePointTest, TellsWhereAndWhenItWasMade) {
    EXPECT_FALSE(OriginOfPoint(Folder()));
    Terrain terrain = Made(3);
    terrain.LFilename = "/a b/new\nline/theater.L2";
    CreateRestorePoint(terrain, Afternoon, Folder());
    const auto origin = OriginOfPoint(Folder());
    ASSERT_TRUE(origin);
    EXPECT_EQ(origin->Time, "21 Nov 2026 - 15:05");
    EXPECT_EQ(origin->L2File, terrain.LFilename);
    const std::string tip = RestoreTip(origin);
    EXPECT_NE(tip.find("21 Nov 2026 - 15:05"), std::string::npos);
    EXPECT_NE(tip.find(terrain.LFilename), std::string::npos);
}

TEST_F(RestorePointTest, APointThatDoesNotTellIsOfUnknownOrigin) {
    CreateRestorePoint(Made(3), Afternoon, Folder());
    for (const std::string& text :
         {std::string(), std::string("no line end"), std::string("only a time\n"),
          std::string(100000, '\n')}) {
        folder_.Write("VXUndo.txt", text);
        EXPECT_FALSE(OriginOfPoint(Folder())) << text.size();
    }
    folder_.Write("VXUndo.txt", "time\n/path");
    EXPECT_TRUE(OriginOfPoint(Folder()));
    std::filesystem::remove(folder_.File("VXUndo.tmp"));
    EXPECT_FALSE(OriginOfPoint(Folder()));
    EXPECT_FALSE(OriginOfPoint(""));
}

TEST_F(RestorePointTest, OfAnotherTheaterIsAskedAbout) {
    tests::ScriptedDialogs dialogs;
    const PointOrigin origin{"noon", folder_.Write("a/theater.L2", "x")};
    const std::string other = folder_.Write("b/theater.L2", "x");
    EXPECT_TRUE(MayRestoreOtherTheater(origin, origin.L2File, dialogs));
    EXPECT_TRUE(MayRestoreOtherTheater(std::nullopt, other, dialogs));
    for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
        std::string text;
        dialogs.ExpectAnyBox("Attention", answer, &text);
        EXPECT_EQ(MayRestoreOtherTheater(origin, other, dialogs),
                  answer == BoxAnswer::Yes);
        EXPECT_EQ(dialogs.LastButtons(), BoxButtons::YesNo);
        for (const std::string& told : {origin.L2File, other, origin.Time})
            EXPECT_NE(text.find(told), std::string::npos) << text;
    }
}

TEST_F(RestorePointTest, PostsThatAreThereAlreadyDoNotChange) {
    CreateRestorePoint(Made(3), Afternoon, Folder());
    Terrain terrain = Made(3);
    EXPECT_EQ(RestoreFromPoint(terrain, Folder()), Restored::Unchanged);
    terrain.LxArr(256).X2 = 1;
    EXPECT_EQ(RestoreFromPoint(terrain, Folder()), Restored::Done);
    EXPECT_EQ(terrain.LxArr(256).X2, 0);
}

} // namespace
} // namespace vardenix
