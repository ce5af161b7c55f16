#include "platform/windows/WindowPlace.h"

#include "windows/WindowTest.h"

#include <QScreen>

namespace vardenix {
namespace {

const QRect Left(0, 0, 1280, 900);
const QRect Right(1280, 100, 1000, 700);

TEST(WindowPlace, AWindowWithinAScreenStaysWhereItWas) {
    EXPECT_EQ(PlaceWithin({10, 20, 300, 200}, {Left, Right}), QPoint(10, 20));
    EXPECT_EQ(PlaceWithin({1300, 500, 300, 200}, {Left, Right}), QPoint(1300, 500));
    EXPECT_EQ(PlaceWithin({980, 700, 300, 200}, {Left}), QPoint(980, 700));
}

TEST(WindowPlace, APartThatSticksOutIsPulledIn) {
    EXPECT_EQ(PlaceWithin({-50, -1, 300, 200}, {Left}), QPoint(0, 0));
    EXPECT_EQ(PlaceWithin({1100, 800, 300, 200}, {Left}), QPoint(980, 700));
    EXPECT_EQ(PlaceWithin({2100, 650, 300, 200}, {Left, Right}), QPoint(1980, 600));
}

TEST(WindowPlace, AScreenThatIsGoneGivesTheFirst) {
    EXPECT_EQ(PlaceWithin({1500, 300, 300, 200}, {Left}), QPoint(980, 300));
    EXPECT_EQ(PlaceWithin({-143165576, 143165576, 300, 200}, {Left}), QPoint(0, 700));
}

TEST(WindowPlace, OfAWindowLargerThanTheScreenTheTopLeftIsKept) {
    EXPECT_EQ(PlaceWithin({100, 100, 3000, 2000}, {Left}), QPoint(0, 0));
    EXPECT_EQ(PlaceWithin({100, 100, 3000, 2000}, {Right}), QPoint(1280, 100));
}

TEST(WindowPlace, WithoutAScreenNothingIsMoved) {
    EXPECT_EQ(PlaceWithin({-5, -6, 300, 200}, {}), QPoint(-5, -6));
}

TEST(WindowPlace, AFrameBelowNothingIsNone) {
    EXPECT_EQ(FrameTold({1, 20, 1, 5}), QMargins(1, 20, 1, 5));
    EXPECT_EQ(FrameTold({0, 20, 0, 0}), QMargins(0, 20, 0, 0));
    EXPECT_EQ(FrameTold({0, 0, -639, -414}), QMargins());
    EXPECT_EQ(FrameTold({1, -1, 1, 5}), QMargins());
}

TEST(PlaceWatch, AFrameThatComesLateStillMovesTheWindow) {
    using Step = PlaceWatch::Step;
    PlaceWatch watch;
    for (int look = 0; look < 100; ++look) // two seconds
        ASSERT_EQ(watch.Look(false, look % 2 == 0), Step::Wait);
    EXPECT_EQ(watch.Look(true, false), Step::Move);
    for (int look = 1; look < 25; ++look) // half a second
        ASSERT_EQ(watch.Look(true, true), Step::Wait);
    EXPECT_EQ(watch.Look(true, false), Step::Move); // the desktop had another wish
    for (int look = 1; look < 25; ++look)
        ASSERT_EQ(watch.Look(true, true), Step::Wait);
    EXPECT_EQ(watch.Look(true, true), Step::Done);
}

TEST(PlaceWatch, DoesNotArgueWithADesktopForEver) {
    using Step = PlaceWatch::Step;
    PlaceWatch watch;
    for (int look = 0; look < 150; ++look) // three seconds
        ASSERT_EQ(watch.Look(true, false), Step::Move);
    EXPECT_EQ(watch.Look(true, false), Step::Done);
}

TEST(PlaceWatch, WithoutAFrameItEndsAfterHalfAMinuteWithOneMove) {
    using Step = PlaceWatch::Step;
    PlaceWatch watch;
    PlaceWatch right;
    for (int look = 1; look < 30 * 50; ++look) {
        ASSERT_EQ(watch.Look(false, false), Step::Wait);
        ASSERT_EQ(right.Look(false, true), Step::Wait);
    }
    EXPECT_EQ(watch.Look(false, false), Step::Move);
    EXPECT_EQ(watch.Look(false, false), Step::Done);
    EXPECT_EQ(right.Look(false, true), Step::Done);
}

TEST(WindowPlace, MovesOntoTheScreensThereAre) {
    QWidget window;
    window.resize(200, 100);
    MoveOnScreen(window, {100000, 30});
    const QRect room = window.screen()->availableGeometry();
    EXPECT_EQ(window.pos(), QPoint(room.left() + room.width() - 200, 30));
}

TEST(PlaceBeside, CoversNothingOfWhatIsToBeSeen) {
    const QRect room(0, 0, 1000, 700);
    const QSize window(300, 200);
    // 8 pixels beside it, level with its middle.
    EXPECT_EQ(PlaceBeside(window, {400, 300, 64, 64}, room), QPoint(472, 231));
    EXPECT_EQ(PlaceBeside(window, {700, 300, 64, 64}, room), QPoint(392, 231));
    EXPECT_EQ(PlaceBeside(window, {400, 0, 64, 64}, room), QPoint(472, 0));
    EXPECT_EQ(PlaceBeside(window, {400, 690, 64, 10}, room), QPoint(472, 500));
    // As wide as the room: below, else above.
    EXPECT_EQ(PlaceBeside(window, {0, 100, 1000, 64}, room), QPoint(349, 172));
    EXPECT_EQ(PlaceBeside(window, {0, 400, 1000, 264}, room), QPoint(349, 192));
    EXPECT_EQ(PlaceBeside(window, room, room), QPoint(700, 500));
}

} // namespace
} // namespace vardenix
