#include "platform/RunAndWait.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(RunAndWait, GivesTheExitCodeAndPassesArgumentsAsTheyStand) {
    EXPECT_EQ(RunAndWait({"sh", "-c", "exit 7"}), 7);
    EXPECT_EQ(RunAndWait({"test", "a \"b\" $(c)\n", "=", "a \"b\" $(c)\n"}), 0);
    EXPECT_EQ(RunAndWait({"/no/such/program"}), -1);
    EXPECT_EQ(RunAndWait({"sh", "-c", "kill -9 $$"}), -1);
}

} // namespace
} // namespace vardenix
