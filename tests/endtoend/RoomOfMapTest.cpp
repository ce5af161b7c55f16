// What of the screen is map when somebody starts the program for the first time.
#include "endtoend/WorkspaceOnDesktop.h"

namespace vardenix::tests {
namespace {

constexpr const char* OneWindow = "^\\*?sorrelund - Vardenix";

struct ScreenCase {
    int Width;
    int Height;
    int Scale;
    int Percent; // that the map has at least
};

class RoomOfMap : public WorkspaceOnDesktop,
                  public testing::WithParamInterface<ScreenCase> {
protected:
    RoomOfMap() : WorkspaceOnDesktop(GetParam().Width, GetParam().Height) {}
};

// Sea, which nothing else on the screen but tiles and preview looks like.
bool IsSea(unsigned color) {
    const unsigned red = color >> 16 & 255;
    const unsigned blue = color & 255;
    return blue > red + 15;
}

// From a place in the map, as far as it goes.
int Reach(const Picture& screen, Point from, int x, int y) {
    int length = 0;
    for (Point at = from; at.X >= 0 && at.Y >= 0 && at.X < screen.Width &&
                          at.Y < screen.Height && IsSea(screen.At(at.X, at.Y));
         at.X += x, at.Y += y)
        ++length;
    return length;
}

TEST_P(RoomOfMap, IsMostOfTheScreenOnAFirstStart) {
    const ScreenCase& on = GetParam();
    std::filesystem::remove(folder_.File("program/Desk.ini"));
    UseTheater(SAMPLE_FOLDER, {{"X", "1"}, {"Y", "1"}}); // all sea
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"),
                                    {{"QT_SCALE_FACTOR", std::to_string(on.Scale)}});
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(StartUp); }));
    desktop_.Key("Return");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(OneWindow); }));
    int share = 0;
    const bool wide = WaitFor([&] {
        const Picture screen = desktop_.Screen();
        const Point middle{on.Width * 6 / 10, on.Height / 2};
        const int width = Reach(screen, middle, 1, 0) + Reach(screen, middle, -1, 0) - 1;
        const int height = Reach(screen, middle, 0, 1) + Reach(screen, middle, 0, -1) - 1;
        share = width * height * 100 / (on.Width * on.Height);
        return share >= on.Percent;
    });
    EXPECT_TRUE(wide) << share;
    // Three rows of four tiles are seen whole: pictures of 60 pixels in the first column.
    EXPECT_TRUE(WaitFor([&] {
        const Picture screen = desktop_.Screen();
        int whole = 0;
        for (int y = on.Height / 2; y < on.Height;) {
            const int length = Reach(screen, {220 * on.Scale, y}, 0, 1);
            whole += length >= 58 * on.Scale && length <= 62 * on.Scale ? 1 : 0;
            y += length + 1;
        }
        return whole >= 3;
    }));
}

INSTANTIATE_TEST_SUITE_P(Screens, RoomOfMap,
                         testing::Values(ScreenCase{1366, 768, 1, 60},
                                         ScreenCase{1920, 1080, 1, 70},
                                         ScreenCase{1024, 768, 1, 50},
                                         ScreenCase{1920, 1080, 2, 50}),
                         [](const auto& screen) {
                             return "Of" + std::to_string(screen.param.Width) + "By" +
                                    std::to_string(screen.param.Height) + "AtScale" +
                                    std::to_string(screen.param.Scale);
                         });

} // namespace
} // namespace vardenix::tests
