#include "bineditor/UnusedPictures.h"

#include "bineditor/MadeCatalogue.h"
#include "support/ImpatientDialogs.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>

namespace vardenix {
namespace {

class UnusedPicturesTest : public testing::Test {
protected:
    UnusedPicturesTest() {
        std::filesystem::create_directory(folder_.File("dds"));
        catalogue_ = tests::CatalogueOf({1}, folder_.File("dds/"));
        catalogue_.Bin.Sets[1].Tiles[1].TileName = "H1234.PCX           ";
    }
    void Put(const std::string& name) { folder_.Write("dds/" + name, "x"); }
    std::string Unused() {
        std::string text;
        for (const std::string& name : UnusedPictures(catalogue_))
            text += (text.empty() ? "" : "|") + name;
        return text;
    }
    std::string First() const {
        return "This will delete all *.dds files from '" + catalogue_.DDSFolder +
               "' that are not used in your BIN file. Are you sure you want to do this "
               "(no undo available)?";
    }
    std::string Second(int count) const {
        return std::to_string(count) + " files from '" + catalogue_.DDSFolder +
               "' are going to be deleted. Are you really sure?";
    }

    tests::TestFolder folder_;
    Catalogue catalogue_;
    tests::ScriptedDialogs dialogs_;
};

TEST_F(UnusedPicturesTest, ATileProtectsItsSixPicturesWhateverTheirCase) {
    for (const char* name : {"h1234.dds", "H1234N.dds", "m1234.dds", "M1234N.dds",
                             "L1234.DDS", "L1234N.dds"})
        Put(name);
    EXPECT_EQ(Unused(), "");
    dialogs_.ExpectBox("Confirm", First(), BoxAnswer::Yes);
    dialogs_.ExpectBox("Info",
                       "All dds files are used by BIN. No file needs to be deleted.",
                       BoxAnswer::Ok);
    cmdDeleteUnusedDDS(catalogue_, dialogs_);
}

// What an intake that was killed has left may be the only copy of a picture.
TEST_F(UnusedPicturesTest, NothingThatAnIntakeHasStagedIsOffered) {
    for (const char* name :
         {"HSEA.ddsx", "HWOOD.DDSX", "vardenix.journal", "vardenix.journal.aside"})
        Put(name);
    EXPECT_EQ(Unused(), "");
}

TEST_F(UnusedPicturesTest, EveryOtherFileIsOfferedAndFoldersAreLeftAlone) {
    for (const char* name : {"T1234.dds", "notes.txt", "H1234.pcx", "a_b.dds", "aZ.dds"})
        Put(name);
    std::filesystem::create_directory(folder_.File("dds/folder.dds"));
    // In the order in which they are compared, by capital letters: "_" is behind "Z".
    EXPECT_EQ(Unused(), "aZ.dds|a_b.dds|H1234.pcx|notes.txt|T1234.dds");
}

TEST_F(UnusedPicturesTest, ACatalogueWithoutTilesOffersEverything) {
    Put("H1234.dds");
    catalogue_.Bin = TextureBin();
    EXPECT_EQ(Unused(), "H1234.dds");
}

TEST_F(UnusedPicturesTest, CancelAtEitherQuestionDeletesNothing) {
    Put("other.dds");
    dialogs_.ExpectBox("Confirm", First(), BoxAnswer::No);
    cmdDeleteUnusedDDS(catalogue_, dialogs_);
    dialogs_.ExpectBox("Confirm", First(), BoxAnswer::Yes);
    dialogs_.ExpectBox("Confirm Again...", Second(1), BoxAnswer::No);
    cmdDeleteUnusedDDS(catalogue_, dialogs_);
    EXPECT_EQ(Unused(), "other.dds");
    dialogs_.ExpectBox("Confirm", First(), BoxAnswer::Yes);
    dialogs_.ExpectBox("Confirm Again...", Second(1), BoxAnswer::Yes);
    cmdDeleteUnusedDDS(catalogue_, dialogs_);
    EXPECT_EQ(Unused(), "");
}

TEST_F(UnusedPicturesTest, AMissingFolderIsTold) {
    catalogue_.DDSFolder = folder_.File("gone/");
    dialogs_.ExpectBox("Attention",
                       "The folder '" + catalogue_.DDSFolder +
                           "' does not exist so no dds files are loaded.",
                       BoxAnswer::Ok);
    cmdDeleteUnusedDDS(catalogue_, dialogs_);
}

TEST_F(UnusedPicturesTest, AFileThatStaysIsToldAndTheRestGoes) {
    Put("a.dds");
    Put("c.dds");
    dialogs_.ExpectBox("Error.", "File 'b.dds' could not be deleted.\nFile not found",
                       BoxAnswer::Ok);
    EXPECT_EQ(DeletePictures(catalogue_.DDSFolder, {"a.dds", "b.dds", "c.dds"}, dialogs_),
              2U);
    EXPECT_EQ(Unused(), "");
}

TEST_F(UnusedPicturesTest, WhoHasSeenEnoughBoxesIsSparedTheRest) {
    Put("c.dds");
    tests::ImpatientDialogs dialogs(2);
    EXPECT_EQ(DeletePictures(catalogue_.DDSFolder, {"1", "2", "3", "c.dds"}, dialogs),
              1U);
    EXPECT_EQ(dialogs.Story, "File '1' could not be deleted.\nFile not found  +2\n"
                             "File '2' could not be deleted.\nFile not found  +1\n");
    EXPECT_EQ(dialogs.Title, "Error.");
    EXPECT_EQ(dialogs.Icon, BoxIcon::Critical);
    EXPECT_EQ(Unused(), "");
}

TEST_F(UnusedPicturesTest, NamesWithASlashTheOtherWayAreDeletedThemselves) {
    Put("b");
    std::filesystem::create_directory(folder_.File("dds/a"));
    folder_.Write("dds/a\\b", "x");
    EXPECT_EQ(DeletePictures(catalogue_.DDSFolder, {"a\\b"}, dialogs_), 1U);
    EXPECT_EQ(Unused(), "b");
}

// The merge of two sorted lists against asking for every name one by one.
TEST(UnusedNames, AreThoseThatNoWantedNameMatches) {
    std::mt19937 random(3);
    const auto name = [&] {
        std::string text;
        for (size_t i = 0; i < random() % 3 + 1; ++i)
            text += "aAbB_Z.n"[random() % 8];
        return text;
    };
    const auto upper = [](std::string text) {
        for (char& c : text)
            c = static_cast<char>(std::toupper(c));
        return text;
    };
    const auto sorted = [&](const std::vector<std::string>& names) {
        std::multimap<std::string, std::string> byKey;
        for (const std::string& each : names)
            byKey.emplace(upper(each), each);
        std::vector<std::string> result;
        for (const auto& [key, each] : byKey)
            result.push_back(each);
        return result;
    };
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> wanted;
        std::vector<std::string> present;
        for (size_t i = 0; i < random() % 12; ++i)
            wanted.push_back(name());
        for (size_t i = 0; i < random() % 12; ++i)
            present.push_back(name());
        present = sorted(present);
        std::vector<std::string> expected;
        for (const std::string& file : present)
            if (std::none_of(wanted.begin(), wanted.end(), [&](const std::string& want) {
                    return upper(want) == upper(file);
                }))
                expected.push_back(file);
        EXPECT_EQ(UnusedNames(sorted(wanted), present), expected);
    }
}

} // namespace
} // namespace vardenix
