#include "files/ProfileFile.h"

#include "platform/Guid.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <random>

namespace vardenix {
namespace {

using tests::PlainUser;
using tests::Slurp;
using tests::TestFolder;

std::string ReadFrom(const std::string& text, const std::string& section,
                     const std::string& key) {
    return ProfileFile(text).Read(section, key);
}

TEST(ProfileFile, FindsNamesWithoutRegardToCase) {
    const ProfileFile file("[Last_Sett]\r\nZoom=4\r\n");
    EXPECT_EQ(file.Read("LAST_SETT", "ZOOM"), "4");
    EXPECT_EQ(file.Read("last_sett", "zoom"), "4");
    EXPECT_TRUE(file.Has("last_SETT", "zOOm"));
    EXPECT_FALSE(file.Has("LAST_SETT", "Zoom1"));
    EXPECT_FALSE(file.Has("LAST", "Zoom"));
}

TEST(ProfileFile, KeepsTheCaseAndTheBytesOfAValue) {
    EXPECT_EQ(ReadFrom("[a]\nname=Cor\xE9"
                       "e du Nord",
                       "A", "NAME"),
              "Cor\xE9"
              "e du Nord");
}

TEST(ProfileFile, TrimsBlanksRoundNamesAndValuesButNoTabs) {
    const ProfileFile file("  [  My Part ]  junk\n  key one  =  two  words  \nk=\tx\t\n");
    EXPECT_EQ(file.Read("My Part", "key one"), "two  words");
    EXPECT_EQ(file.Read("My Part", "k"), "\tx\t");
}

TEST(ProfileFile, TakesOnePairOfQuotesOff) {
    EXPECT_EQ(ReadFrom("[a]\nk=\"  x \"", "a", "k"), "  x ");
    EXPECT_EQ(ReadFrom("[a]\nk='x'", "a", "k"), "x");
    EXPECT_EQ(ReadFrom("[a]\nk='\"x\"'", "a", "k"), "\"x\"");
    EXPECT_EQ(ReadFrom("[a]\nk=\"x'", "a", "k"), "\"x'");
    EXPECT_EQ(ReadFrom("[a]\nk=\"", "a", "k"), "\"");
    EXPECT_EQ(ReadFrom("[a]\nk=\"\"", "a", "k"), "");
}

TEST(ProfileFile, PassesOverCommentsAndLinesWithoutAnEqualsSign) {
    const ProfileFile file("[a]\n;k=1\n  ; k=2\nk\nk=3\n");
    EXPECT_EQ(file.Read("a", "k"), "3");
    EXPECT_FALSE(file.Has("a", ";k"));
}

TEST(ProfileFile, IgnoresKeysBeforeTheFirstSection) {
    EXPECT_FALSE(ProfileFile("k=1\n[a]\nm=2").Has("", "k"));
}

TEST(ProfileFile, TheFirstKeyOfTheFirstSectionOfANameWins) {
    const ProfileFile file("[a]\nk=1\nK=2\n[b]\nk=3\n[A]\nk=4\nm=5\n");
    EXPECT_EQ(file.Read("a", "k"), "1");
    EXPECT_EQ(file.Read("b", "k"), "3");
    EXPECT_FALSE(file.Has("a", "m"));
}

TEST(ProfileFile, ANulEndsALine) {
    EXPECT_EQ(ReadFrom(std::string("[a]\nk=x \0y\n", 11), "a", "k"), "x");
}

TEST(ProfileFile, SplitsAtTheFirstEqualsSignOnly) {
    EXPECT_EQ(ReadFrom("[a]\nk=x=y;z", "a", "k"), "x=y;z");
}

TEST(ProfileFile, TakesEveryKindOfLineEnd) {
    const ProfileFile file("[a]\r\nb=1\rc=2\nd=3\n\r\ne=4");
    EXPECT_EQ(file.Read("a", "b") + file.Read("a", "c") + file.Read("a", "d") +
                  file.Read("a", "e"),
              "1234");
}

TEST(ProfileFile, CutsAValueAt750Bytes) {
    const std::string longValue(800, 'x');
    EXPECT_EQ(ReadFrom("[a]\nk=" + longValue, "a", "k"), std::string(750, 'x'));
    EXPECT_EQ(ReadFrom("[a]\nk=\"" + longValue + "\"", "a", "k"), std::string(750, 'x'));
    EXPECT_EQ(ReadFrom("[a]\nk=" + std::string(750, 'y'), "a", "k").size(), 750U);
}

TEST(ProfileFile, ASectionWithoutItsBracketRunsToTheEndOfTheLine) {
    EXPECT_EQ(ReadFrom("[a\nk=1", "a", "k"), "1");
    EXPECT_EQ(ReadFrom("[]\nk=1", "", "k"), "1");
    EXPECT_EQ(ReadFrom("[", "", "k"), "");
}

TEST(ProfileFile, AMissingFileIsError53) {
    const TestFolder folder;
    try {
        ReadProfileFile(folder.File("none.ini"));
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 53);
        EXPECT_NE(error.Detail().find("none.ini"), std::string::npos);
    }
}

// Ten megabytes, each: noise, and the same made of nothing but keys or section lines.
class ProfileFileOfGarbage : public testing::TestWithParam<int> {
protected:
    static constexpr size_t Size = 10'000'000;

    static std::string Garbage(int kind) {
        std::mt19937 random(7);
        std::string text = "[LAST_SETT]\nZoom=4\n";
        while (text.size() < Size) {
            if (kind == 0)
                text += static_cast<char>(random() & 0xFF);
            else
                text += (kind == 2 ? "[" : "") + std::to_string(random() % 1'000'000) +
                        (kind == 1 ? "=\n" : "\n");
        }
        return text;
    }
};

// What took the square of the size would not end before the test is given up.
TEST_P(ProfileFileOfGarbage, DoesNotHideAKey) {
    const ProfileFile file(Garbage(GetParam()));
    EXPECT_EQ(file.Read("LAST_SETT", "Zoom"), "4");
}

INSTANTIATE_TEST_SUITE_P(Kinds, ProfileFileOfGarbage, testing::Values(0, 1, 2));

TEST(ProfileWriter, KeepsSectionsAndKeysInOrderOfFirstAppearance) {
    ProfileWriter file;
    file.Write("ONE", "A", "1");
    file.Write("TWO", "B", "2");
    file.Write("one", "C", "3");
    file.Write("TWO", "b", "4");
    file.Write("THREE", "D", "");
    EXPECT_EQ(file.Text(), "[ONE]\r\nA=1\r\nC=3\r\n[TWO]\r\nb=4\r\n[THREE]\r\nD=\r\n");
}

TEST(ProfileWriter, LeavesWhatItDoesNotWriteWhereItIs) {
    ProfileWriter file("; mine\n[One]\n;first\n A = 1\nwhat\n\n[Two]\nB=2\n[one]\nA=9\n");
    file.Write("ONE", "A", "5");
    file.Write("ONE", "C", "6");
    file.Write("ONE", "D", "7");
    EXPECT_EQ(file.Text(),
              "; mine\r\n[One]\r\n;first\r\nA=5\r\nwhat\r\nC=6\r\nD=7\r\n\r\n"
              "[Two]\r\nB=2\r\n[one]\r\nA=9\r\n");
}

TEST(ProfileWriter, AValueHoldsOneLine) {
    ProfileWriter file;
    file.Write("A", "K", "x\r\n[B]\r\nK=1");
    file.Write("A", "L", "x\ny");
    file.Write("A", "M", std::string("x\0y", 3));
    EXPECT_EQ(file.Text(), "[A]\r\nK=x\r\nL=x\r\nM=x\r\n");
}

TEST(ProfileWriter, QuotesOnlyWhatReadingWouldShorten) {
    ProfileWriter file;
    file.Write("A", "K", " x");
    file.Write("A", "L", "\"x\"");
    file.Write("A", "M", "it's 5\"");
    EXPECT_EQ(file.Text(), "[A]\r\nK=\" x\"\r\nL=\"\"x\"\"\r\nM=it's 5\"\r\n");
    const ProfileFile read(file.Text());
    EXPECT_EQ(read.Read("A", "K"), " x");
    EXPECT_EQ(read.Read("A", "L"), "\"x\"");
}

TEST(ProfileWriter, SavesOverTheOldFileAndLeavesNothingBeside) {
    const TestFolder folder;
    const std::string path = folder.Write("a b.ini", "old and longer than what comes");
    ProfileWriter file;
    file.Write("A", "K", "1");
    file.Save(path);
    EXPECT_EQ(Slurp(path), "[A]\r\nK=1\r\n");
    EXPECT_EQ(folder.Names(), "a b.ini");
}

TEST(ProfileWriter, AReadOnlyFileStaysAsItWas) {
    const TestFolder folder;
    const std::string path = folder.Write("a.ini", "old");
    tests::LetOthers(folder.Path(), 7);
    tests::LetOthers(path, 4);
    ProfileWriter file;
    file.Write("A", "K", "1");
    {
        const PlainUser user;
        EXPECT_THROW(file.Save(path), RuntimeError);
    }
    EXPECT_EQ(Slurp(path), "old");
    EXPECT_EQ(folder.Names(), "a.ini");
}

TEST(Guid, HasTheClassicFormAndIsNewEachTime) {
    // X stands for a digit, Y for 8, 9, A or B.
    const std::string form = "{XXXXXXXX-XXXX-4XXX-YXXX-XXXXXXXXXXXX}";
    const std::string first = NewGuid();
    ASSERT_EQ(first.size(), form.size());
    for (size_t i = 0; i < form.size(); ++i) {
        const std::string allowed = form[i] == 'X'   ? "0123456789ABCDEF"
                                    : form[i] == 'Y' ? "89AB"
                                                     : std::string(1, form[i]);
        EXPECT_NE(allowed.find(first[i]), std::string::npos) << first;
    }
    EXPECT_NE(NewGuid(), first);
}

} // namespace
} // namespace vardenix
