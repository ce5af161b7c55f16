#include "updater/Archives.h"

#include "support/ErrorOf.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

class ArchivesTest : public testing::Test {
protected:
    ArchivesTest() { std::filesystem::create_directory(folder_.File("Temp")); }

    std::string Batch() { return Slurp(folder_.File("Temp/run.bat")); }
    // A name of every sort that a shell or a batch would read something into.
    static std::string Awkward(const std::string& extension) {
        return "a \"b\" & %PATH% $(touch x) `c` ;\n@-d*" + extension;
    }

    TestFolder folder_;
    ToolRunner tools_{"C:\\VX\\", folder_.File("Temp/")};
};

TEST_F(ArchivesTest, ArchivesGoThroughTheRealProgramAndKeepAwkwardNames) {
    const std::string name = Awkward(".txt");
    const std::string file = folder_.Write(name, "the text");
    const std::string archive = folder_.File(Awkward(".zip"));
    EXPECT_EQ(ZipAddFiles(tools_, archive, {file}), 0);
    EXPECT_EQ(Slurp(folder_.File("Temp/list.txt")), file + "\r\n");
    EXPECT_EQ(Batch(), "\"C:\\VX\\7z.exe\" a \"" + archive + "\" @\"" +
                           folder_.File("Temp/") + "list.txt\"\r\n");
    std::filesystem::create_directory(folder_.File("o u&t"));
    EXPECT_EQ(ZipExtract(tools_, archive, folder_.File("o u&t")), 0);
    EXPECT_EQ(Batch(), "\"C:\\VX\\7z.exe\" e \"" + archive + "\" -o\"" +
                           folder_.File("o u&t") + "\" -y \r\n");
    EXPECT_EQ(Slurp(folder_.File("o u&t/" + name)), "the text");
}

TEST_F(ArchivesTest, ExtractingGoesOverWhatIsThere) {
    const std::string file = folder_.Write("a.txt", "new");
    EXPECT_EQ(ZipAddFiles(tools_, folder_.File("a.7z"), {file}), 0);
    folder_.Write("out/a.txt", "old");
    EXPECT_EQ(ZipExtract(tools_, folder_.File("a.7z"), folder_.File("out/")), 0);
    EXPECT_EQ(Slurp(folder_.File("out/a.txt")), "new");
}

TEST_F(ArchivesTest, ABrokenArchiveGivesTheProgramsExitCode) {
    const std::string archive = folder_.Write("a.7z", "no archive");
    EXPECT_EQ(ZipExtract(tools_, archive, folder_.File("out")), 2);
}

TEST_F(ArchivesTest, AMissingProgramIsToldWithThePackagesName) {
    const std::string path = getenv("PATH");
    setenv("PATH", folder_.Path().c_str(), 1);
    const RuntimeError error =
        tests::ErrorOf([&] { ZipExtract(tools_, "a.7z", folder_.File("out")); });
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(error.NumberValue(), 53);
    EXPECT_NE(error.Detail().find("package 7zip"), std::string::npos);
}

} // namespace
} // namespace vardenix
