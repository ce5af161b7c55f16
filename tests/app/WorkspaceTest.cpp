// The windows of the workspace together, over a small theater with real pictures; what is
// clicked is what a user clicks.
#include "app/OpenedWorkspace.h"

#include <QLineEdit>
#include <QScrollBar>

#include <cmath>
#include <filesystem>
#include <limits>

namespace vardenix {
namespace {

using tests::Find;
using WorkspaceTest = tests::OpenedWorkspace;

// A picture file of three bytes a pixel, taken apart by hand.
struct ReadBitmap {
    explicit ReadBitmap(const std::string& path) : Bytes(tests::Slurp(path)) {}

    int Number(size_t at) const {
        return Byte(at) | Byte(at + 1) << 8 | Byte(at + 2) << 16 | Byte(at + 3) << 24;
    }
    int Width() const { return Number(18); }
    int Height() const { return Number(22); }
    int Bits() const { return Byte(28); }
    QRgb At(int x, int y) const {
        const int row = (Width() * 3 + 3) / 4 * 4; // the lowest one first
        const int place = Number(10) + (Height() - 1 - y) * row + x * 3;
        const auto at = static_cast<size_t>(place);
        return qRgb(Byte(at + 2), Byte(at + 1), Byte(at));
    }

    std::string Bytes;

private:
    int Byte(size_t at) const { return static_cast<unsigned char>(Bytes.at(at)); }
};

TEST_F(WorkspaceTest, TheScreenshotAsABitmapHasEveryPixelOfTheMap) {
    Open();
    Click("chkShowGrid");
    Click("cmdBPlus");
    const QImage map = Painted();
    // Over a file that is there, with the extension that the name lacks.
    folder_.Write("the map.bmp", "older");
    platform_.Dialogs.ExpectSave("", folder_.File("the map"), 1);
    TakeScreenshot();
    const ReadBitmap file(folder_.File("the map.bmp"));
    ASSERT_EQ(file.Bytes.substr(0, 2), "BM");
    ASSERT_EQ(file.Width(), 640);
    ASSERT_EQ(file.Height(), 640);
    ASSERT_EQ(file.Bits(), 24);
    for (int y = 0; y < 640; y += 3)
        for (int x = 0; x < 640; x += 3)
            ASSERT_EQ(file.At(x, y), map.pixel(x, y)) << x << ", " << y;
    EXPECT_EQ(file.At(0, 639), qRgb(0, 0, 0)); // the grid's colour
}

TEST_F(WorkspaceTest, TheScreenshotAsAJpegLooksLikeTheMap) {
    Open();
    const QImage map = Painted();
    platform_.Dialogs.ExpectSave("", folder_.File("the map.jpg"), 2);
    TakeScreenshot();
    const std::string bytes = tests::Slurp(folder_.File("the map.jpg"));
    ASSERT_EQ(bytes.substr(0, 3), "\xFF\xD8\xFF");
    const QImage file(QString::fromStdString(folder_.File("the map.jpg")));
    ASSERT_EQ(file.size(), QSize(640, 640));
    int64_t apart = 0;
    for (int y = 0; y < 640; ++y)
        for (int x = 0; x < 640; ++x) {
            const QRgb a = map.pixel(x, y);
            const QRgb b = file.pixel(x, y);
            apart += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                     std::abs(qBlue(a) - qBlue(b));
        }
    EXPECT_LT(apart, int64_t{640} * 640 * 3 * 10);
}

TEST_F(WorkspaceTest, AScreenshotGivenUpWritesNothing) {
    Open();
    const std::string before = folder_.Names();
    platform_.Dialogs.ExpectCancel();
    TakeScreenshot();
    EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    EXPECT_EQ(folder_.Names(), before);
}

TEST_F(WorkspaceTest, AScreenshotThatCannotBeWrittenIsToldWithItsFile) {
    Open();
    const std::string path = folder_.File("no such folder/map.bmp");
    platform_.Dialogs.ExpectSave("", path, 1);
    std::string told;
    class Listener : public tests::BarrierAnswers {
    public:
        explicit Listener(std::string& text) : text_(text) {}
        BoxAnswer MessageBox(const std::string& text, const std::string&, BoxIcon,
                             BoxButtons) override {
            text_ = text;
            return BoxAnswer::Continue;
        }

    private:
        std::string& text_;
    } listener(told);
    TakeScreenshot();
    EXPECT_NE(told.find("map.bmp"), std::string::npos) << told;
}

TEST_F(WorkspaceTest, FlagsOfTheOtherWindowsStayWhenOneIsClosed) {
    state_.Configuration.FeatWinVis = true;
    state_.Configuration.SearchResWinVis = true;
    Open();
    Click("chkShowMain");
    EXPECT_FALSE(state_.Configuration.MainWinVis);
    EXPECT_FALSE(Window("FrmVXMap").isVisible());
    Window("FrmVXTheaterPreview").close();
    EXPECT_FALSE(state_.Configuration.ThPrevWinVis);
    Click("chkShowMain");
    EXPECT_TRUE(Window("FrmVXMap").isVisible());
    workspace_->LeaveProgram();
    EXPECT_EQ(ends_, 1);
    EXPECT_TRUE(state_.Configuration.FeatWinVis);
    EXPECT_TRUE(state_.Configuration.SearchResWinVis);
}

TEST_F(WorkspaceTest, ABoxTickedBringsTheMapBackFromItsIcon) {
    Open();
    QWidget& map = Window("FrmVXMap");
    for (const char* box : {"chkShowTheater", "chkShowTile"}) {
        map.showMinimized();
        EXPECT_FALSE(Window("FrmVXTheaterPreview").isVisible());
        QAbstractButton& button = Find<QAbstractButton>(Window("FrmVXMain"), box);
        if (button.isChecked())
            button.click();
        EXPECT_TRUE(map.isMinimized()) << box;
        button.click();
        EXPECT_FALSE(map.isMinimized()) << box;
        EXPECT_TRUE(map.isVisible());
        EXPECT_TRUE(Window("FrmVXTheaterPreview").isVisible());
    }
    EXPECT_TRUE(Window("FrmVXTilePal").isVisible());
}

TEST_F(WorkspaceTest, AMapHiddenAsAnIconLeavesTheOtherWindowsAndComesBackWhole) {
    Open();
    QWidget& map = Window("FrmVXMap");
    map.showMinimized();
    Click("chkShowMain");
    EXPECT_FALSE(map.isVisible());
    EXPECT_TRUE(Window("FrmVXTheaterPreview").isVisible());
    Click("chkShowMain");
    EXPECT_TRUE(map.isVisible());
    EXPECT_FALSE(map.isMinimized());
}

TEST_F(WorkspaceTest, SettingsOutOfEveryRangeOpenAndPaint) {
    Configuration& settings = state_.Configuration;
    settings.Zoom = 0;
    settings.GridSize = -7;
    settings.TileSize = -1;
    settings.X = -5;
    settings.Y = std::numeric_limits<int32_t>::min();
    settings.OptionBrightness = 32000;
    settings.OptionShowHeights = settings.OptionShowGrid = true;
    settings.OptionShowSegments = settings.OptionShowExpArea = true;
    settings.VXMasterPathsAreas = true;
    settings.GridColor = 0xFFFFFFFF;
    settings.HeightsFont.Size = std::numeric_limits<float>::quiet_NaN();
    settings.HeightsFont.Name.clear();
    settings.HeightColorList = {{0xFF0000, 100, -100}};
    settings.MainWinPos = {.Top = std::numeric_limits<int32_t>::max(), .Left = -900000};
    settings.ThPrevWinPos = {.Top = std::numeric_limits<int32_t>::min(), .Left = 7};
    Open();
    EXPECT_EQ(Painted().size(), QSize(32, 32)); // two cells of 16 pixels
    EXPECT_EQ(Painted().pixelColor(16, 3), QColor(Qt::white));
    // Out of the other ends.
    settings.Zoom = 32767;
    settings.GridSize = 99;
    settings.TileSize = 7;
    settings.X = 900;
    settings.Y = 32;
    settings.OptionBrightness = -101;
    settings.HeightsFont.Size = 1e30F;
    Open();
    const QImage map = Painted();
    EXPECT_EQ(map.size(), QSize(5120, 5120));
    EXPECT_EQ(map.pixelColor(1000, 1000), QColor(Qt::black)); // -100 percent
    EXPECT_EQ(settings.X, 31);
    EXPECT_EQ(settings.Y, 31);
}

TEST_F(WorkspaceTest, TilesChangedMadeAndDeletedBetweenRepaintsAreSeen) {
    Open();
    const auto first = [] { return Painted().pixelColor(5, 600); };
    const auto second = [] { return Painted().pixelColor(128 + 5, 600); };
    const QColor before = first();
    const QColor neighbour = second();
    folder_.Write("H0.dds", tests::BlockTile(256, 256, "DXT1"));
    Click("chkShowSegments"); // whatever repaints
    EXPECT_NE(first(), before);
    EXPECT_EQ(second(), neighbour);
    std::filesystem::remove(folder_.File("H1.dds"));
    Click("chkShowSegments");
    const QColor noTile = second();
    EXPECT_NEAR(noTile.red(), 0x80, 3);
    EXPECT_NEAR(noTile.green(), 0x40, 3);
    EXPECT_NEAR(noTile.blue(), 0x20, 3);
    folder_.Write("H0.dds", tests::BlockTile(64, 64, "DXT1"));
    folder_.Write("H1.dds", tests::BlockTile(32, 32, "DXT1"));
    Click("chkShowSegments");
    EXPECT_EQ(first(), before);
    EXPECT_EQ(second(), neighbour);
}

TEST_F(WorkspaceTest, AClickOnThePreviewScrollsTheMapAndItsReadOuts) {
    Open();
    const QImage before = Painted();
    QTest::mouseClick(&Find<QWidget>(Window("FrmVXTheaterPreview"), "Picture1"),
                      Qt::LeftButton, {}, {0, 6}); // 8 pixels a side, 4 posts each
    EXPECT_EQ(state_.Configuration.X, 0);
    EXPECT_EQ(state_.Configuration.Y, 8);
    EXPECT_EQ(Find<QScrollBar>(Window("FrmVXMap"), "VScroll1").value(), -8);
    EXPECT_EQ(Find<QLineEdit>(Window("FrmVXMain"), "LabelY").text().toStdString(), "8");
    QTest::mouseClick(&Find<QWidget>(Window("FrmVXTheaterPreview"), "Picture1"),
                      Qt::LeftButton, {}, {1, 6});
    EXPECT_NE(Painted(), before); // the column of the other tile is gone
    // Scrolling is free again.
    Find<QScrollBar>(Window("FrmVXMap"), "HScroll1").setValue(0);
    EXPECT_EQ(Painted(), before);
}

} // namespace
} // namespace vardenix
