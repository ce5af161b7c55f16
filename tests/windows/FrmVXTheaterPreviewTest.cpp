#include "mapview/windows/FrmVXTheaterPreview.h"

#include "files/StagedFile.h"
#include "support/RecordingCommands.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"
#include "windows/WindowTest.h"

#include <QImage>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

#include <utility>

namespace vardenix {
namespace {

using tests::Find;

class FrmVXTheaterPreviewTest : public testing::Test {
protected:
    // Columns of 4 pixels, each of another colour.
    void Show(int side) {
        state_.Preview.Side = side;
        state_.Terrain.MapWidth = side;
        state_.Preview.Pixels.clear();
        for (int i = 0; i < side * side; ++i)
            state_.Preview.Pixels.push_back(ColorAt(i % side));
        window_.PreviewChanged();
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    }
    // 0x00BBGGRR
    static uint32_t ColorAt(int x) {
        return static_cast<uint32_t>(x / 4 % 256) | 0x720000;
    }

    ProgramState state_;
    tests::ScriptedDialogs dialogs_;
    MapView view_;
    tests::RecordingCommands commands_;
    FrmVXTheaterPreview window_{state_, view_, dialogs_, commands_};
};

TEST_F(FrmVXTheaterPreviewTest, OnePixelIsFourPosts) {
    Show(512);
    auto& picture = Find<QWidget>(window_, "Picture1");
    EXPECT_EQ(picture.size(), QSize(128, 128));
    const QImage seen = picture.grab().toImage();
    for (int x = 0; x < 128; ++x)
        ASSERT_EQ(seen.pixel(x, 64), qRgb(x, 0, 0x72)) << x;
}

TEST_F(FrmVXTheaterPreviewTest, TheWindowFitsRoundThePictureWithTheButtonBelow) {
    Show(1024);
    const auto& picture = Find<QWidget>(window_, "Picture1");
    const auto& button = Find<QPushButton>(window_, "Command1");
    EXPECT_EQ(window_.width(), 256);
    EXPECT_EQ(picture.mapTo(&window_, QPoint(0, 0)), QPoint(0, 0));
    EXPECT_EQ(button.y(), 256 + 6); // 90 twips
    EXPECT_EQ(window_.height(), button.geometry().bottom() + 1 + 6);
    EXPECT_EQ(button.text().remove('&'), "Save");
}

TEST_F(FrmVXTheaterPreviewTest, ASmallTheaterStandsInTheMiddle) {
    Show(256);
    const auto& picture = Find<QWidget>(window_, "Picture1");
    EXPECT_EQ(picture.size(), QSize(64, 64));
    const int left = picture.mapTo(&window_, QPoint(0, 0)).x();
    EXPECT_NEAR(left, window_.width() - left - 64, 1);
    EXPECT_GT(left, 40);
}

TEST_F(FrmVXTheaterPreviewTest, ALargeTheaterStaysOnTheScreen) {
    Show(8192);
    EXPECT_EQ(Find<QWidget>(window_, "Picture1").size(), QSize(2048, 2048));
    EXPECT_LE(window_.height(), window_.screen()->availableSize().height());
    EXPECT_LE(window_.width(), window_.screen()->availableSize().width());
}

TEST_F(FrmVXTheaterPreviewTest, ANewPictureFitsTheWindowAgain) {
    Show(1024);
    Show(1536);
    EXPECT_EQ(window_.width(), 384);
}

TEST_F(FrmVXTheaterPreviewTest, SaveWritesEveryPostAsABitmap) {
    const tests::TestFolder folder;
    Show(512);
    dialogs_.ExpectSave("", folder.File("height map.bmp"));
    QTest::mouseClick(&Find<QPushButton>(window_, "Command1"), Qt::LeftButton);
    EXPECT_EQ(dialogs_.LastFilter(), "Bitmap files (*.bmp)|*.bmp");
    EXPECT_EQ(folder.Names(), "height map.bmp");
    const std::string bytes = tests::Slurp(folder.File("height map.bmp"));
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(bytes.substr(18, 8), tests::Int32Bytes(512) + tests::Int32Bytes(512));
    EXPECT_EQ(bytes.substr(28, 2), tests::Int16Bytes(24));
    // Blue, green, red of column 100.
    EXPECT_EQ(bytes.substr(54 + 3 * 100, 3), std::string("\x72\0\x19", 3));
}

TEST_F(FrmVXTheaterPreviewTest, CancellingTheSaveIsSilent) {
    Show(512);
    dialogs_.ExpectCancel();
    QTest::mouseClick(&Find<QPushButton>(window_, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(dialogs_.AllAnswered());
}

TEST_F(FrmVXTheaterPreviewTest, ASaveThatFailsIsToldAndLeavesWhatWasThere) {
    const tests::TestFolder folder;
    folder.Write("old.bmp/inside", "x"); // a folder in the file's place
    Show(512);
    dialogs_.ExpectSave("", folder.File("old.bmp"));
    std::string told;
    try {
        StagedFile file(folder.File("old.bmp"));
        file.Commit();
    } catch (const RuntimeError& error) {
        told = ReportText(error);
    }
    tests::BarrierAnswers answers;
    answers.ExpectBox("Vardenix", told, BoxAnswer::Continue);
    QTest::mouseClick(&Find<QPushButton>(window_, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(answers.AllAnswered());
    EXPECT_EQ(folder.Names(), "old.bmp");
}

TEST_F(FrmVXTheaterPreviewTest, TheCloseBoxHidesTheWindow) {
    Show(512);
    EXPECT_FALSE(window_.close());
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(commands_.Story, "hidden(chkShowTheater)");
    window_.show();
    state_.Exiting = true;
    EXPECT_TRUE(window_.close());
    EXPECT_EQ(commands_.Story, "hidden(chkShowTheater)");
}

TEST_F(FrmVXTheaterPreviewTest, ARedBoxStandsRoundWhatTheMapShows) {
    Show(512);
    view_.MapLeftX = 40;
    view_.MapBottomY = 80;
    view_.GridCells = 5;
    view_.ZoomPosts = 8; // 40 posts a side
    window_.MakeViewPort();
    const QImage seen = Find<QWidget>(window_, "Picture1").grab().toImage();
    const QRgb red = qRgb(255, 0, 0);
    // Columns 10 to 20; rows 128 - 20 up to 128 - 30.
    for (const QPoint& corner :
         {QPoint(10, 108), QPoint(20, 108), QPoint(10, 98), QPoint(20, 98)})
        EXPECT_EQ(seen.pixel(corner), red) << corner.x() << ", " << corner.y();
    EXPECT_EQ(seen.pixel(15, 98), red);
    EXPECT_EQ(seen.pixel(15, 103), qRgb(15, 0, 0x72));
    EXPECT_EQ(seen.pixel(9, 98), qRgb(9, 0, 0x72));
    EXPECT_EQ(seen.pixel(15, 109), qRgb(15, 0, 0x72));
}

TEST_F(FrmVXTheaterPreviewTest, TheExportBoxIsShownWhileItsSwitchIsOn) {
    Show(512);
    view_.ExportX1 = 79;
    view_.ExportY1 = 40;
    view_.ExportX2 = 40;
    view_.ExportY2 = 79;
    view_.ExportColor = 0x7AEF65;
    const auto corner = [this] {
        window_.MakeViewPort();
        return Find<QWidget>(window_, "Picture1").grab().toImage().pixel(20, 118);
    };
    EXPECT_EQ(corner(), qRgb(20, 0, 0x72));
    view_.ShowExport = true;
    EXPECT_EQ(corner(), qRgb(0x65, 0xEF, 0x7A));
}

TEST_F(FrmVXTheaterPreviewTest, ALeftClickMovesTheMapThere) {
    Show(512);
    auto& picture = Find<QWidget>(window_, "Picture1");
    QTest::mouseClick(&picture, Qt::RightButton, {}, {30, 100});
    EXPECT_EQ(commands_.Story, "");
    QTest::mouseClick(&picture, Qt::LeftButton, {}, {30, 100});
    EXPECT_EQ(commands_.Story, "scroll(120,112)");
}

TEST_F(FrmVXTheaterPreviewTest, AClickInTheTopRightCornerIsTheLastPosition) {
    Show(512);
    auto& picture = Find<QWidget>(window_, "Picture1");
    QTest::mouseClick(&picture, Qt::LeftButton, {}, {127, 0});
    EXPECT_EQ(commands_.Story, "scroll(508,511)");
}

TEST_F(FrmVXTheaterPreviewTest, AClickWhileTheMapIsBeingScrolledDoesNothing) {
    Show(512);
    view_.ScrollBusy = true;
    QTest::mouseClick(&Find<QWidget>(window_, "Picture1"), Qt::LeftButton, {}, {30, 30});
    EXPECT_EQ(commands_.Story, "");
}

TEST_F(FrmVXTheaterPreviewTest, ThePictureGrowsWithItsWindowAndItsBoxesToo) {
    Show(512);
    view_.MapLeftX = 40;
    view_.MapBottomY = 80;
    view_.GridCells = 5;
    view_.ZoomPosts = 8;
    window_.MakeViewPort();
    const int below = window_.height() - 128;
    window_.resize(700, 256 + below);
    auto& picture = Find<QWidget>(window_, "Picture1");
    ASSERT_TRUE(QTest::qWaitFor([&] { return picture.width() == 256; }));
    EXPECT_EQ(picture.height(), 256);
    EXPECT_NEAR(picture.mapTo(&window_, QPoint(0, 0)).x(), 222, 1); // half of 700 - 256
    const QImage seen = picture.grab().toImage();
    // Columns 20 to 40; rows 256 - 40 up to 256 - 60.
    for (const QPoint& corner : {QPoint(20, 216), QPoint(40, 196)})
        EXPECT_EQ(seen.pixel(corner), qRgb(255, 0, 0))
            << corner.x() << ", " << corner.y();
    EXPECT_EQ(seen.pixel(30, 206), qRgb(15, 0, 0x72));
    QTest::mouseClick(&picture, Qt::LeftButton, {}, {60, 200});
    EXPECT_EQ(commands_.Story, "scroll(120,112)");
}

TEST_F(FrmVXTheaterPreviewTest, TheMapFollowsADrag) {
    Show(512);
    auto& picture = Find<QWidget>(window_, "Picture1");
    const auto move = [&picture](QPoint to, Qt::MouseButtons held) {
        QMouseEvent event(QEvent::MouseMove, to, picture.mapToGlobal(to), Qt::NoButton,
                          held, Qt::NoModifier);
        QApplication::sendEvent(&picture, &event);
    };
    QTest::mousePress(&picture, Qt::LeftButton, {}, {30, 100});
    move({31, 100}, Qt::LeftButton);
    move({31, 100}, Qt::LeftButton); // where it is already
    move({500, -80}, Qt::LeftButton);
    QTest::mouseRelease(&picture, Qt::LeftButton, {}, {127, 0});
    move({60, 60}, Qt::NoButton);
    EXPECT_EQ(commands_.Story, "scroll(120,112) scroll(124,112) scroll(511,511)");
}

// An event that comes while the map is painted must not be the one that gets lost.
TEST_F(FrmVXTheaterPreviewTest, TheLastPlaceOfADragIsTheOneThatCounts) {
    class Slow : public tests::RecordingCommands {
    public:
        std::function<void()> Meanwhile;
        void ScrollTo(int x, int y) override {
            RecordingCommands::ScrollTo(x, y);
            if (const auto once = std::exchange(Meanwhile, nullptr))
                once();
        }
    } slow;
    FrmVXTheaterPreview window(state_, view_, dialogs_, slow);
    Show(512);
    window.PreviewChanged();
    auto& picture = Find<QWidget>(window, "Picture1");
    const auto drag = [&picture](QPoint to) {
        QMouseEvent event(QEvent::MouseMove, to, picture.mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&picture, &event);
    };
    slow.Meanwhile = [&] {
        view_.ScrollBusy = true;
        drag({50, 100});
        drag({60, 100});
        view_.ScrollBusy = false;
    };
    QTest::mousePress(&picture, Qt::LeftButton, {}, {30, 100});
    EXPECT_EQ(slow.Story, "scroll(120,112) scroll(240,112)");
}

TEST_F(FrmVXTheaterPreviewTest, EditsAreSeen) {
    constexpr int side = 64;
    state_.Terrain.MapWidth = side;
    state_.Terrain.LxArr = PostArray(int64_t{side} * side);
    state_.Preview.Side = side;
    state_.Preview.Pixels.assign(size_t{side} * side, 0x720000); // the sea's colour
    view_.MapLeftX = 8;
    view_.MapBottomY = 16;
    window_.PreviewChanged();
    window_.resize(600, 700); // several pixels a post
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    const auto color = [this](int x, int y) { // of the pixel that shows this post
        const QImage seen = Find<QWidget>(window_, "Picture1").grab().toImage();
        return seen.pixel(x * seen.width() / side, (side - y) * seen.width() / side);
    };
    const auto raise = [this](int x, int y) {
        for (int i = 0; i < 4; ++i)
            for (int j = -3; j < 1; ++j)
                state_.Terrain.LxArr((y + j) * side + x + i + 1).Elevation = 9000;
    };
    raise(8, 20);
    window_.MakeViewPort();
    EXPECT_EQ(color(10, 18), qRgb(0x87, 0x67, 0x20)); // the highest class
    raise(40, 48);                                    // outside the view
    window_.MakeViewPort();
    EXPECT_EQ(color(41, 47), qRgb(0, 0, 0x72));
    EXPECT_TRUE(QTest::qWaitFor([&] { return color(41, 47) == qRgb(0x87, 0x67, 0x20); }));
}

TEST_F(FrmVXTheaterPreviewTest, TheButtonSaysWhatItSaves) {
    EXPECT_EQ(Find<QPushButton>(window_, "Command1").toolTip(), "Save the picture");
}

} // namespace
} // namespace vardenix
