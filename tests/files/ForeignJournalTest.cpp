#include "files/JournalReach.h"
#include "files/Mending.h"
#include "files/Transaction.h"
#include "support/JournalMaker.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::JournalMaker;
using tests::Slurp;
using tests::TestFolder;

// A theater, a folder of somebody's letters beside it, and a journal in the theater's
// terrain folder that names one more file than the theater's own.
class ForeignJournal : public testing::Test {
protected:
    void SetUp() override {
        pathL_ = folder_.Write("my theater/terrain/theater.L2", "old L");
        bin_ = folder_.Write("my theater/texture/Texture.bin", "old B");
    }
    void Journal(const std::string& name, const std::string& staged,
                 const std::string& replaced) {
        JournalMaker journal;
        journal.Add(name, staged, replaced);
        folder_.Write("my theater/terrain/vardenix.journal", journal.Text());
    }
    bool HasJournal() const { return Exists("vardenix.journal"); }
    bool IsSetAside() const { return Exists("vardenix.journal.aside"); }

    TestFolder folder_;
    std::string pathL_;
    std::string bin_;

private:
    bool Exists(const std::string& name) const {
        return fs::exists(folder_.File("my theater/terrain/" + name));
    }
};

TEST_F(ForeignJournal, RenamesNoFileOutsideTheTheater) {
    const std::string draft = folder_.Write("letters/theater.mapx", "a draft");
    const std::string letter = folder_.File("letters/theater.map");
    for (const std::string& name :
         {std::string("../../letters/theater.map"), letter,
          std::string("./../../letters/../letters/theater.map")}) {
        Journal(name, "a draft", letter);
        const Mended mended = MendAll({pathL_});
        EXPECT_EQ(mended.SetAside.size(), 1U) << name;
        EXPECT_EQ(Slurp(draft), "a draft") << name;
        EXPECT_FALSE(fs::exists(letter)) << name;
        EXPECT_FALSE(HasJournal());
        EXPECT_TRUE(IsSetAside());
    }
}

TEST_F(ForeignJournal, DeletesNoFileOutsideTheTheater) {
    const std::string letter = folder_.Write("letters/theater.map", "years of work");
    const std::string draft = folder_.Write("letters/theater.mapx", "a draft");
    Journal("../../letters/theater.map", "a draft", folder_.File("nothing"));
    MendAll({pathL_});
    EXPECT_EQ(Slurp(draft), "a draft");
    EXPECT_EQ(Slurp(letter), "years of work");
    EXPECT_TRUE(IsSetAside());
}

TEST_F(ForeignJournal, MovesNoFileOfAnotherKindInTheTheater) {
    const std::string draft = folder_.Write("my theater/terrain/thesis.docx", "a draft");
    Journal("thesis.doc", "a draft", folder_.File("my theater/terrain/thesis.doc"));
    EXPECT_EQ(MendAll({pathL_}).SetAside.size(), 1U);
    EXPECT_EQ(Slurp(draft), "a draft");
    EXPECT_TRUE(IsSetAside());
}

TEST_F(ForeignJournal, CountsForAFileThatWasNamedWhateverItsName) {
    const std::string strange = folder_.File("my theater/terrain/catalogue.dat");
    folder_.Write("my theater/terrain/catalogue.datx", "new");
    Journal("catalogue.dat", "new", strange);
    EXPECT_TRUE(MendAll({strange}).SetAside.empty());
    EXPECT_EQ(Slurp(strange), "new");
}

TEST_F(ForeignJournal, WithMoreFilesOfTheTheaterThanWereNamedIsLeftAsItIs) {
    folder_.Write("my theater/texture/Texture.binx", "new B");
    Journal("../texture/Texture.bin", "new B", bin_);
    try {
        MendAll({pathL_});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PermissionDenied);
        EXPECT_NE(error.Detail().find("Texture.bin"), std::string::npos);
        EXPECT_NE(error.Detail().find("Open the whole theater"), std::string::npos);
    }
    EXPECT_TRUE(HasJournal());
    EXPECT_EQ(Slurp(bin_), "old B");
    EXPECT_EQ(MendAll({pathL_, bin_}).Done.size(), 1U);
    EXPECT_EQ(Slurp(bin_), "new B");
    EXPECT_FALSE(HasJournal());
}

TEST_F(ForeignJournal, OfASaveOverFoldersElsewhereIsLeftAsItIsToo) {
    const std::string picture = folder_.Write("pictures/HSEA.dds", "old H");
    folder_.Write("pictures/HSEA.ddsx", "new H");
    JournalMaker other;
    other.Add("HSEA.dds", "new H", picture);
    folder_.Write("pictures/vardenix.journal", other.Text());
    Journal("../../pictures/HSEA.dds", "new H", picture);
    EXPECT_THROW(MendAll({pathL_}), RuntimeError);
    EXPECT_TRUE(HasJournal());
    MendAll({pathL_, folder_.File("pictures/")});
    EXPECT_EQ(Slurp(picture), "new H");
}

TEST_F(ForeignJournal, OfAllFoldersIsFinishedByASaveThatIsToldThemAll) {
    folder_.Write("my theater/texture/Texture.binx", "new B");
    Journal("../texture/Texture.bin", "new B", bin_);
    EXPECT_THROW(Transaction().Stage(pathL_), RuntimeError);
    Transaction files({pathL_, bin_});
    files.Stage(pathL_);
    EXPECT_EQ(Slurp(bin_), "new B");
}

// Needs the superuser's right to give files away.
class JournalOfAnother : public ForeignJournal {
protected:
    void SetUp() override {
        ForeignJournal::SetUp();
        terrain_ = folder_.File("my theater/terrain");
        pathO_ = folder_.Write("my theater/terrain/theater.O2", "old O");
    }
    void Give(const std::string& name) const {
        ASSERT_EQ(chown((terrain_ + "/" + name).c_str(), 12345, 12345), 0);
    }
    std::string terrain_;
    std::string pathO_;
};

TEST_F(JournalOfAnother, TellsItsMixtureAndDropsNothing) {
    if (geteuid() != 0)
        return; // only the superuser can give files away
    JournalMaker journal;
    journal.Add("theater.L2", "old L", folder_.File("nothing"));
    journal.Add("theater.O2", "new O", pathO_);
    folder_.Write("my theater/terrain/vardenix.journal", journal.Text());
    folder_.Write("my theater/terrain/theater.O2x", "new O");
    for (const char* name : {"vardenix.journal", "theater.L2", "theater.O2x"})
        Give(name);
    ASSERT_EQ(chmod(terrain_.c_str(), 01777), 0);
    try {
        MendAll({pathL_, pathO_});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PermissionDenied);
        EXPECT_NE(error.Detail().find("12345"), std::string::npos);
    }
    EXPECT_EQ(Slurp(terrain_ + "/theater.O2x"), "new O");
    EXPECT_TRUE(HasJournal());
}

TEST_F(JournalOfAnother, ThatTellsOfNoMixtureIsSetAside) {
    if (geteuid() != 0)
        return; // only the superuser can give files away
    Journal("theater.O2", "new O", pathO_);
    Give("vardenix.journal");
    for (const mode_t mode : {mode_t{01777}, mode_t{0777}}) {
        Journal("theater.O2", "new O", pathO_);
        Give("vardenix.journal");
        ASSERT_EQ(chmod(terrain_.c_str(), mode), 0);
        EXPECT_EQ(MendAll({pathL_, pathO_}).SetAside.size(), 1U);
        EXPECT_EQ(Slurp(pathO_), "old O");
        EXPECT_TRUE(IsSetAside());
    }
}

TEST(NamesOfOurs, AreThoseThatChangeTogether) {
    for (const char* name :
         {"theater.L2", "THEATER.o0", "x.l5", "heights.elv", "Texture.bin", "theater.MAP",
          "HSEA.dds", "fartiles.index", "Roads.tdf", "VXUndo.tmp"})
        EXPECT_TRUE(IsNameOfOurs(name)) << name;
    for (const char* name : {"theater.L6", "theater.L", "thesis.doc", "dds", ".bashrc",
                             "notes.txt", "x.L22", "vardenix.journal"})
        EXPECT_FALSE(IsNameOfOurs(name)) << name;
}

} // namespace
} // namespace vardenix
