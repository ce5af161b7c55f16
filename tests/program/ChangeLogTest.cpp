#include "program/ChangeLog.h"

#include "catalogue/TextureBinFile.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace vardenix {
namespace {

// What the papers hold, taken whole, so that nothing of the log's own work is believed.
struct WholeCopy {
    std::vector<TerrainPost> Posts;
    std::vector<int16_t> Heights;
    std::vector<std::byte> Catalogue;
    std::string MapFile;
    std::vector<std::string> Cities;

    bool operator==(const WholeCopy& other) const = default;
};

class ChangeLogTest : public testing::Test {
protected:
    ChangeLogTest() {
        terrain_.MapWidth = 32;
        terrain_.LxArr = PostArray(32 * 32);
        terrain_.Elevations.EMapWidth = 128;
        terrain_.Elevations.L0ElvArr = HeightArray(128 * 128);
        for (int set = 0; set < 3; ++set)
            AppendSet("M" + std::to_string(set) + "A.pcx");
    }

    void AppendSet(const std::string& name) {
        TileRecord tile;
        std::copy(name.begin(), name.end(), tile.TileName.begin());
        TileSet set;
        set.TileCount = 1;
        set.Terrain = 4;
        set.Tiles.push_back(tile);
        catalogue_.Bin.Sets.push_back(set);
        ++catalogue_.Bin.NumSets;
        ++catalogue_.Bin.NumTiles;
        catalogue_.Lookup = LookupOf(catalogue_.Bin, "/nowhere/");
    }

    WholeCopy Copy() const {
        WholeCopy copy;
        for (int32_t serial = 1; serial <= terrain_.LxArr.UpperBound(); ++serial)
            copy.Posts.push_back(terrain_.LxArr(serial));
        for (int32_t serial = 1; serial <= 128 * 128; ++serial)
            copy.Heights.push_back(terrain_.Elevations.L0ElvArr(serial));
        copy.Catalogue = BytesOf(catalogue_.Bin);
        copy.MapFile.resize(sizeof map_);
        std::memcpy(copy.MapFile.data(), &map_, sizeof map_);
        for (const Feature& city : features_.Cities)
            copy.Cities.push_back(city.Text);
        return copy;
    }

    int UpTo(int most) {
        return static_cast<int>(random_() % (static_cast<unsigned>(most) + 1));
    }

    // Tile numbers of a rectangle, told by runs, as a brush does it.
    void PaintByRuns() {
        const int32_t x = UpTo(20), y = UpTo(30), count = 1 + UpTo(10);
        const int32_t tile = UpTo(5);
        std::vector<TileRun> runs;
        for (int32_t serial = y * 32 + x + 1, i = 0; i < count; ++i, ++serial) {
            const int32_t old = terrain_.LxArr(serial).TileOffset;
            terrain_.LxArr(serial).TileOffset = tile;
            if (old != tile)
                runs.push_back({serial, 1, old, tile});
        }
        Change change{.Name = "Paint"};
        change.Posts.Runs = runs;
        changes_.Add(change);
    }

    // Any command, round which somebody has put a Recording.
    void RunCommand() {
        switch (UpTo(5)) {
        case 0:
            return PaintByRuns();
        case 1: {
            const Recording made(changes_, {Paper::Level2}, "Import");
            for (int i = 0; i < 40; ++i)
                terrain_.LxArr(1 + UpTo(1023)) =
                    TerrainPost{UpTo(40), static_cast<int16_t>(UpTo(900)),
                                static_cast<uint8_t>(UpTo(255)), 1, 2};
            return;
        }
        case 2: {
            const Recording made(changes_, {Paper::Heights}, "Heights");
            for (int i = 0; i < 40; ++i)
                terrain_.Elevations.L0ElvArr(1 + UpTo(128 * 128 - 1)) =
                    static_cast<int16_t>(UpTo(3000) - 500);
            return;
        }
        case 3: {
            const Recording made(changes_, {Paper::Catalogue, Paper::Level2}, "Set");
            if (catalogue_.Bin.NumSets > 1 && UpTo(1) == 0) {
                catalogue_.Bin.Sets.erase(catalogue_.Bin.Sets.begin() + 1 +
                                          UpTo(catalogue_.Bin.NumSets - 1));
                --catalogue_.Bin.NumSets;
                --catalogue_.Bin.NumTiles;
            } else {
                AppendSet("N" + std::to_string(UpTo(99)) + ".pcx");
            }
            for (int32_t serial = 1; serial <= 1024; ++serial)
                if (terrain_.LxArr(serial).TileOffset > 16)
                    terrain_.LxArr(serial).TileOffset -= 16;
            return;
        }
        case 4: {
            const Recording made(changes_, {Paper::MapFile}, "Colour");
            map_.Palette[UpTo(255)].Green = static_cast<uint8_t>(UpTo(255));
            map_.Longitude = static_cast<float>(UpTo(180));
            return;
        }
        default: {
            const Recording made(changes_, {Paper::Features}, "Load Cities.tdf");
            Feature city;
            city.Text = std::to_string(UpTo(1000000));
            features_.Cities.push_back(city);
        }
        }
    }

    Terrain terrain_;
    Catalogue catalogue_;
    MapFileRecord map_{};
    FeatureSet features_;
    Papers papers_{terrain_, catalogue_, map_, features_};
    ChangeLog changes_{papers_};
    std::mt19937 random_{7};
};

TEST_F(ChangeLogTest, AThousandCommandsWithWalksAgreeWithWholeCopies) {
    std::vector<WholeCopy> states{Copy()}; // by the log's position
    for (int round = 0; round < 1000; ++round) {
        const size_t before = changes_.Position();
        RunCommand();
        if (changes_.Position() > before) {
            states.resize(before + 1);
            states.push_back(Copy());
        }
        ASSERT_EQ(changes_.Count() + 1, states.size());
        if (round % 7 != 0)
            continue;
        for (int steps = UpTo(12); steps > 0; --steps) {
            if (UpTo(2) != 0 && changes_.NextBack() != nullptr)
                changes_.Back();
            else if (changes_.NextAgain() != nullptr)
                changes_.Again();
            ASSERT_EQ(Copy(), states.at(changes_.Position())) << "round " << round;
        }
    }
    while (changes_.NextBack() != nullptr)
        changes_.Back();
    EXPECT_EQ(Copy(), states.front());
}

TEST_F(ChangeLogTest, ACommandThatChangesNothingIsNoEntry) {
    { const Recording made(changes_, {AllPapers.begin(), AllPapers.end()}, "None"); }
    EXPECT_EQ(changes_.Count(), 0U);
    EXPECT_FALSE(changes_.AnyUnsaved());
}

TEST_F(ChangeLogTest, ACommandThatFailsLeavesWhatItHasDone) {
    const auto fails = [this] {
        const Recording made(changes_, {Paper::Level2}, "Import a.exp");
        terrain_.LxArr(7).TileOffset = 3;
        throw RuntimeError(ErrorNumber::DiskFull);
    };
    EXPECT_EQ(tests::ErrorOf(fails).NumberValue(), 61);
    ASSERT_EQ(changes_.Count(), 1U);
    changes_.Back();
    EXPECT_EQ(int32_t{terrain_.LxArr(7).TileOffset}, 0);
}

// A command lets events through; a key must not take back what it stands on.
TEST_F(ChangeLogTest, NothingIsTakenBackInTheMiddleOfACommand) {
    PaintByRuns();
    ASSERT_NE(changes_.NextBack(), nullptr);
    {
        const Recording made(changes_, {Paper::Level2}, "Import");
        EXPECT_EQ(changes_.NextBack(), nullptr);
        EXPECT_EQ(tests::ErrorOf([this] { changes_.Back(); }).NumberValue(), 5);
    }
    EXPECT_NE(changes_.NextBack(), nullptr);
}

TEST_F(ChangeLogTest, UnsavedIsWhatDiffersFromTheDisk) {
    const auto paint = [this](int32_t tile) {
        const Recording made(changes_, {Paper::Level2}, "Paint");
        terrain_.LxArr(1).TileOffset = tile;
    };
    paint(1);
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
    EXPECT_FALSE(changes_.Unsaved(Paper::Heights));
    changes_.Back();
    EXPECT_FALSE(changes_.Unsaved(Paper::Level2));
    changes_.Again();
    changes_.Saved(Paper::Level2);
    EXPECT_FALSE(changes_.Unsaved(Paper::Level2));
    changes_.Back();
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
    // What comes in its place is another state, though the tile may be the same.
    paint(1);
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
    EXPECT_EQ(changes_.NextAgain(), nullptr);
}

TEST_F(ChangeLogTest, FeaturesAreNeverUnsaved) {
    {
        const Recording made(changes_, {Paper::Features}, "Load Cities.tdf");
        features_.Cities.emplace_back();
    }
    EXPECT_FALSE(changes_.AnyUnsaved());
    changes_.Back();
    EXPECT_FALSE(changes_.AnyUnsaved());
    EXPECT_EQ(features_.Cities.size(), 1U);
}

TEST_F(ChangeLogTest, AStrokeGoesOnInItsOwnEntry) {
    Change first{.Name = "Paint 1 post"};
    first.Posts.Runs = {{5, 1, 0, 9}};
    terrain_.LxArr(5).TileOffset = 9;
    changes_.Add(first);
    terrain_.LxArr(6).TileOffset = 9;
    changes_.Grow(std::vector<TileRun>{{6, 1, 0, 9}}, "Paint 2 posts");
    ASSERT_EQ(changes_.Count(), 1U);
    EXPECT_EQ(changes_.At(0).Name, "Paint 2 posts");
    changes_.Back();
    EXPECT_EQ(int32_t{terrain_.LxArr(5).TileOffset}, 0);
    EXPECT_EQ(int32_t{terrain_.LxArr(6).TileOffset}, 0);
    EXPECT_FALSE(changes_.Unsaved(Paper::Level2));
    EXPECT_EQ(tests::ErrorOf([this] {
                  changes_.Grow(std::vector<TileRun>{{7, 1, 0, 9}}, "");
              }).NumberValue(),
              5);
}

// A fill of a whole theater is remembered by its runs, whatever the posts hold besides.
TEST_F(ChangeLogTest, TheOldestGoBeyondTheBound) {
    for (int i = 0; i < 5; ++i) {
        Change change{.Name = std::to_string(i)};
        change.Posts.Runs.assign(ChangeLog::MostBytes / sizeof(TileRun) / 3,
                                 {1, 1, 0, 0});
        changes_.Add(std::move(change));
    }
    ASSERT_EQ(changes_.Count(), 2U);
    EXPECT_EQ(changes_.At(0).Name, "3");
    EXPECT_EQ(changes_.Position(), 2U);
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
    changes_.Back();
    changes_.Back();
    EXPECT_EQ(changes_.NextBack(), nullptr);
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
}

TEST_F(ChangeLogTest, AnotherFileInItsPlaceForgetsWhatLedThere) {
    const auto raise = [this] {
        const Recording made(changes_, {Paper::Heights}, "Raise");
        ++terrain_.Elevations.L0ElvArr(1);
    };
    const auto paint = [this] {
        const Recording made(changes_, {Paper::Level2}, "Paint");
        ++terrain_.LxArr(1).TileOffset;
    };
    paint();
    raise();
    paint();
    changes_.LoadedAnew(Paper::Heights);
    ASSERT_EQ(changes_.Count(), 1U);
    EXPECT_FALSE(changes_.Unsaved(Paper::Heights));
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
    changes_.Back();
    EXPECT_FALSE(changes_.Unsaved(Paper::Heights));
    EXPECT_TRUE(changes_.Unsaved(Paper::Level2));
    EXPECT_EQ(changes_.NextBack(), nullptr);
    // One that waits to be brought again means nothing to the other file.
    raise();
    changes_.Back();
    changes_.LoadedAnew(Paper::Heights);
    EXPECT_EQ(changes_.NextAgain(), nullptr);
    EXPECT_FALSE(changes_.Unsaved(Paper::Heights));
}

// What was made of other bytes is refused, and nothing is half done.
TEST_F(ChangeLogTest, AChangeThatDoesNotFitChangesNothing) {
    {
        const Recording made(changes_, {Paper::Catalogue, Paper::Level2}, "Set");
        AppendSet("X.pcx");
        terrain_.LxArr(3).TileOffset = 8;
    }
    catalogue_.Bin.Sets[4].Terrain = 7; // past the log
    const WholeCopy before = Copy();
    EXPECT_EQ(tests::ErrorOf([this] { changes_.Back(); }).NumberValue(), 9);
    EXPECT_EQ(Copy(), before);
    EXPECT_EQ(changes_.Position(), 1U);
}

TEST(ByteDelta, IsTheShortestStretch) {
    const auto bytes = [](std::string_view text) {
        return std::vector<std::byte>(reinterpret_cast<const std::byte*>(text.data()),
                                      reinterpret_cast<const std::byte*>(text.data()) +
                                          text.size());
    };
    const ByteDelta delta = ChangedBetween(bytes("abcabc"), bytes("abcXabc"));
    EXPECT_EQ(delta.Offset, 3U);
    EXPECT_TRUE(delta.Old.empty());
    EXPECT_EQ(delta.New, bytes("X"));
    EXPECT_EQ(WithNew(bytes("abcabc"), delta), bytes("abcXabc"));
    EXPECT_EQ(WithOld(bytes("abcXabc"), delta), bytes("abcabc"));
    EXPECT_EQ(tests::ErrorOf([&] { WithOld(bytes("abcYabc"), delta); }).NumberValue(), 9);
    EXPECT_EQ(tests::ErrorOf([&] { WithOld(bytes("ab"), delta); }).NumberValue(), 9);
    EXPECT_TRUE(ChangedBetween(bytes("same"), bytes("same")).Empty());
}

} // namespace
} // namespace vardenix
