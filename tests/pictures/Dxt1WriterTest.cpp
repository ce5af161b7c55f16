#include "pictures/Dxt1Writer.h"

#include "texts/RuntimeError.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace vardenix {
namespace {

using Bytes = std::vector<uint8_t>;

struct Pixel {
    int R, G, B, A;
};

Bytes Picture(int width, int height, Pixel (*colour)(int, int)) {
    Bytes rgba;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Pixel p = colour(x, y);
            for (const int part : {p.R, p.G, p.B, p.A})
                rgba.push_back(static_cast<uint8_t>(part));
        }
    }
    return rgba;
}

Pixel Ramp(int x, int y) { return {x * 7 % 256, y * 5 % 256, (x + y) * 3 % 256, 255}; }
Pixel PureRed(int, int) { return {255, 0, 0, 255}; }

// A decoder written from the format's own description, apart from squish and FreeImage.
Pixel Decode(const Bytes& blocks, int width, int x, int y) {
    const auto blocksAcross = static_cast<size_t>((width + 3) / 4);
    const auto index =
        static_cast<size_t>(y / 4) * blocksAcross + static_cast<size_t>(x / 4);
    const uint8_t* block = &blocks[index * 8];
    const int c0 = block[0] | block[1] << 8;
    const int c1 = block[2] | block[3] << 8;
    const auto red = [](int c) { return std::lround((c >> 11) * 255.0 / 31.0); };
    const auto green = [](int c) { return std::lround((c >> 5 & 63) * 255.0 / 63.0); };
    const auto blue = [](int c) { return std::lround((c & 31) * 255.0 / 31.0); };
    const int code = block[4 + y % 4] >> (2 * (x % 4)) & 3;
    const auto mix = [&](auto part) {
        const long a = part(c0);
        const long b = part(c1);
        const std::array<long, 4> four = {a, b, (2 * a + b) / 3, (a + 2 * b) / 3};
        const std::array<long, 4> three = {a, b, (a + b) / 2, 0};
        return static_cast<int>((c0 > c1 ? four : three)[static_cast<size_t>(code)]);
    };
    return {mix(red), mix(green), mix(blue), c0 <= c1 && code == 3 ? 0 : 255};
}

double WorstError(const Bytes& blocks, int width, int height, Pixel (*colour)(int, int)) {
    double worst = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Pixel a = Decode(blocks, width, x, y);
            const Pixel b = colour(x, y);
            worst = std::max({worst, std::abs(double(a.R - b.R)),
                              std::abs(double(a.G - b.G)), std::abs(double(a.B - b.B))});
        }
    }
    return worst;
}

class TempFile {
public:
    explicit TempFile(const Bytes& bytes) {
        folder_ = std::filesystem::temp_directory_path() /
                  ("dxt1 writer " + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(folder_);
        std::ofstream out(Path(), std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }
    ~TempFile() { std::filesystem::remove_all(folder_); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    std::string Path() const { return (folder_ / "a tile.dds").string(); }

private:
    std::filesystem::path folder_;
};

TEST(Dxt1Writer, WritesTheHeaderOfOneLevelWithoutMipMaps) {
    const auto header = Dxt1FileHeader(128, 64);
    Bytes expected(128, 0);
    const auto put = [&](size_t at, std::initializer_list<int> values) {
        for (const int value : values)
            expected[at++] = static_cast<uint8_t>(value);
    };
    put(0, {'D', 'D', 'S', ' ', 124, 0, 0, 0, 0x07, 0x10, 0x08, 0});
    put(12, {64, 0, 0, 0, 128, 0, 0, 0, 0x00, 0x10, 0, 0}); // 128 * 64 / 2 = 0x1000
    put(76, {32, 0, 0, 0, 4, 0, 0, 0, 'D', 'X', 'T', '1'});
    put(108, {0x00, 0x10, 0, 0});
    EXPECT_EQ(Bytes(header.begin(), header.end()), expected);
}

TEST(Dxt1Writer, CountsTheLinearSizeFromThePixelsNotTheBlocks) {
    const auto header = Dxt1FileHeader(5, 3);
    EXPECT_EQ(header[20], 7);
    EXPECT_EQ(header[21], 0);
}

TEST(Dxt1Writer, KeepsAPureColourExactlyInOneBlock) {
    for (const Dxt1Fit fit : {Dxt1Fit::Cluster, Dxt1Fit::Range}) {
        const Bytes blocks = CompressDxt1(Picture(4, 4, PureRed), 4, 4, {fit});
        ASSERT_EQ(blocks.size(), 8u);
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 4; ++x) {
                const Pixel p = Decode(blocks, 4, x, y);
                EXPECT_EQ(p.R, 255);
                EXPECT_EQ(p.G, 0);
                EXPECT_EQ(p.B, 0);
                EXPECT_EQ(p.A, 255);
            }
        }
    }
}

TEST(Dxt1Writer, FillsTheLastBlocksWhereSidesAreNoMultipleOfFour) {
    const Bytes rgba = Picture(7, 5, Ramp);
    const Bytes blocks = CompressDxt1(rgba, 7, 5);
    ASSERT_EQ(blocks.size(), 2u * 2u * 8u);
    EXPECT_LT(WorstError(blocks, 7, 5, Ramp), 16);
    // The padding repeats the last column and row.
    const Pixel inside = Decode(blocks, 7, 6, 4);
    const Pixel padding = Decode(blocks, 7, 7, 7);
    EXPECT_EQ(inside.R, padding.R);
    EXPECT_EQ(inside.G, padding.G);
    EXPECT_EQ(inside.B, padding.B);
}

TEST(Dxt1Writer, TakesASinglePixel) {
    const Bytes file = Dxt1File(Picture(1, 1, PureRed), 1, 1);
    ASSERT_EQ(file.size(), 128u + 8u);
    EXPECT_EQ(Decode(Bytes(file.begin() + 128, file.end()), 1, 0, 0).R, 255);
}

TEST(Dxt1Writer, MakesAlphaOf127TransparentAndOf128Opaque) {
    const auto colour = [](int x, int) -> Pixel {
        return {200, 100, 50, x < 2 ? 127 : 128};
    };
    const Bytes blocks =
        CompressDxt1(Picture(4, 4, colour), 4, 4, {Dxt1Fit::Cluster, Dxt1Alpha::OneBit});
    for (int y = 0; y < 4; ++y) {
        EXPECT_EQ(Decode(blocks, 4, 1, y).A, 0);
        EXPECT_EQ(Decode(blocks, 4, 2, y).A, 255);
    }
}

TEST(Dxt1Writer, NeverLooksAtAlphaWhenOpaque) {
    const auto colour = [](int x, int y) -> Pixel { return {x * 60, y * 60, 90, 0}; };
    for (const Dxt1Fit fit : {Dxt1Fit::Cluster, Dxt1Fit::Range}) {
        const Bytes blocks = CompressDxt1(Picture(4, 4, colour), 4, 4, {fit});
        for (int i = 0; i < 16; ++i)
            EXPECT_EQ(Decode(blocks, 4, i % 4, i / 4).A, 255);
    }
}

TEST(Dxt1Writer, ClusterFitIsNoWorseThanRangeFit) {
    const Bytes rgba = Picture(64, 64, Ramp);
    const auto squares = [&](Dxt1Fit fit) {
        const Bytes blocks = CompressDxt1(rgba, 64, 64, {fit});
        double sum = 0;
        for (int i = 0; i < 64 * 64; ++i) {
            const Pixel a = Decode(blocks, 64, i % 64, i / 64);
            const Pixel b = Ramp(i % 64, i / 64);
            sum +=
                std::pow(a.R - b.R, 2) + std::pow(a.G - b.G, 2) + std::pow(a.B - b.B, 2);
        }
        return sum;
    };
    EXPECT_LT(squares(Dxt1Fit::Cluster), squares(Dxt1Fit::Range));
}

TEST(Dxt1Writer, GivesABlockThatDependsOnItsOwnPixelsAlone) {
    const Bytes rgba = Picture(16, 8, Ramp);
    const Bytes all = CompressDxt1(rgba, 16, 8);
    Bytes part;
    for (size_t row = 4; row < 8; ++row)
        part.insert(part.end(), rgba.begin() + static_cast<long>(row * 64 + 32),
                    rgba.begin() + static_cast<long>(row * 64 + 48));
    const Bytes one = CompressDxt1(part, 4, 4);
    EXPECT_EQ(one, Bytes(all.begin() + 48, all.begin() + 56)); // block 2 of row 1
}

TEST(Dxt1Writer, WritesAFileThatTheImageLibraryReadsTopDown) {
    const TempFile file(Dxt1File(Picture(32, 16, Ramp), 32, 16));
    FIBITMAP* bitmap = FreeImage_Load(FIF_DDS, file.Path().c_str(), 0);
    ASSERT_NE(bitmap, nullptr);
    ASSERT_EQ(FreeImage_GetWidth(bitmap), 32u);
    ASSERT_EQ(FreeImage_GetHeight(bitmap), 16u);
    double worst = 0;
    for (unsigned y = 0; y < 16; ++y) {
        for (unsigned x = 0; x < 32; ++x) {
            RGBQUAD quad;
            ASSERT_TRUE(FreeImage_GetPixelColor(bitmap, x, 15 - y, &quad));
            const Pixel p = Ramp(static_cast<int>(x), static_cast<int>(y));
            worst = std::max({worst, std::abs(double(quad.rgbRed - p.R)),
                              std::abs(double(quad.rgbGreen - p.G)),
                              std::abs(double(quad.rgbBlue - p.B))});
        }
    }
    FreeImage_Unload(bitmap);
    EXPECT_LT(worst, 16);
}

TEST(Dxt1Writer, RefusesSidesAndBuffersThatCannotBe) {
    const Bytes rgba(64, 0);
    const auto number = [&](int32_t width, int32_t height) {
        try {
            CompressDxt1(rgba, width, height);
        } catch (const RuntimeError& error) {
            return error.NumberValue();
        }
        return 0;
    };
    EXPECT_EQ(number(4, 4), 0);
    EXPECT_EQ(number(0, 4), 5);
    EXPECT_EQ(number(4, -1), 5);
    EXPECT_EQ(number(32769, 1), 5);
    EXPECT_EQ(number(5, 4), 5);
}

} // namespace
} // namespace vardenix
