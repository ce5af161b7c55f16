#include "services/ToolRunner.h"

#include "platform/RunAndWait.h"
#include "platform/RuntimeError.h"
#include "services/PictureMaker.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::Targa;
using tests::TestFolder;

class ToolRunnerTest : public testing::Test {
protected:
    ToolRunnerTest() { std::filesystem::create_directory(folder_.File("Temp")); }

    std::string Batch() { return Slurp(folder_.File("Temp/run.bat")); }
    // A name of every sort that a shell or a batch would read something into.
    static std::string Awkward(const std::string& extension) {
        return "a \"b\" & %PATH% $(touch x) `c` ;\n@-d*" + extension;
    }

    TestFolder folder_;
    ToolRunner tools_{"C:\\VX\\", folder_.File("Temp/")};
};

// All of one colour: red 248, green 252, blue 0 is exact in 5, 6 and 5 bits.
std::string YellowTarga(int width, int height, bool transparent = false) {
    std::string pixels;
    for (int i = 0; i < width * height; ++i)
        pixels += std::string{'\0', '\xFF', '\xFF', transparent ? '\x7F' : '\xFF'};
    return Targa(width, height, pixels, {.Bits = 32, .Descriptor = 0x28});
}

TEST_F(ToolRunnerTest, EveryJobHasItsLineInOrder) {
    folder_.Write("Temp/run.bat", "a stale line\r\n");
    const std::string one = folder_.Write("Temp/M 1.tga", YellowTarga(4, 4));
    const std::string two = folder_.Write("Temp/L1.tga", YellowTarga(4, 4));
    const std::string day = folder_.File("M 1.dds");
    const std::string night = folder_.File("L1.dds");
    tools_.RunConversionQueue({{one, day}, {two, night}});
    EXPECT_EQ(Batch(), "\"C:\\VX\\nvcompress.exe\" -nomips -bc1a \"" + one + "\" \"" +
                           day + "\"\r\n\"C:\\VX\\nvcompress.exe\" -nomips -bc1a \"" +
                           two + "\" \"" + night + "\"\r\n");
}

TEST_F(ToolRunnerTest, AnEmptyQueueStillWritesAnEmptyBatch) {
    folder_.Write("Temp/run.bat", "a stale line\r\n");
    tools_.RunConversionQueue({});
    EXPECT_EQ(Batch(), "");
}

TEST_F(ToolRunnerTest, ATargaBecomesBlockCompressionOneWithoutMipMaps) {
    const std::string from = folder_.Write("Temp/a.tga", YellowTarga(8, 4));
    tools_.RunConversionQueue({{from, folder_.File("a.dds")}});
    const std::string dds = Slurp(folder_.File("a.dds"));
    ASSERT_EQ(dds.size(), 128U + 2 * 8);
    EXPECT_EQ(dds.substr(0, 4), "DDS ");
    EXPECT_EQ(dds.substr(12, 8), tests::Little(4, 4) + tests::Little(8, 4));
    EXPECT_EQ(dds.substr(28, 4), tests::Little(0, 4)); // levels
    EXPECT_EQ(dds.substr(84, 4), "DXT1");
    // Every pixel shows a colour that is yellow to the last bit: red and green full.
    for (size_t block = 128; block < dds.size(); block += 8) {
        const auto codes = static_cast<unsigned char>(dds[block + 4]);
        const size_t color = block + (codes & 1) * 2;
        ASSERT_LT(codes & 3, 2);
        EXPECT_EQ(dds.substr(color, 2), tests::Little(0xFFE0, 2));
    }
}

TEST_F(ToolRunnerTest, AlphaOfAHalfAndLessBecomesTransparent) {
    const std::string from = folder_.Write("Temp/a.tga", YellowTarga(4, 4, true));
    tools_.RunConversionQueue({{from, folder_.File("a.dds")}});
    EXPECT_EQ(Slurp(folder_.File("a.dds")).substr(132, 4), "\xFF\xFF\xFF\xFF");
}

TEST_F(ToolRunnerTest, NoLetterOfANameIsInterpreted) {
    const std::string from = folder_.Write("Temp/" + Awkward(".tga"), YellowTarga(4, 4));
    const std::string to = folder_.File(Awkward(".dds"));
    tools_.RunConversionQueue({{from, to}});
    EXPECT_EQ(Slurp(to).size(), 136U);
    EXPECT_FALSE(std::filesystem::exists("x"));
}

TEST_F(ToolRunnerTest, ABrokenSourceIsNamedAndNothingComes) {
    const std::string good = folder_.Write("Temp/a.tga", YellowTarga(4, 4));
    const std::string bad = folder_.Write("Temp/b.tga", "no picture at all");
    const RuntimeError error = tests::ErrorOf([&] {
        tools_.RunConversionQueue(
            {{good, folder_.File("a.dds")}, {bad, folder_.File("b.dds")}});
    });
    EXPECT_EQ(error.NumberValue(), 481);
    EXPECT_NE(error.Detail().find(bad), std::string::npos);
    EXPECT_EQ(folder_.Names(), "Temp");
}

TEST_F(ToolRunnerTest, AStopBetweenTwoPicturesLeavesNothing) {
    const std::string from = folder_.Write("Temp/a.tga", YellowTarga(4, 4));
    {
        Transaction files;
        EXPECT_FALSE(tools_.RunConversionQueue({{from, folder_.File("a.dds")}}, files,
                                               [] { return true; }));
    }
    EXPECT_EQ(folder_.Names(), "Temp");
}

TEST_F(ToolRunnerTest, ArchivesGoThroughTheRealProgramAndKeepAwkwardNames) {
    const std::string name = Awkward(".txt");
    const std::string file = folder_.Write(name, "the text");
    const std::string archive = folder_.File(Awkward(".zip"));
    EXPECT_EQ(tools_.ZipAddFiles(archive, {file}), 0);
    EXPECT_EQ(Slurp(folder_.File("Temp/list.txt")), file + "\r\n");
    EXPECT_EQ(Batch(), "\"C:\\VX\\7z.exe\" a \"" + archive + "\" @\"" +
                           folder_.File("Temp/") + "list.txt\"\r\n");
    std::filesystem::create_directory(folder_.File("o u&t"));
    EXPECT_EQ(tools_.ZipExtract(archive, folder_.File("o u&t")), 0);
    EXPECT_EQ(Batch(), "\"C:\\VX\\7z.exe\" e \"" + archive + "\" -o\"" +
                           folder_.File("o u&t") + "\" -y \r\n");
    EXPECT_EQ(Slurp(folder_.File("o u&t/" + name)), "the text");
}

TEST_F(ToolRunnerTest, ExtractingGoesOverWhatIsThere) {
    const std::string file = folder_.Write("a.txt", "new");
    EXPECT_EQ(tools_.ZipAddFiles(folder_.File("a.7z"), {file}), 0);
    folder_.Write("out/a.txt", "old");
    EXPECT_EQ(tools_.ZipExtract(folder_.File("a.7z"), folder_.File("out/")), 0);
    EXPECT_EQ(Slurp(folder_.File("out/a.txt")), "new");
}

TEST_F(ToolRunnerTest, ABrokenArchiveGivesTheProgramsExitCode) {
    const std::string archive = folder_.Write("a.7z", "no archive");
    EXPECT_EQ(tools_.ZipExtract(archive, folder_.File("out")), 2);
}

TEST_F(ToolRunnerTest, AMissingProgramIsToldWithThePackagesName) {
    const std::string path = getenv("PATH");
    setenv("PATH", folder_.Path().c_str(), 1);
    const RuntimeError error =
        tests::ErrorOf([&] { tools_.ZipExtract("a.7z", folder_.File("out")); });
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(error.NumberValue(), 53);
    EXPECT_NE(error.Detail().find("package 7zip"), std::string::npos);
}

TEST(RunAndWait, GivesTheExitCodeAndPassesArgumentsAsTheyStand) {
    EXPECT_EQ(RunAndWait({"sh", "-c", "exit 7"}), 7);
    EXPECT_EQ(RunAndWait({"test", "a \"b\" $(c)\n", "=", "a \"b\" $(c)\n"}), 0);
    EXPECT_EQ(RunAndWait({"/no/such/program"}), -1);
    EXPECT_EQ(RunAndWait({"sh", "-c", "kill -9 $$"}), -1);
}

} // namespace
} // namespace vardenix
