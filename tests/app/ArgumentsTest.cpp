#include "app/Arguments.h"

#include <QDir>
#include <gtest/gtest.h>

namespace vardenix {
namespace {

Arguments Read(const QStringList& words) {
    return ReadArguments(QStringList{"vardenix"} + words);
}

TEST(Arguments, WithoutAFolderTheUserChooses) {
    EXPECT_EQ(Read({}).Theater, "");
    EXPECT_EQ(Read({}).Told, "");
}

TEST(Arguments, AFolderIsKnownByItsWholePath) {
    const std::string here = QDir::currentPath().toStdString();
    EXPECT_EQ(Read({"/a b/theater"}).Theater, "/a b/theater");
    EXPECT_EQ(Read({"theater"}).Theater, here + "/theater");
    EXPECT_EQ(Read({"--", "-theater"}).Theater, here + "/-theater");
}

TEST(Arguments, ALevel2FileStandsForItsTheater) {
    const std::string here = QDir::currentPath().toStdString();
    EXPECT_EQ(Read({"/a b/theater/terrain/theater.L2"}).Theater, "/a b/theater");
    EXPECT_EQ(Read({"theater/Terrain/THEATER.l2"}).Theater, here + "/theater");
    EXPECT_EQ(Read({"/a b/theater.L2 old"}).Theater, "/a b/theater.L2 old");
}

TEST(Arguments, WrongOnesAreToldWithTheUsage) {
    const std::pair<QStringList, const char*> wrong[] = {
        {{"a", "b"}, "one folder"}, {{""}, "empty"}, {{"--grid"}, "grid"}};
    for (const auto& [words, reason] : wrong) {
        const Arguments read = Read(words);
        EXPECT_TRUE(read.Wrong) << reason;
        EXPECT_EQ(read.Theater, "");
        EXPECT_NE(read.Told.find(reason), std::string::npos) << read.Told;
        EXPECT_NE(read.Told.find("[FOLDER]"), std::string::npos) << read.Told;
    }
}

TEST(Arguments, HelpAndVersionAreAnswers) {
    EXPECT_NE(Read({"--help"}).Told.find("[FOLDER]"), std::string::npos);
    EXPECT_EQ(Read({"--version"}).Told, "vardenix 3.0.1\n");
    EXPECT_FALSE(Read({"--help"}).Wrong);
    char program[] = "vardenix";
    char help[] = "--help";
    char folder[] = "folder";
    char* asked[] = {program, help};
    char* named[] = {program, folder};
    EXPECT_TRUE(OnlyAsks(2, asked));
    EXPECT_FALSE(OnlyAsks(2, named));
}

} // namespace
} // namespace vardenix
