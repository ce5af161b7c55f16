#include "files/KeptFolders.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

void Age(const std::string& folder) {
    fs::last_write_time(folder,
                        fs::file_time_type::clock::now() - std::chrono::seconds(100));
}

TEST(KeptFolders, AreReadAgainWhenTheirTimeChanges) {
    const TestFolder folder;
    folder.Write("tiles/a.dds", "");
    const std::string tiles = folder.File("tiles");
    Age(tiles);
    KeptFolders folders;
    for (int round = 0; round < 3; ++round) {
        folders.LookAgain();
        EXPECT_TRUE(folders.Of(tiles).HasFile("A.dds"));
        EXPECT_FALSE(folders.Of(tiles).HasFile("b.dds"));
    }
    EXPECT_EQ(folders.Readings(), 1u);

    folder.Write("tiles/B.dds", "");
    EXPECT_FALSE(folders.Of(tiles).HasFile("b.dds")); // not before one looks again
    folders.LookAgain();
    EXPECT_TRUE(folders.Of(tiles).HasFile("b.dds"));
    EXPECT_EQ(folders.Readings(), 2u);
}

// Two changes within the tick of a file system's clock leave one time.
TEST(KeptFolders, AYoungTimeIsNotReliedOn) {
    const TestFolder folder;
    folder.Write("tiles/a.dds", "");
    const std::string tiles = folder.File("tiles");
    KeptFolders folders;
    EXPECT_FALSE(folders.Of(tiles).HasFile("b.dds"));
    const auto time = fs::last_write_time(tiles);
    folder.Write("tiles/b.dds", "");
    fs::last_write_time(tiles, time);
    folders.LookAgain();
    EXPECT_TRUE(folders.Of(tiles).HasFile("b.dds"));
}

TEST(KeptFolders, AnotherFolderOfTheNameIsSeen) {
    const TestFolder folder;
    folder.Write("Tiles/a.dds", "");
    Age(folder.File("Tiles"));
    KeptFolders folders;
    EXPECT_TRUE(folders.Of(folder.File("tiles")).HasFile("a.dds"));
    folder.Write("tiles/b.dds", "");
    Age(folder.File("tiles"));
    folders.LookAgain();
    EXPECT_TRUE(folders.Of(folder.File("tiles")).HasFile("b.dds"));
    EXPECT_FALSE(folders.Of(folder.File("tiles")).HasFile("a.dds"));
    fs::remove_all(folder.File("tiles"));
    fs::remove_all(folder.File("Tiles"));
    folders.LookAgain();
    EXPECT_FALSE(folders.Of(folder.File("tiles")).HasFile("a.dds"));
}

} // namespace
} // namespace vardenix::tests
