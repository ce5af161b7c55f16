#include "files/CopyFile.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

mode_t RightsOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(CopyFile, HasTheBytesOfAFileOfSeveralBlocks) {
    const TestFolder folder;
    std::string bytes((2 << 20) + 3, 'x');
    bytes[0] = '\0';
    bytes[1 << 20] = 'm';
    bytes.back() = 'z';
    CopyFile(folder.Write("from", bytes), folder.File("to"), 0644);
    EXPECT_TRUE(Slurp(folder.File("to")) == bytes);
    EXPECT_EQ(folder.Names(), "from to");
}

TEST(CopyFile, TakesRightsButNoOwnersPowers) {
    const TestFolder folder;
    CopyFile(folder.Write("from", "x"), folder.File("to"), S_IFREG | 06751);
    EXPECT_EQ(RightsOf(folder.File("to")), 0751U);
}

TEST(CopyFile, LeavesAFileThatHasTheName) {
    const TestFolder folder;
    const std::string to = folder.Write("to", "older");
    try {
        CopyFile(folder.Write("from", "x"), to, 0644);
        FAIL() << "it was copied";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
    }
    EXPECT_EQ(Slurp(to), "older");
}

TEST(CopyFile, AFolderIsNoFile) {
    const TestFolder folder;
    folder.Write("from/file", "x");
    EXPECT_THROW(CopyFile(folder.File("from"), folder.File("to"), 0644), RuntimeError);
    EXPECT_EQ(folder.Names(), "from");
}

} // namespace
} // namespace vardenix
