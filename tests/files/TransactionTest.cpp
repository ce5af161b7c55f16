#include "files/Transaction.h"

#include "files/Mending.h"
#include "support/JournalMaker.h"
#include "support/PlainUser.h"
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
using tests::Spill;
using tests::TestFolder;

// Two files that belong together, their names in another case than the program's.
class TwoFiles : public testing::Test {
protected:
    void SetUp() override {
        pathL_ = folder_.Write("theater.l2", "old L");
        pathO_ = folder_.Write("theater.o2", "old O");
    }
    std::vector<std::string> Mend() {
        return MendFiles({folder_.File("THEATER.L2"), folder_.File("THEATER.O2")});
    }
    std::string Both() const { return Slurp(pathL_) + "|" + Slurp(pathO_); }
    // As a program leaves it that was killed between the two renames.
    void KillBetweenTheRenames() {
        JournalMaker journal;
        journal.Add("theater.l2", "new L", pathL_);
        journal.Add("theater.o2", "new O", pathO_);
        folder_.Write("vardenix.journal", journal.Text());
        Replace(pathL_, "new L");
        folder_.Write("theater.o2x", "new O");
    }
    // A new file, not the old one with other bytes.
    static void Replace(const std::string& path, const std::string& bytes) {
        Spill(path + ".new", bytes);
        fs::rename(path + ".new", path);
    }

    TestFolder folder_;
    std::string pathL_;
    std::string pathO_;
};

using Transactions = TwoFiles;

TEST_F(Transactions, ChangeAllFilesOrNone) {
    {
        Transaction files;
        files.Stage(pathL_).WriteText("new L");
        files.Stage(pathO_).WriteText("new O");
        EXPECT_EQ(Both(), "old L|old O");
    }
    EXPECT_EQ(Both(), "old L|old O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");

    Transaction files;
    files.Stage(pathL_).WriteText("new L");
    files.Stage(pathO_).WriteText("new O");
    files.Commit();
    EXPECT_EQ(Both(), "new L|new O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(Transactions, ReachOverFoldersAndMakeNewFiles) {
    folder_.Write("texture/Texture.bin", "old B");
    Transaction files;
    files.Stage(folder_.File("texture/Texture.bin")).WriteText("new B");
    files.Stage(pathL_).WriteText("new L");
    files.Stage(folder_.File("Fartiles.dds")).WriteText("new F");
    files.Commit();
    EXPECT_EQ(Slurp(folder_.File("texture/Texture.bin")), "new B");
    EXPECT_EQ(Slurp(folder_.File("Fartiles.dds")), "new F");
    EXPECT_EQ(Both(), "new L|old O");
    EXPECT_EQ(folder_.Names(), "Fartiles.dds texture theater.l2 theater.o2");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.File("texture")), {}), 1);
}

TEST_F(Transactions, OfNoFileDoNothing) {
    Transaction nothing;
    EXPECT_NO_THROW(nothing.Commit());
}

TEST_F(Transactions, RefuseTheSameFileTwice) {
    Transaction files;
    files.Stage(pathL_);
    EXPECT_THROW(files.Stage(folder_.File("THEATER.L2")), RuntimeError);
}

TEST_F(Transactions, KnowThatAnotherFileWasPutThereSince) {
    const FileIdentity read = IdentityOfRealPath(pathL_);
    {
        Transaction files;
        files.Stage(pathL_, read).WriteText("mine");
        Replace(pathL_, "their");
        EXPECT_THROW(files.Commit(), ChangedFileError);
    }
    EXPECT_EQ(Slurp(pathL_), "their");
    {
        Transaction files;
        EXPECT_THROW(files.Stage(pathL_, read), ChangedFileError);
    }
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
    Transaction files;
    files.Stage(pathL_, IdentityOfRealPath(pathL_)).WriteText("mine");
    files.Commit();
    EXPECT_EQ(Slurp(pathL_), "mine");
}

TEST_F(Transactions, WriteAFileThatHasGoneSince) {
    const FileIdentity read = IdentityOfRealPath(pathL_);
    fs::remove(pathL_);
    Transaction files;
    files.Stage(pathL_, read).WriteText("mine");
    files.Commit();
    EXPECT_EQ(Slurp(pathL_), "mine");
}

TEST_F(Transactions, FinishAnInterruptedOneBeforeTheyStageAnything) {
    KillBetweenTheRenames();
    {
        Transaction files;
        files.Stage(pathO_);
        EXPECT_EQ(files.Mended().size(), 1U);
    }
    EXPECT_EQ(Both(), "new L|new O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

using Mending = TwoFiles;

TEST_F(Mending, OfNothingIsNothing) {
    EXPECT_TRUE(Mend().empty());
    EXPECT_EQ(Both(), "old L|old O");
}

TEST_F(Mending, DropsAStagedFileWithoutAJournal) {
    for (const char* bytes : {"", "new O"}) {
        folder_.Write("theater.o2x", bytes);
        EXPECT_EQ(Mend().size(), 1U);
        EXPECT_EQ(Both(), "old L|old O");
        EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
    }
}

TEST_F(Mending, FinishesWhatIsProved) {
    KillBetweenTheRenames();
    EXPECT_EQ(Mend(),
              std::vector<std::string>{"Finished the interrupted save of " + pathL_});
    EXPECT_EQ(Both(), "new L|new O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(Mending, FinishesWhatHasNotBegunAndWhatOnlyLacksItsEnd) {
    JournalMaker journal;
    journal.Add("theater.l2", "new L", pathL_);
    journal.Add("theater.o2", "new O", pathO_);
    folder_.Write("vardenix.journal", journal.Text());
    folder_.Write("theater.l2x", "new L");
    folder_.Write("theater.o2x", "new O");
    EXPECT_EQ(Mend().size(), 1U);
    EXPECT_EQ(Both(), "new L|new O");

    folder_.Write("vardenix.journal", journal.Text());
    EXPECT_EQ(Mend().size(), 1U);
    EXPECT_EQ(Both(), "new L|new O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(Mending, MakesAFileThatWasNotThereBefore) {
    JournalMaker journal;
    journal.Add("theater.l2", "new L", pathL_);
    journal.Add("Theater.O3", "new O", folder_.File("Theater.O3"));
    folder_.Write("vardenix.journal", journal.Text());
    Replace(pathL_, "new L");
    folder_.Write("Theater.O3x", "new O");
    EXPECT_EQ(Mend().size(), 1U);
    EXPECT_EQ(folder_.Names(), "Theater.O3 theater.l2 theater.o2");
    EXPECT_EQ(Slurp(folder_.File("Theater.O3")), "new O");
}

TEST_F(Mending, KeepsABackupThatWasBroughtBackInBetween) {
    KillBetweenTheRenames();
    Spill(pathL_, "old L");
    Replace(pathO_, "old O");
    EXPECT_EQ(Mend(),
              std::vector<std::string>{"Dropped the unfinished save of " + pathL_});
    EXPECT_EQ(Both(), "old L|old O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(Mending, KeepsAFileThatSomebodyHasReplacedSince) {
    KillBetweenTheRenames();
    Replace(pathO_, "other");
    EXPECT_EQ(Mend().size(), 1U);
    EXPECT_EQ(Both(), "new L|other");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(Mending, DropsWhatIsNotStagedWhole) {
    KillBetweenTheRenames();
    Spill(folder_.File("theater.o2x"), "new");
    EXPECT_EQ(Mend().size(), 2U);
    EXPECT_EQ(Slurp(pathO_), "old O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");

    KillBetweenTheRenames();
    Spill(folder_.File("theater.o2x"), "wen O");
    Mend();
    EXPECT_EQ(Slurp(pathO_), "old O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(Mending, DropsAJournalThatDoesNotAddUp) {
    KillBetweenTheRenames();
    const std::string good = Slurp(folder_.File("vardenix.journal"));
    std::string wrong = good;
    wrong[good.find("theater.o2")] = 'T';
    const std::vector<std::string> bad{"",
                                       good.substr(0, good.size() / 2),
                                       good.substr(0, good.size() - 1),
                                       wrong,
                                       good + "x",
                                       JournalMaker().Text()};
    for (const std::string& text : bad) {
        folder_.Write("vardenix.journal", text);
        folder_.Write("theater.o2x", "new O");
        EXPECT_FALSE(Mend().empty());
        EXPECT_EQ(Both(), "new L|old O");
        EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
    }
}

TEST_F(Mending, TakesNothingAwayThatAForgedJournalNames) {
    folder_.Write("letters.L2x", "years of work");
    JournalMaker journal;
    journal.Add("letters.L2", "a guess", folder_.File("letters.L2"));
    folder_.Write("vardenix.journal", journal.Text());
    EXPECT_EQ(Mend().size(), 1U);
    EXPECT_EQ(Slurp(folder_.File("letters.L2x")), "years of work");
    EXPECT_EQ(folder_.Names(), "letters.L2x theater.l2 theater.o2");
}

TEST_F(Mending, FinishesATheaterThatWasMovedMeanwhile) {
    KillBetweenTheRenames();
    const TestFolder other;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) {
        const fs::path copy = other.Path() / entry.path().filename();
        fs::copy(entry.path(), copy);
        fs::last_write_time(copy, fs::last_write_time(entry.path()));
    }
    EXPECT_EQ(MendFiles({other.File("theater.l2")}).size(), 1U);
    EXPECT_EQ(Slurp(other.File("theater.o2")), "new O");
}

TEST_F(Mending, LeavesAloneWhatAProgramIsWriting) {
    Transaction running;
    running.Stage(pathL_).WriteText("new L");
    running.Stage(pathO_).WriteText("new O");
    EXPECT_TRUE(Mend().empty());
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.l2x theater.o2 theater.o2x");
    running.Commit();
    EXPECT_EQ(Both(), "new L|new O");
}

TEST_F(Mending, OfALeftoverIsPassedOverWhereTheFolderMayNotBeWritten) {
    folder_.Write("theater.o2x", "");
    folder_.Write("vardenix.journal", "no journal");
    tests::LetOthers(folder_.Path(), 5);
    {
        const tests::PlainUser user;
        EXPECT_TRUE(Mend().empty());
        const ReadingLock reading({pathL_, pathO_});
    }
    tests::LetOthers(folder_.Path(), 7);
    EXPECT_EQ(Both(), "old L|old O");
}

TEST_F(Mending, OfAHalfDoneSaveIsAnErrorWhereTheFolderMayNotBeWritten) {
    KillBetweenTheRenames();
    tests::LetOthers(folder_.Path(), 5);
    {
        const tests::PlainUser user;
        EXPECT_THROW(ReadingLock({pathL_, pathO_}), RuntimeError);
    }
    tests::LetOthers(folder_.Path(), 7);
    EXPECT_EQ(Mend().size(), 1U);
    EXPECT_EQ(Both(), "new L|new O");
}

TEST_F(Mending, AJournalOfSomebodyElseInAFolderForAllIsLeftAlone) {
    KillBetweenTheRenames();
    const std::string journal = folder_.File("vardenix.journal");
    // Only the superuser can give it away; any other tester's own is finished.
    const bool given = chown(journal.c_str(), 12345, 12345) == 0;
    ASSERT_EQ(chmod(folder_.Path().c_str(), 01777), 0);
    if (given)
        EXPECT_THROW(Mend(), RuntimeError);
    else
        Mend();
    EXPECT_EQ(Both(), given ? "new L|old O" : "new L|new O");
}

TEST_F(Mending, PassesOverNamesThatNobodyMayLookFor) {
    tests::LetOthers(folder_.Path(), 1);
    {
        const tests::PlainUser user;
        EXPECT_TRUE(MendFiles({pathL_, folder_.File("THEATER.L0")}).empty());
        const ReadingLock reading({folder_.File("THEATER.L0")});
    }
    tests::LetOthers(folder_.Path(), 7);
}

} // namespace
} // namespace vardenix
