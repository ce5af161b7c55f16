#include "pictures/ConversionQueue.h"

#include "support/PictureMaker.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::Targa;
using tests::TestFolder;

class ConversionQueueTest : public testing::Test {
protected:
    ConversionQueueTest() { std::filesystem::create_directory(folder_.File("Temp")); }

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

TEST_F(ConversionQueueTest, EveryJobHasItsLineInOrder) {
    folder_.Write("Temp/run.bat", "a stale line\r\n");
    const std::string one = folder_.Write("Temp/M 1.tga", YellowTarga(4, 4));
    const std::string two = folder_.Write("Temp/L1.tga", YellowTarga(4, 4));
    const std::string day = folder_.File("M 1.dds");
    const std::string night = folder_.File("L1.dds");
    RunConversionQueue(tools_, {{one, day}, {two, night}});
    EXPECT_EQ(Batch(), "\"C:\\VX\\nvcompress.exe\" -nomips -bc1a \"" + one + "\" \"" +
                           day + "\"\r\n\"C:\\VX\\nvcompress.exe\" -nomips -bc1a \"" +
                           two + "\" \"" + night + "\"\r\n");
}

TEST_F(ConversionQueueTest, AnEmptyQueueStillWritesAnEmptyBatch) {
    folder_.Write("Temp/run.bat", "a stale line\r\n");
    RunConversionQueue(tools_, {});
    EXPECT_EQ(Batch(), "");
}

TEST_F(ConversionQueueTest, ATargaBecomesBlockCompressionOneWithoutMipMaps) {
    const std::string from = folder_.Write("Temp/a.tga", YellowTarga(8, 4));
    RunConversionQueue(tools_, {{from, folder_.File("a.dds")}});
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

TEST_F(ConversionQueueTest, AlphaOfAHalfAndLessBecomesTransparent) {
    const std::string from = folder_.Write("Temp/a.tga", YellowTarga(4, 4, true));
    RunConversionQueue(tools_, {{from, folder_.File("a.dds")}});
    EXPECT_EQ(Slurp(folder_.File("a.dds")).substr(132, 4), "\xFF\xFF\xFF\xFF");
}

TEST_F(ConversionQueueTest, NoLetterOfANameIsInterpreted) {
    const std::string from = folder_.Write("Temp/" + Awkward(".tga"), YellowTarga(4, 4));
    const std::string to = folder_.File(Awkward(".dds"));
    RunConversionQueue(tools_, {{from, to}});
    EXPECT_EQ(Slurp(to).size(), 136U);
    EXPECT_FALSE(std::filesystem::exists("x"));
}

TEST_F(ConversionQueueTest, ABrokenSourceIsNamedAndNothingComes) {
    const std::string good = folder_.Write("Temp/a.tga", YellowTarga(4, 4));
    const std::string bad = folder_.Write("Temp/b.tga", "no picture at all");
    const RuntimeError error = tests::ErrorOf([&] {
        RunConversionQueue(tools_,
                           {{good, folder_.File("a.dds")}, {bad, folder_.File("b.dds")}});
    });
    EXPECT_EQ(error.NumberValue(), 481);
    EXPECT_NE(error.Detail().find(bad), std::string::npos);
    EXPECT_EQ(folder_.Names(), "Temp");
}

TEST_F(ConversionQueueTest, AStopBetweenTwoPicturesLeavesNothing) {
    const std::string from = folder_.Write("Temp/a.tga", YellowTarga(4, 4));
    {
        Transaction files;
        EXPECT_FALSE(RunConversionQueue(tools_, {{from, folder_.File("a.dds")}}, files,
                                        [] { return true; }));
    }
    EXPECT_EQ(folder_.Names(), "Temp");
}

} // namespace
} // namespace vardenix
