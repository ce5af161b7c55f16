// Two programs at one theater: what waits for the other says for whom, and ends as the
// user likes.
#include "endtoend/EditingOnDesktop.h"

#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr const char* Box = "^Vardenix$";
// Nobody that the machine knows.
constexpr const char* Stranger = "54321";

class WaitingForOthers : public EditingOnDesktop {
protected:
    void PaintAPost() {
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
        ClickPost(1, 2, 1);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    }
    // Reads the theater and does not come to an end.
    void StartReader(std::vector<std::string> command = {}) {
        const std::string ready = folder_.File("desktop/reading");
        command.insert(command.end(), {"flock", "--close", "--shared", Terrain(""), "sh",
                                       "-c", "echo yes >&3; exec sleep 600 3>&-"});
        std::string line = "exec 3>'" + ready + "'; exec";
        for (const std::string& word : command)
            line += " '" + word + "'";
        reader_ = Child({"sh", "-c", line}, {}, folder_.File("desktop/reader.log"));
        ASSERT_TRUE(
            WaitFor([&] { return fs::exists(ready) && fs::file_size(ready) > 0; }));
    }
    void SaveMeetsTheReader() {
        desktop_.Activate(Map);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
        desktop_.Key("ctrl+s");
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Box); }));
    }

    Child reader_;
};

TEST_F(WaitingForOthers, CancelKeepsTheWorkAndTheReadersEndSavesIt) {
    const MadeLevel before = Level2();
    ASSERT_NO_FATAL_FAILURE(PaintAPost());
    ASSERT_NO_FATAL_FAILURE(StartReader());
    ASSERT_NO_FATAL_FAILURE(SaveMeetsTheReader());
    desktop_.Key("Return"); // is Cancel
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active("^Error\\.\\.\\.$"); }));
    desktop_.Key("Return");
    EXPECT_TRUE(desktop_.Visible(Star));
    EXPECT_TRUE(Differences(before, Level2()).empty());

    ASSERT_NO_FATAL_FAILURE(SaveMeetsTheReader());
    reader_.KillAfter(0);
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Star); }));
    EXPECT_EQ(Differences(before, Level2()).size(), 1U);
    Leave();
}

TEST_F(WaitingForOthers, TheOwnerPassesOverAReaderWhoIsSomebodyElse) {
    if (::geteuid() != 0) // nobody else can start another user's program
        return;
    const MadeLevel before = Level2();
    fs::permissions(folder_.Path(), fs::perms(0755));
    ASSERT_NO_FATAL_FAILURE(PaintAPost());
    ASSERT_NO_FATAL_FAILURE(
        StartReader({"setpriv", "--reuid", Stranger, "--clear-groups"}));
    ASSERT_NO_FATAL_FAILURE(SaveMeetsTheReader());
    desktop_.Key("alt+s");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Star); }));
    EXPECT_EQ(Differences(before, Level2()).size(), 1U);
    Leave();
}

} // namespace
} // namespace vardenix::tests
