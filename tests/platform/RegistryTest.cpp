#include "platform/Registry.h"

#include "platform/WineRegistry.h"
#include "support/Environment.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

using tests::Environment;
using tests::PlainUser;
using tests::Slurp;
using tests::TestFolder;

constexpr const char* Key = "SOFTWARE\\Microprose\\Falcon\\4.0";
constexpr const char* Hive =
    "WINE REGISTRY Version 2\n"
    ";; All keys relative to REGISTRY\\\\Machine\n\n#arch=win64\n\n"
    "[Software\\\\Microprose] 1700000000\n#time=1da0000\n"
    "\"baseDir\"=\"C:\\\\Wrong\"\n\n"
    "[Software\\\\Microprose\\\\Falcon\\\\4.0] 1700000000\n#time=1da0000\n"
    "@=\"the default\"\n"
    "\"Blob\"=hex:43,00,\\\n  44,00\n"
    "\"BaseDir\"=\"C:\\\\Micro Prose\\\\Falcon4\"\n"
    "\"curTheater\"=\"Core\\xe9\\x0065 \\\"N\\\"\"\n"
    "\"Number\"=dword:0000001f\n"
    "\"Minus\"=dword:ffffffff\n"
    "\"Expand\"=str(2):\"C:\\\\x\"\n"
    "\"Multi\"=str(7):\"a\\0b\\0\"\n"
    "\"Raw\"=hex(1):44,00,e9,00,\\\n  20,00,3d,d8,00,de\n\n"
    "[Software\\\\Other] 1700000000\n"
    "\"Only\"=\"there\"\n";

// A made-up prefix with drives C: and E:, and a folder for the program's own files.
class WinePrefix : public testing::Test {
protected:
    WinePrefix() : registry(app.Path() + "\\", program.Path(), prefix.Path()) {
        fs::create_directories(prefix.File("drive_c/Micro Prose"));
        fs::create_directories(prefix.File("dosdevices"));
        fs::create_directories(prefix.File("games disk"));
        fs::create_directory_symlink("../drive_c", prefix.File("dosdevices/c:"));
        fs::create_directory_symlink(prefix.File("games disk"),
                                     prefix.File("dosdevices/e:"));
        fs::create_directory_symlink("/", prefix.File("dosdevices/z:"));
        fs::create_directory_symlink("/nowhere at all", prefix.File("dosdevices/f:"));
        prefix.Write("system.reg", Hive);
    }
    std::string Real(const std::string& name) const {
        return fs::canonical(prefix.Path()).string() + "/" + name;
    }

    TestFolder app;
    TestFolder program;
    TestFolder prefix;
    FileRegistry registry;
};

TEST_F(WinePrefix, GivesAFolderOfThisSystem) {
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), Real("drive_c/Micro Prose/Falcon4"));
}

TEST_F(WinePrefix, IsAskedOnlyForWhatRegistryIniLeavesEmpty) {
    app.Write("registry.ini", "[software\\microprose\\falcon\\4.0]\nBASEDIR = "
                              "\"/home/maker/My Falcon\"\n");
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), "/home/maker/My Falcon");
    app.Write("registry.ini", "[SOFTWARE\\Microprose\\Falcon\\4.0]\nbaseDir=\n");
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), Real("drive_c/Micro Prose/Falcon4"));
}

TEST_F(WinePrefix, IsAskedBehindTheFileBesideTheProgram) {
    const std::string section = "[SOFTWARE\\Microprose\\Falcon\\4.0]\n";
    program.Write("registry.ini", section + "baseDir=/opt/falcon\ncurTheater=Korea\n");
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), "/opt/falcon");
    // What the user says goes first, and is what is written.
    app.Write("registry.ini", section + "baseDir=/home/maker/My Falcon\n");
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), "/home/maker/My Falcon");
    EXPECT_EQ(registry.ReadText(Key, "curTheater"), "Korea");
    registry.WriteText("A", "b", "c");
    EXPECT_EQ(Slurp(program.File("registry.ini")),
              section + "baseDir=/opt/falcon\ncurTheater=Korea\n");
}

TEST_F(WinePrefix, IsAlsoSearchedWhere32BitProgramsKeepTheirKeys) {
    prefix.Write("system.reg", "WINE REGISTRY Version 2\n"
                               "[Software\\\\Wow6432Node\\\\Microprose\\\\Falcon\\\\4.0] "
                               "1\n\"baseDir\"=\"e:\\\\Falcon\"\n");
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), Real("games disk/Falcon"));
}

TEST_F(WinePrefix, FollowsEveryDriveThatIsThere) {
    EXPECT_EQ(PathOfWine(prefix.Path(), "E:"), Real("games disk"));
    EXPECT_EQ(PathOfWine(prefix.Path(), "e:/a\\b\\"), Real("games disk/a/b/"));
    EXPECT_EQ(PathOfWine(prefix.Path(), "Z:\\home\\x"), "/home/x");
    EXPECT_EQ(PathOfWine(prefix.Path(), "z:"), "/");
    EXPECT_EQ(PathOfWine(prefix.Path(), "Q:\\x"), "");
    EXPECT_EQ(PathOfWine(prefix.Path(), "F:\\x"), "");
}

TEST_F(WinePrefix, LeavesOtherTextsAsTheyStand) {
    EXPECT_EQ(PathOfWine(prefix.Path(), "Korea"), "Korea");
    EXPECT_EQ(PathOfWine(prefix.Path(), "C:x"), "C:x");
    EXPECT_EQ(PathOfWine(prefix.Path(), "\\\\server\\x"), "\\\\server\\x");
    EXPECT_EQ(PathOfWine(prefix.Path(), ""), "");
}

TEST_F(WinePrefix, KnowsItsFirstDriveWithoutTheLink) {
    fs::remove(prefix.File("dosdevices/c:"));
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), Real("drive_c/Micro Prose/Falcon4"));
}

TEST_F(WinePrefix, WithoutAHiveNamesNoInstall) {
    fs::remove(prefix.File("system.reg"));
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), "");
    const FileRegistry withoutPrefix(app.Path(), program.Path(), "");
    EXPECT_EQ(withoutPrefix.ReadText(Key, "baseDir"), "");
}

TEST_F(WinePrefix, ThatCannotBeReadNamesNoInstall) {
    tests::LetOthers(prefix.Path(), 5);
    tests::LetOthers(prefix.File("system.reg"), 0);
    const PlainUser user;
    EXPECT_EQ(registry.ReadText(Key, "baseDir"), "");
}

TEST_F(WinePrefix, IsNeverWritten) {
    registry.WriteText("SOFTWARE\\Vardenix", "Version", "3.0.2");
    EXPECT_EQ(Slurp(prefix.File("system.reg")), Hive);
    EXPECT_EQ(Slurp(app.File("registry.ini")),
              "[SOFTWARE\\Vardenix]\r\nVersion=3.0.2\r\n");
    EXPECT_EQ(registry.ReadText("software\\VARDENIX", "version"), "3.0.2");
}

TEST_F(WinePrefix, AWriteKeepsWhatTheUserTyped) {
    app.Write("registry.ini", "; my install\n[SOFTWARE\\Microprose\\Falcon\\4.0]\n"
                              "baseDir=/home/maker/Falcon\n");
    registry.WriteText("SOFTWARE\\Vardenix", "Version", "3.0.2");
    EXPECT_EQ(Slurp(app.File("registry.ini")),
              "; my install\r\n[SOFTWARE\\Microprose\\Falcon\\4.0]\r\n"
              "baseDir=/home/maker/Falcon\r\n[SOFTWARE\\Vardenix]\r\nVersion=3.0.2\r\n");
}

TEST_F(WinePrefix, AWriteThatCannotReadTheOldValuesLeavesThem) {
    const std::string path = app.Write("registry.ini", "[A]\nB=1\n");
    tests::LetOthers(app.Path(), 7);
    tests::LetOthers(path, 2);
    {
        const PlainUser user;
        EXPECT_THROW(registry.WriteText("A", "C", "2"), RuntimeError);
    }
    EXPECT_EQ(Slurp(path), "[A]\nB=1\n");
}

TEST(WineRegistry, FindsNamesWithoutRegardToCase) {
    EXPECT_EQ(WineRegistryText(Hive, "software\\MICROPROSE\\falcon\\4.0", "BASEDIR"),
              "C:\\Micro Prose\\Falcon4");
    EXPECT_EQ(WineRegistryText(Hive, Key, ""), "the default");
}

TEST(WineRegistry, LooksNowhereButUnderTheKey) {
    EXPECT_EQ(WineRegistryText(Hive, Key, "Only"), "");
    EXPECT_EQ(WineRegistryText(Hive, "SOFTWARE\\Microprose\\Falcon", "baseDir"), "");
}

TEST(WineRegistry, ReadsStringsAndNumbersAndNothingElse) {
    EXPECT_EQ(WineRegistryText(Hive, Key, "Number"), "31");
    EXPECT_EQ(WineRegistryText(Hive, Key, "Minus"), "-1");
    EXPECT_EQ(WineRegistryText(Hive, Key, "Blob"), "");
    EXPECT_EQ(WineRegistryText(Hive, Key, "Expand"), "");
    EXPECT_EQ(WineRegistryText(Hive, Key, "Multi"), "");
}

TEST(WineRegistry, UndoesTheEscapes) {
    // U+00E9, then the letter e as four digits, then quotes.
    EXPECT_EQ(WineRegistryText(Hive, Key, "curTheater"), "Core\xC3\xA9"
                                                         "e \"N\"");
    const std::string hive =
        "[a] 1\n\"t\"=\"\\t\\n\\x\\101\\q\\xd83d\\xde00\\xd83dz\\x20ac\"\n"
        "\"u\"=\"C:\\\\x41\"\n\"n\"=\"a\\0\"\n";
    EXPECT_EQ(WineRegistryText(hive, "a", "t"),
              "\t\nxAq\xF0\x9F\x98\x80\xEF\xBF\xBDz\xE2\x82\xAC");
    EXPECT_EQ(WineRegistryText(hive, "a", "u"), "C:\\x41");
    EXPECT_EQ(WineRegistryText(hive, "a", "n"), std::string("a\0", 2));
}

TEST(WineRegistry, KnowsWhereTheKindsOfLettersMeet) {
    const auto letter = [](const std::string& escape) {
        return WineRegistryText("[a] 1\n\"t\"=\"" + escape + "\"\n", "a", "t");
    };
    EXPECT_EQ(letter("\\x007f"), "\x7F");
    EXPECT_EQ(letter("\\x0080"), "\xC2\x80");
    EXPECT_EQ(letter("\\x07ff"), "\xDF\xBF");
    EXPECT_EQ(letter("\\x0800"), "\xE0\xA0\x80");
    EXPECT_EQ(letter("\\xffff"), "\xEF\xBF\xBF");
    EXPECT_EQ(letter("\\xd800\\xdc00"), "\xF0\x90\x80\x80");
    EXPECT_EQ(letter("\\xdbff\\xdfff"), "\xF4\x8F\xBF\xBF");
    // Halves of a pair that stand alone, and what lies beside them.
    EXPECT_EQ(letter("\\xdc00"), "\xEF\xBF\xBD");
    EXPECT_EQ(letter("\\xd800\\xdbff"), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(letter("\\xd800\\xe000"), "\xEF\xBF\xBD\xEE\x80\x80");
    EXPECT_EQ(letter("\\xd7ff"), "\xED\x9F\xBF");
}

TEST(WineRegistry, ReadsAStringStoredWithoutItsEnd) {
    EXPECT_EQ(WineRegistryText(Hive, Key, "Raw"), "D\xC3\xA9 \xF0\x9F\x98\x80");
}

TEST(WineRegistry, SurvivesCutAndBrokenLines) {
    EXPECT_EQ(WineRegistryText("[a] 1\n\"k\"=\"never closed", "a", "k"), "");
    EXPECT_EQ(WineRegistryText("[a] 1\n\"k\"=\"x\\", "a", "k"), "");
    EXPECT_EQ(WineRegistryText("[a] 1\n\"k\"=dword:", "a", "k"), "");
    EXPECT_EQ(WineRegistryText("[a] 1\n\"k\"=hex(1):41,00,42", "a", "k"), "A");
    EXPECT_EQ(WineRegistryText("[a] 1\n\"k\"=hex(1):\\", "a", "k"), "");
    EXPECT_EQ(WineRegistryText("[a\n\"k\"=\"x\"", "a", "k"), "");
    EXPECT_EQ(WineRegistryText("[a] 1\n\"k\n\"k\"\n\"k\"=", "a", "k"), "");
    EXPECT_EQ(WineRegistryText(std::string(3, '\0'), "a", "k"), "");
}

TEST(UsersWinePrefix, IsTheOneThatTheUserNamesElseTheOneAtHome) {
    const Environment home("HOME", "/home/the maker");
    {
        const Environment named("WINEPREFIX", "/games/my prefix");
        EXPECT_EQ(UsersWinePrefix(), "/games/my prefix");
    }
    const Environment empty("WINEPREFIX", "");
    EXPECT_EQ(UsersWinePrefix(), "/home/the maker/.wine");
    const Environment unnamed("WINEPREFIX", nullptr);
    EXPECT_EQ(UsersWinePrefix(), "/home/the maker/.wine");
    const Environment homeless("HOME", nullptr);
    EXPECT_EQ(UsersWinePrefix(), "");
}

} // namespace
} // namespace vardenix
