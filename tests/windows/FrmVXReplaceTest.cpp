#include "search/windows/FrmVXReplace.h"

#include "platform/windows/PinkBox.h"
#include "windows/WindowTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

namespace vardenix {
namespace {

class ReplaceTest : public testing::Test {
protected:
    // Tile 0 "Lake" on 200 posts, tile 1 "Wheat" on 56.
    ReplaceTest() {
        state_.Catalogue.Lookup.resize(16);
        for (const size_t tile : {0U, 1U}) {
            state_.Catalogue.Lookup[tile].Name = tile == 0 ? "Lake" : "Wheat";
            state_.Catalogue.Lookup[tile].Terrain = tile == 0 ? 1 : 4;
        }
        state_.Terrain.MapWidth = 16;
        state_.Terrain.LxArr = PostArray(256);
        for (int32_t serial = 201; serial <= 256; ++serial)
            state_.Terrain.LxArr(serial).TileOffset = 1;
        window_.show();
    }

    template <typename Control>
    Control& The(const char* name) {
        return tests::Find<Control>(window_, name);
    }
    void Type(const char* box, const char* text) {
        The<QLineEdit>(box).clear();
        QTest::keyClicks(&The<QLineEdit>(box), text);
    }
    QString Text(const char* label) { return The<QLabel>(label).text(); }
    bool CanReplace() { return The<QPushButton>("cmdReplace").isEnabled(); }

    ProgramState state_;
    std::vector<RowSpan> selected_;
    FrmVXReplace window_{state_, [this] { return std::span<const RowSpan>(selected_); }};
};

TEST_F(ReplaceTest, TellsHowManyPostsBeforeAnythingHappens) {
    EXPECT_EQ(Text("lblCount"), "0 posts give way");
    EXPECT_FALSE(CanReplace());
    Type("txtOld", "whe");
    EXPECT_EQ(Text("lblOld"), "Wheat");
    EXPECT_EQ(Text("lblCount"), "56 posts give way");
    EXPECT_FALSE(CanReplace());
    Type("txtNew", "0");
    EXPECT_EQ(Text("lblNew"), "Lake");
    EXPECT_TRUE(CanReplace());
}

TEST_F(ReplaceTest, AWordThatMeansNoTileIsPink) {
    Type("txtOld", "0, rye");
    Type("txtNew", "7");
    EXPECT_TRUE(IsPink(The<QLineEdit>("txtOld")));
    EXPECT_TRUE(IsPink(The<QLineEdit>("txtNew")));
    EXPECT_EQ(Text("lblOld"), "no tile: RYE");
    EXPECT_FALSE(CanReplace());
    Type("txtOld", "0");
    EXPECT_FALSE(IsPink(The<QLineEdit>("txtOld")));
}

TEST_F(ReplaceTest, TheTileOfThePaletteTakesTheirPlace) {
    window_.SetOld(1);
    window_.TileChosen(0);
    EXPECT_EQ(The<QLineEdit>("txtNew").text(), "0");
    Type("txtNew", "1");
    window_.TileChosen(0); // still the same one
    EXPECT_EQ(The<QLineEdit>("txtNew").text(), "1");
    window_.TileChosen(-1);
    EXPECT_EQ(The<QLineEdit>("txtNew").text(), "1");
}

TEST_F(ReplaceTest, TheSelectionBoundsIt) {
    Type("txtOld", "1");
    selected_ = {{12, 6, 9}, {13, 0, 0}}; // tile 1 begins at the ninth of the first row
    The<QRadioButton>("optSelection").click();
    EXPECT_EQ(The<QRadioButton>("optSelection").text(), "In the &selection (5 posts)");
    EXPECT_EQ(Text("lblCount"), "3 posts give way");
    EXPECT_EQ(window_.Wish().Where, ReplaceWhere::Selection);
}

TEST_F(ReplaceTest, EdgesFitForOneTileOnly) {
    Type("txtNew", "0");
    The<QCheckBox>("chkFitting").click();
    EXPECT_TRUE(window_.Wish().Fitting);
    Type("txtNew", "0,1");
    EXPECT_FALSE(The<QCheckBox>("chkFitting").isEnabled());
}

TEST_F(ReplaceTest, OfSeveralTilesTheDrawCanBeChosen) {
    Type("txtNew", "0");
    EXPECT_FALSE(The<QSpinBox>("spnSeed").isEnabled());
    Type("txtNew", "0,1");
    EXPECT_EQ(Text("lblNew"), "2 tiles");
    EXPECT_TRUE(The<QSpinBox>("spnSeed").isEnabled());
    The<QSpinBox>("spnSeed").setValue(7);
    EXPECT_EQ(window_.Wish().Seed, 7U);
}

TEST_F(ReplaceTest, HitsAreCountedAsTheyAreNow) {
    Type("txtOld", "0");
    state_.Search.Results = {0, 1, 2, 250};
    The<QRadioButton>("optHits").click();
    EXPECT_EQ(The<QRadioButton>("optHits").text(),
              "In the &hits of the last search (3 posts)");
    EXPECT_EQ(Text("lblCount"), "2 posts give way");
    state_.Terrain.LxArr(1).TileOffset = 1;
    window_.CountAnew();
    EXPECT_EQ(Text("lblCount"), "1 post gives way");
}

TEST_F(ReplaceTest, EnterReplacesAndTheWindowStays) {
    const QSignalSpy wanted(&window_, &FrmVXReplace::ReplaceWanted);
    Type("txtOld", "wheat");
    Type("txtNew", "lake");
    QTest::keyClick(&The<QLineEdit>("txtNew"), Qt::Key_Return);
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_TRUE(window_.isVisible());
    const ReplaceWish wish = window_.Wish();
    EXPECT_EQ(wish.Old + " " + wish.New, "wheat lake");
    EXPECT_EQ(wish.Where, ReplaceWhere::Everywhere);
    The<QPushButton>("cmdClose").click();
    EXPECT_FALSE(window_.isVisible());
}

} // namespace
} // namespace vardenix
