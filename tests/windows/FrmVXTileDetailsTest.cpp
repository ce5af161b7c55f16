#include "workspace/windows/FrmVXTileDetails.h"

#include "support/RecordingCommands.h"
#include "windows/WindowTest.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <vector>

namespace vardenix {
namespace {

using tests::Find;

TerrainPost Post() {
    TerrainPost post{};
    post.TileOffset = 3;
    post.Elevation = -250;
    post.Palette = 17;
    post.X1 = 1;
    post.X2 = 2;
    return post;
}

class FrmVXTileDetailsTest : public testing::Test {
protected:
    FrmVXTileDetailsTest() {
        lookup_.resize(16);
        lookup_[3].Name = "HPLAIN03";
        lookup_[4].Name = "HPLAIN04";
    }

    void OpenPost() {
        window_ = std::make_unique<FrmVXTileDetails>(Post(), Helpers());
        Show();
    }
    void OpenElevation(int16_t feet) {
        window_ = std::make_unique<FrmVXTileDetails>(feet, Helpers());
        Show();
    }
    FrmVXTileDetails::Helpers Helpers() { return {dialogs_, workspace_, lookup_}; }
    void Show() {
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }
    QLineEdit& Box(const char* name) { return Find<QLineEdit>(*window_, name); }
    // As a user does it: the box is entered, its text replaced.
    void Type(const char* name, const char* keys) {
        Box(name).clear();
        QTest::keyClicks(&Box(name), keys);
    }
    std::string Text(const char* name) { return Box(name).text().toStdString(); }
    void Click(const char* name) { Find<QAbstractButton>(*window_, name).click(); }
    const TileDetails& Details() const { return window_->Details(); }

    TileLookup lookup_;
    tests::ScriptedDialogs dialogs_;
    tests::RecordingCommands workspace_;
    std::unique_ptr<FrmVXTileDetails> window_;
};

TEST_F(FrmVXTileDetailsTest, ShowsTheFiveFieldsAndTheTilesName) {
    OpenPost();
    EXPECT_EQ(window_->windowTitle(), "Tile Details");
    EXPECT_EQ(Text("Text1") + " " + Text("Text2") + " " + Text("Text3") + " " +
                  Text("Text4") + " " + Text("Text5"),
              "3 -250 17 1 2");
    EXPECT_EQ(Find<QLabel>(*window_, "lblTile").text(), "HPLAIN03");
    Type("Text1", "4");
    EXPECT_EQ(Find<QLabel>(*window_, "lblTile").text(), "HPLAIN04");
    Type("Text1", "16");
    EXPECT_EQ(Find<QLabel>(*window_, "lblTile").text(), "Not Specified in BIN File");
}

TEST_F(FrmVXTileDetailsTest, ShowsPlaceAndPictureAndStandsBesideItsPost) {
    std::vector<int32_t> asked;
    FrmVXTileDetails::Helpers helpers{dialogs_, workspace_, lookup_};
    helpers.Place = {12, 34};
    helpers.Uncovered = {300, 300, 64, 64};
    helpers.Picture = [&asked](int32_t tile, int side) {
        asked.push_back(tile);
        QImage picture(side, side, QImage::Format_RGB32);
        picture.fill(Qt::red);
        return picture;
    };
    window_ = std::make_unique<FrmVXTileDetails>(Post(), helpers);
    window_->PlaceItself();
    Show();
    EXPECT_EQ(Find<QLabel>(*window_, "lblPlace").text(), "X 12   Y 34");
    EXPECT_FALSE(window_->frameGeometry().intersects(helpers.Uncovered));
    EXPECT_EQ(asked, std::vector<int32_t>{3});
    Type("Text1", "4");
    EXPECT_EQ(asked.back(), 4);
    EXPECT_EQ(Find<QLabel>(*window_, "PicTile").grab().toImage().pixel(48, 48),
              qRgb(255, 0, 0));
}

TEST_F(FrmVXTileDetailsTest, MnemonicsLeadToTheFields) {
    OpenPost();
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    const auto leads = [this](Qt::Key letter, const char* box) {
        QTest::keyClick(window_.get(), letter, Qt::AltModifier);
        EXPECT_TRUE(Box(box).hasFocus()) << box;
    };
    leads(Qt::Key_E, "Text2");
    leads(Qt::Key_P, "Text3");
    leads(Qt::Key_1, "Text4");
    leads(Qt::Key_2, "Text5");
    leads(Qt::Key_T, "Text1");
}

TEST_F(FrmVXTileDetailsTest, BoxesDropWhatIsNoNumber) {
    OpenPost();
    for (const char* name : {"Text1", "Text3", "Text4", "Text5"}) {
        Type(name, "1a-2.");
        EXPECT_EQ(Text(name), "12") << name;
    }
    Type("Text2", "-1x2+");
    EXPECT_EQ(Text("Text2"), "-12");
}

TEST_F(FrmVXTileDetailsTest, TooLargeAValueIsResetAsItIsTyped) {
    OpenPost();
    Type("Text3", "256");
    EXPECT_EQ(Text("Text3"), "0");
    Type("Text4", "255");
    EXPECT_EQ(Text("Text4"), "255");
    Type("Text2", "32769");
    EXPECT_EQ(Text("Text2"), "0");
    Type("Text2", "32768");
    EXPECT_EQ(Text("Text2"), "32768");
}

TEST_F(FrmVXTileDetailsTest, UpdateGivesTheValuesAndMarksTheTerrain) {
    OpenPost();
    Type("Text1", "4");
    Type("Text2", "-12");
    Type("Text3", "255");
    Type("Text4", "9");
    Type("Text5", "8");
    Click("Command2");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(Details().DetailsUpdated);
    TerrainPost expected{};
    expected.TileOffset = 4;
    expected.Elevation = -12;
    expected.Palette = 255;
    expected.X1 = 9;
    expected.X2 = 8;
    EXPECT_TRUE(Details().Entered == expected);
    EXPECT_EQ(workspace_.Story, "L2");
}

TEST_F(FrmVXTileDetailsTest, EnterUpdatesAndEscCloses) {
    OpenPost();
    QTest::keyClick(&Box("Text5"), Qt::Key_Return);
    EXPECT_TRUE(Details().DetailsUpdated);
    OpenPost();
    QTest::keyClick(&Box("Text5"), Qt::Key_Escape);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(Details().DetailsUpdated);
}

TEST_F(FrmVXTileDetailsTest, CloseAfterTypingChangesNothing) {
    OpenPost();
    Type("Text1", "4");
    Click("Command1");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(Details().DetailsUpdated);
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(FrmVXTileDetailsTest, AnOverflowIsToldAndTheWindowStays) {
    OpenPost();
    Type("Text1", "4");
    Type("Text2", "32768");
    dialogs_.ExpectBox("Error...",
                       "ERROR number 6\nOverflow\nElevation 32768: the field takes "
                       "-32768 to 32767.",
                       BoxAnswer::Ok);
    Click("Command2");
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(Details().DetailsUpdated);
    const int32_t tile = Details().Entered.TileOffset;
    EXPECT_EQ(tile, 4);
    // Typing mends the field that is wrong.
    EXPECT_EQ(window_->focusWidget(), &Box("Text2"));
    EXPECT_EQ(Box("Text2").selectedText(), "32768");
    EXPECT_EQ(workspace_.Story, "");
    // Leaving it then is leaving everything as it was.
    window_->close();
    EXPECT_FALSE(Details().DetailsUpdated);
}

TEST_F(FrmVXTileDetailsTest, InL0ModeOnlyTheElevationLives) {
    OpenElevation(410);
    for (const char* name : {"Text1", "Text3", "Text4", "Text5"}) {
        EXPECT_FALSE(Box(name).isEnabled()) << name;
        EXPECT_EQ(Text(name), "0") << name;
    }
    EXPECT_TRUE(Box("Text2").isEnabled());
    EXPECT_EQ(Text("Text2"), "410");
    EXPECT_EQ(Find<QLabel>(*window_, "lblTile").text(), "");
    Type("Text2", "-5");
    Click("Command2");
    const int16_t elevation = Details().Entered.Elevation;
    EXPECT_EQ(elevation, -5);
    EXPECT_EQ(workspace_.Story, "L0");
}

class AskForDetails : public FrmVXTileDetailsTest {
protected:
    const FrmVXTileDetails::Helpers helpers_{dialogs_, workspace_, lookup_};
};

TEST_F(AskForDetails, AnUpdatedDialogGivesWhatWasEntered) {
    tests::WhenModal<FrmVXTileDetails>([](FrmVXTileDetails& dialog) {
        Find<QLineEdit>(dialog, "Text3").setText("44");
        Find<QAbstractButton>(dialog, "Command2").click();
    });
    const auto post = AskForPost(Post(), helpers_);
    ASSERT_TRUE(post);
    TerrainPost expected = Post();
    expected.Palette = 44;
    EXPECT_TRUE(*post == expected);
    tests::WhenModal<FrmVXTileDetails>([](FrmVXTileDetails& dialog) {
        Find<QLineEdit>(dialog, "Text2").setText("-9");
        Find<QAbstractButton>(dialog, "Command2").click();
    });
    EXPECT_EQ(AskForElevation(12, helpers_), int16_t{-9});
}

TEST_F(AskForDetails, AClosedDialogGivesNothing) {
    tests::WhenModal<FrmVXTileDetails>([](FrmVXTileDetails& dialog) { dialog.close(); });
    EXPECT_FALSE(AskForPost(Post(), helpers_));
    tests::WhenModal<FrmVXTileDetails>([](FrmVXTileDetails& dialog) {
        Find<QAbstractButton>(dialog, "Command1").click();
    });
    EXPECT_FALSE(AskForElevation(12, helpers_));
}

} // namespace
} // namespace vardenix
