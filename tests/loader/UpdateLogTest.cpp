#include "loader/UpdateLog.h"

#include "support/FakePlatform.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

TEST(UpdateLog, ALineHasTheTimeInFrontUnlessItIsWrittenPlain) {
    const TestFolder folder;
    tests::FakePlatform platform;
    UpdateLog log(folder.Path(), platform.Clock);
    log.Write("first");
    log.WritePlain("as it stands");
    EXPECT_EQ(log.Now(), "07/03/2026 09:05");
    // Before the log is closed: the program may end at any line.
    EXPECT_EQ(Slurp(folder.File("Update.log")),
              "<07/03/2026 09:05> first\r\nas it stands\r\n");
}

TEST(UpdateLog, IsAddedTo) {
    const TestFolder folder;
    folder.Write("Update.log", "an older update\r\n");
    tests::FakePlatform platform;
    UpdateLog(folder.Path() + "/", platform.Clock).WritePlain("a newer one");
    EXPECT_EQ(Slurp(folder.File("Update.log")), "an older update\r\na newer one\r\n");
}

TEST(UpdateLog, ThatItCannotBeWrittenIsNoError) {
    const TestFolder folder;
    tests::FakePlatform platform;
    UpdateLog log(folder.File("not there"), platform.Clock);
    log.Write("lost");
    EXPECT_EQ(folder.Names(), "");
}

} // namespace
} // namespace vardenix
