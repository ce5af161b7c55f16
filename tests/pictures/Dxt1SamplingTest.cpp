// Blocks unpacked straight to a size, against the image library's decoding of the whole
// picture and the plain stretch of that.
#include "pictures/Dxt1Sampling.h"

#include "pictures/ImageFiles.h"
#include "pictures/ImagePainting.h"
#include "support/PictureMaker.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <random>

namespace vardenix::tests {
namespace {

// Random blocks: four colours, three colours and a hole, both ends alike.
std::string RandomPicture(uint32_t width, uint32_t height, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes = DdsHeader(width, height, {"DXT1"});
    const uint32_t blocks = (width + 3) / 4 * ((height + 3) / 4);
    for (uint32_t block = 0; block < blocks; ++block) {
        uint32_t first = random() & 0xFFFF;
        uint32_t second = random() & 0xFFFF;
        if (block % 3 == 0 && first < second)
            std::swap(first, second);
        if (block % 3 == 1 && first > second)
            std::swap(first, second);
        if (block % 3 == 2)
            second = first;
        bytes += Little(first, 2) + Little(second, 2) +
                 Little(static_cast<uint32_t>(random()), 4);
    }
    return bytes;
}

std::vector<uint32_t> ByTheLibrary(const std::string& path, int width, int height) {
    const Bitmap bitmap = ImageRead(PictureFormat::Dds, path);
    Raster raster(width, height);
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {0, 0, width, height}));
    return PixelsOf(raster);
}

TEST(Dxt1Sampling, GivesTheLibrarysPixelsAtEverySize) {
    const TestFolder folder;
    for (const auto& [width, height] :
         {std::pair{256u, 256u}, {64u, 20u}, {37u, 91u}, {1u, 1u}, {3u, 5u}}) {
        const std::string path =
            folder.Write("a.dds", RandomPicture(width, height, width + height));
        for (const auto& [toWidth, toHeight] :
             {std::pair{256, 256}, {6, 6}, {7, 130}, {300, 40}, {1, 1}}) {
            auto raster = LoadDxt1(path, toWidth, toHeight);
            ASSERT_TRUE(raster);
            ASSERT_EQ(PixelsOf(*raster), ByTheLibrary(path, toWidth, toHeight))
                << width << "x" << height << " to " << toWidth << "x" << toHeight;
        }
    }
}

TEST(Dxt1Sampling, EveryMixOfTwoColoursIsTheLibrarys) {
    const TestFolder folder;
    std::string bytes = DdsHeader(512, 512, {"DXT1"});
    std::mt19937 random(3);
    // All pairs of the 64 values of green, with red and blue at random.
    for (uint32_t a = 0; a < 64; ++a)
        for (uint32_t b = 0; b < 64; ++b)
            for (const uint32_t top : {0u, 1u, 2u, 3u}) {
                const auto rest = static_cast<uint32_t>(random());
                bytes += Little((rest & 0xF81F) | a << 5, 2) +
                         Little((rest >> 16 & 0xF81F) | b << 5, 2) +
                         Little(0xE4E4E4E4 + top, 4);
            }
    const std::string path = folder.Write("a.dds", bytes);
    auto raster = LoadDxt1(path, 512, 512);
    ASSERT_TRUE(raster);
    EXPECT_TRUE(PixelsOf(*raster) == ByTheLibrary(path, 512, 512));
}

TEST(Dxt1Sampling, LeavesOtherKindsToTheLibrary) {
    const TestFolder folder;
    for (const std::string& file : {BlockTile(8, 8, "DXT3"), BlockTile(8, 8, "DXT5"),
                                    DdsHeader(1, 1, {"", 24}) + "abc"})
        EXPECT_FALSE(LoadDxt1(folder.Write("a.dds", file), 4, 4));
}

TEST(Dxt1Sampling, TheGuardStandsInFront) {
    const TestFolder folder;
    const std::string good = RandomPicture(64, 64, 1);
    const auto put = [&](size_t at, uint32_t value) {
        std::string bytes = good;
        return bytes.replace(at, 4, Little(value, 4));
    };
    for (const std::string& bytes :
         {std::string(), good.substr(0, 100), good.substr(0, good.size() - 1), put(0, 0),
          put(4, 123), put(12, 0), put(16, 9000), put(12, 0xFFFFFFFC), put(76, 31)}) {
        const std::string path = folder.Write("a.dds", bytes);
        EXPECT_EQ(ErrorOf([&] { LoadDxt1(path, 2, 2); }).Number(),
                  ErrorNumber::InvalidPicture);
    }
    EXPECT_EQ(ErrorOf([&] { LoadDxt1(folder.File("none.dds"), 2, 2); }).Number(),
              ErrorNumber::FileNotFound);
}

} // namespace
} // namespace vardenix::tests
