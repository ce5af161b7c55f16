// Files known by one look at their folder, held against FolderIndex, which looks at each.
#include "files/ListedFiles.h"

#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

class ListedFilesTest : public testing::Test {
protected:
    // Makes something of a random kind under that name, unless it is taken.
    void MakeAny(const std::string& name) {
        const fs::path path = folder_.File(name);
        if (fs::symlink_status(path).type() != fs::file_type::not_found)
            return;
        switch (random_() % 6) {
        case 0:
        case 1:
            folder_.Write(name, "x");
            break;
        case 2:
            fs::create_directory(path);
            break;
        case 3:
            fs::create_symlink(folder_.File("a file.dds"), path);
            break;
        case 4:
            fs::create_symlink(folder_.Path(), path);
            break;
        default:
            fs::create_symlink("nowhere", path);
        }
    }
    // One of 8 names in one of its 16 spellings.
    std::string AnyName() {
        std::string name = "aaaa.dds";
        const auto bits = static_cast<unsigned>(random_());
        name[3] = static_cast<char>('a' + (bits & 7));
        for (size_t i = 0; i < 4; ++i)
            if ((bits >> (4 + i) & 1) != 0)
                name[i] = static_cast<char>(name[i] - 'a' + 'A');
        return name;
    }

    std::mt19937 random_{9};
    TestFolder folder_;
};

TEST_F(ListedFilesTest, AreThoseThatALookAtEachFinds) {
    folder_.Write("a file.dds", "x");
    for (int round = 0; round < 20; ++round) {
        const std::string inner = "round " + std::to_string(round) + "/";
        fs::create_directory(folder_.File(inner));
        for (int i = 0; i < 12; ++i)
            MakeAny(inner + AnyName());
        const ListedFiles listed(folder_.File(inner));
        const FolderIndex index(folder_.File(inner));
        for (int i = 0; i < 60; ++i) {
            const std::string name = AnyName();
            ASSERT_EQ(listed.Has(name), index.HasFile(name)) << inner << name;
        }
        for (const char* name : {"", ".", "..", "x"})
            ASSERT_FALSE(listed.Has(name)) << name;
    }
}

TEST_F(ListedFilesTest, NoFileIsLookedAt) {
    folder_.Write("H1.DDS", "x");
    const ListedFiles listed(folder_.Path());
    fs::remove(folder_.File("H1.DDS"));
    EXPECT_TRUE(listed.Has("h1.dds"));
}

TEST_F(ListedFilesTest, LinksAreFollowed) {
    folder_.Write("one", "x");
    fs::create_symlink("one", folder_.File("a.dds"));
    fs::create_symlink("nowhere", folder_.File("b.dds"));
    const ListedFiles listed(folder_.Path());
    EXPECT_TRUE(listed.Has("A.dds"));
    EXPECT_FALSE(listed.Has("b.dds"));
}

TEST_F(ListedFilesTest, AFolderThatIsNotThereHasNone) {
    EXPECT_FALSE(ListedFiles(folder_.File("none")).Has("a.dds"));
    folder_.Write("file", "x");
    EXPECT_FALSE(ListedFiles(folder_.File("file")).Has("a.dds"));
}

TEST_F(ListedFilesTest, OfAFolderThatMayOnlyBeEnteredAreFoundAsTheyStand) {
    folder_.Write("dds/H1.DDS", "x");
    LetOthers(folder_.Path(), 5);
    LetOthers(folder_.File("dds"), 1);
    const PlainUser user;
    const ListedFiles listed(folder_.File("dds"));
    EXPECT_TRUE(listed.Has("H1.DDS"));
    EXPECT_FALSE(listed.Has("h1.dds"));
}

// Their names can be read, and that is all.
TEST_F(ListedFilesTest, ThoseThatMayNotBeLookedAtAreAnErrorAndNotAbsent) {
    folder_.Write("dds/H1.DDS", "x");
    LetOthers(folder_.Path(), 5);
    LetOthers(folder_.File("dds"), 4);
    const PlainUser user;
    const ListedFiles listed(folder_.File("dds"));
    EXPECT_THROW(listed.Has("h1.dds"), RuntimeError);
    EXPECT_FALSE(listed.Has("h2.dds"));
}

} // namespace
} // namespace vardenix::tests
