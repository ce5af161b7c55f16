// The program is killed while it is worked with, and brings back what was lost. More
// rounds than a test run has time for are asked for by VARDENIX_RECOVERIES.
#include "endtoend/EditingOnDesktop.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

using std::chrono::steady_clock;

constexpr const char* Box = "^Vardenix$";

class RecoveryEndToEnd : public EditingOnDesktop {
protected:
    // As far as the question, or the map where nothing was left.
    void StartAfterKill() {
        program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(StartUp); }));
        desktop_.Key("Return");
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Box); }));
    }

    void ResetTheater() const {
        for (const char* name : {"theater.L2", "theater.O2"})
            fs::copy_file(std::string(SAMPLE_FOLDER) + "/terrdata/sorrelund/terrain/" +
                              name,
                          Terrain(name), fs::copy_options::overwrite_existing);
    }

    // The tile that a click paints.
    void FindBrush() {
        const MadeLevel before = Level2();
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
        ClickPost(1, 2, 1);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
        ASSERT_NO_FATAL_FAILURE(Save());
        const std::vector<size_t> changed = Differences(before, Level2());
        ASSERT_EQ(changed.size(), 1U);
        brush_ = Level2().Posts[changed[0] - 1].Tile;
        Leave();
        ResetTheater();
    }

    static size_t SerialOfCell(int cell) {
        const int x = ViewX + cell % 5;
        const int y = ViewY + cell / 5;
        return SerialOf(static_cast<size_t>(x), static_cast<size_t>(y), Posts);
    }
    // Of the view's cells those that a click changes; the palette lies over the lower
    // ones.
    std::vector<int> PaintableCells(const MadeLevel& level) const {
        std::vector<int> cells;
        for (int cell = 10; cell < 25; ++cell)
            if (level.Posts[SerialOfCell(cell) - 1].Tile != brush_)
                cells.push_back(cell);
        return cells;
    }

    static int Rounds() {
        const char* wanted = std::getenv("VARDENIX_RECOVERIES");
        return wanted == nullptr ? 3 : std::atoi(wanted);
    }

    int brush_ = 0;
};

TEST_F(RecoveryEndToEnd, AtMostTheLastTwoSecondsAreLostByAKill) {
    ASSERT_NO_FATAL_FAILURE(FindBrush());
    std::mt19937 random(11);
    int whole = 0;
    for (int round = 1; round <= Rounds(); ++round) {
        SCOPED_TRACE(round);
        const MadeLevel before = Level2();
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
        // What was painted after each command.
        std::vector<std::vector<size_t>> states{{}};
        std::vector<steady_clock::time_point> sent;
        std::vector<int> cells = PaintableCells(before);
        ASSERT_GE(cells.size(), 10U);
        std::shuffle(cells.begin(), cells.end(), random);
        const int commands = 2 + static_cast<int>(random() % 9);
        for (int i = 0; i < commands; ++i) {
            std::vector<size_t> now = states.back();
            const Picture shown = MapPicture();
            if (now.size() > 1 && random() % 4 == 0) {
                now.pop_back();
                desktop_.Key("ctrl+z");
            } else {
                const int cell = cells.back();
                cells.pop_back();
                now.push_back(SerialOfCell(cell));
                ClickPost(cell % 5, cell / 5, 1);
            }
            states.push_back(now);
            sent.push_back(steady_clock::now());
            // A key may overtake a click; the last one is left to the kill.
            if (i + 1 < commands) {
                ASSERT_TRUE(Await([&](const Picture& map) { return map != shown; }));
            }
        }
        program_.KillAfter(static_cast<int>(random() % 300));
        const auto killed = steady_clock::now();

        ASSERT_NO_FATAL_FAILURE(StartAfterKill());
        desktop_.Key("Return"); // is a Yes
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
        ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Box); }));
        desktop_.Activate(Map);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
        ASSERT_NO_FATAL_FAILURE(Save());
        std::vector<size_t> restored = Differences(before, Level2());
        size_t agrees = states.size();
        for (size_t i = 0; i < states.size(); ++i) {
            std::vector<size_t> state = states[i];
            std::sort(state.begin(), state.end());
            if (state == restored)
                agrees = i;
        }
        ASSERT_LT(agrees, states.size())
            << testing::PrintToString(restored) << " is no state that there ever was of "
            << testing::PrintToString(states);
        whole += agrees + 1 == states.size() ? 1 : 0;
        if (agrees + 1 < states.size()) {
            EXPECT_LT(killed - sent[agrees], std::chrono::seconds(2));
        }
        // It is all on the disk, so that there is nothing to ask about.
        program_.KillAfter(0);
        ASSERT_NO_FATAL_FAILURE(Start());
        program_.KillAfter(0);
        ResetTheater();
    }
    std::printf("all was restored after %d of %d kills\n", whole, Rounds());
}

// The editor works on upon the theater that was opened.
TEST_F(RecoveryEndToEnd, ASaveElsewhereIsNoSaveOfTheTheater) {
    const MadeLevel before = Level2();
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    ClickPost(1, 2, 1);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    desktop_.Key("ctrl+shift+s");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active("^Save As$"); }));
    desktop_.Type(folder_.File("COPY.L2"));
    desktop_.Key("Return");
    ASSERT_TRUE(WaitFor(
        [&] { return fs::exists(folder_.File("COPY.O2")) && !desktop_.Visible(Star); }));
    const MadeLevel copied = ReadPair(folder_.File("COPY.L2"), folder_.File("COPY.O2"));
    EXPECT_EQ(Differences(before, copied).size(), 1U);
    program_.KillAfter(0);
    ASSERT_NO_FATAL_FAILURE(StartAfterKill());
    desktop_.Key("Return"); // is a Yes
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Box); }));
    desktop_.Activate(Map);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Differences(copied, Level2()).empty());
    Leave();
}

TEST_F(RecoveryEndToEnd, ALogoutLosesNothing) {
    const MadeLevel before = Level2();
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    ClickPost(1, 2, 1);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    program_.Signal(SIGTERM);
    ASSERT_TRUE(WaitFor([&] { return !program_.Running(); }));
    EXPECT_TRUE(Differences(before, Level2()).empty());
    ASSERT_NO_FATAL_FAILURE(StartAfterKill());
    desktop_.Key("alt+n");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Box); }));
    EXPECT_FALSE(desktop_.Visible(Star));
    EXPECT_TRUE(fs::exists(Logs() + "/1.aside"));
    Leave();
}

} // namespace
} // namespace vardenix::tests
