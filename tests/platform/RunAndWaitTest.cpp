#include "platform/RunAndWait.h"

#include "platform/RunAndRead.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(RunAndWait, GivesTheExitCodeAndPassesArgumentsAsTheyStand) {
    EXPECT_EQ(RunAndWait({"sh", "-c", "exit 7"}), 7);
    EXPECT_EQ(RunAndWait({"test", "a \"b\" $(c)\n", "=", "a \"b\" $(c)\n"}), 0);
    EXPECT_EQ(RunAndWait({"/no/such/program"}), -1);
    EXPECT_EQ(RunAndWait({"sh", "-c", "kill -9 $$"}), -1);
}

TEST(RunAndRead, EndsAProgramThatNobodyWantsAnyMore) {
    int asked = 0;
    const ProgramOutput output = RunAndRead({"sh", "-c", "echo begun; exec sleep 600"},
                                            100, [&asked] { return ++asked < 3; });
    EXPECT_TRUE(output.Stopped);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(output.Text, "begun\n");
    EXPECT_EQ(output.ExitCode, -1);
}

TEST(RunAndRead, HearsAProgramToItsEnd) {
    const ProgramOutput output =
        RunAndRead({"sh", "-c", "echo a; exit 3"}, 100, [] { return true; });
    EXPECT_FALSE(output.Stopped);
    EXPECT_EQ(output.ExitCode, 3);
    EXPECT_EQ(output.Text, "a\n");
}

} // namespace
} // namespace vardenix
