// A picture that is much larger than its window: what is seen is painted first.
#include "mapview/windows/QtDrawingSurface.h"
#include "windows/MapWindowTest.h"

namespace vardenix {
namespace {

class FrmVXMapSeen : public tests::MapWindowTest {
protected:
    FrmVXMapSeen() : MapWindowTest(2) {
        world_.View.ShowHeights = world_.View.ShowGrid = world_.View.ShowSegments = true;
        world_.View.GridColor = 0x2020FF;
        world_.View.SegmentColor = 0x20FF20;
    }

    void OpenSmall() {
        ChangeHeights(1);
        Open();
        window_.resize(200, 180);
        ASSERT_TRUE(QTest::qWaitFor([this] { return Seen().width() < 210; }));
        window_.RefreshPicArray();
        ASSERT_TRUE(QTest::qWaitFor([this] { return Shown() == Expected(); }));
    }
    void ChangeHeights(uint32_t seed) {
        for (TerrainPost& post : world_.Terrain.LxArr.Values()) {
            seed = seed * 1664525 + 1013904223;
            post.Elevation = static_cast<int16_t>(seed >> 22);
        }
    }
    QRect Seen() { return PicShow().visibleRegion().boundingRect(); }
    // All that is on the window's picture now, seen or not.
    QImage Shown() {
        return PicShow().grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    // The view painted at once.
    QImage Expected() {
        QtDrawingSurface surface;
        surface.Resize(world_.View.PictureWidth(), world_.View.PictureHeight());
        NoScreen screen;
        renderer_.RefreshPicArray(world_.View, surface, screen, {});
        return surface.Image().copy();
    }
};

TEST_F(FrmVXMapSeen, IsPaintedFirstAndIsThePictureOfTheWhole) {
    OpenSmall();
    ChangeHeights(2);
    window_.RefreshPicArray();
    const QImage first = Shown();
    const QImage expected = Expected();
    EXPECT_TRUE(first.copy(Seen()) == expected.copy(Seen()));
    EXPECT_TRUE(first != expected);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Shown() == expected; }));
}

TEST_F(FrmVXMapSeen, WhoeverTakesThePictureHasAllOfIt) {
    OpenSmall();
    ChangeHeights(3);
    window_.RefreshPicArray();
    EXPECT_TRUE(window_.Picture2().Image() == Expected());
}

// Posts may be in the middle of a change then.
TEST_F(FrmVXMapSeen, TheRestWaitsWhileFilesAreReadOrWritten) {
    OpenSmall();
    ChangeHeights(4);
    window_.RefreshPicArray();
    const QImage expected = Expected();
    {
        const ScrollBusyWhile busy(world_.View);
        EXPECT_FALSE(QTest::qWaitFor([&] { return Shown() == expected; }, 300));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return Shown() == expected; }));
}

} // namespace
} // namespace vardenix
