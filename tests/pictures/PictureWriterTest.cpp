// Pictures written from rows of a surface, read back by the image library, and PNG files
// also by a reader of the test's own: the image library may read them by what wrote them.
#include "pictures/PictureWriter.h"

#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/ImageScaling.h"
#include "support/PictureMaker.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>
#include <zlib.h>

namespace vardenix::tests {
namespace {

Raster Speckles(int width, int height) {
    Raster raster(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            raster.Row(y)[x] = OpaqueBlack | Speckled(x, y);
    return raster;
}

TEST(PictureWriter, ABmpIsTheImageLibrarysByteForByte) {
    const TestFolder folder;
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 3}, {37, 20}, {64, 64}}) {
        Raster raster = Speckles(width, height);
        const std::string path = folder.File("a.bmp");
        WriteBmp(path, raster.View());
        const Bitmap bitmap =
            ImageConvertDepth(PictureToBitmap(raster.View()), ImageDepth::Bits24);
        const FileBytes expected = ImageEncode(PictureFormat::Bmp, bitmap, path, 0);
        EXPECT_EQ(Slurp(path), std::string(reinterpret_cast<const char*>(expected.data()),
                                           expected.size()));
    }
}

uint32_t Big(const std::string& bytes, size_t at) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<uint8_t>(bytes.at(at + i));
    return value;
}

// The chunks of a PNG file, name and contents; every checksum is looked at.
std::vector<std::pair<std::string, std::string>> ChunksOf(const std::string& file) {
    EXPECT_EQ(file.substr(0, 8), "\x89PNG\r\n\x1a\n");
    std::vector<std::pair<std::string, std::string>> chunks;
    for (size_t at = 8; at < file.size();) {
        const size_t length = Big(file, at);
        const std::string body = file.substr(at + 4, 4 + length);
        EXPECT_EQ(::crc32_z(0, reinterpret_cast<const Bytef*>(body.data()), body.size()),
                  Big(file, at + 8 + length));
        chunks.emplace_back(body.substr(0, 4), body.substr(4));
        at += 12 + length;
    }
    return chunks;
}

// The pixels of a PNG file of three bytes a pixel and without filters.
std::vector<uint32_t> PixelsOfPng(const std::string& file, int width, int height) {
    std::string header;
    std::string packed;
    for (const auto& [name, contents] : ChunksOf(file)) {
        if (name == "IHDR")
            header = contents;
        if (name == "IDAT")
            packed += contents;
    }
    EXPECT_EQ(Big(header, 0), static_cast<uint32_t>(width));
    EXPECT_EQ(Big(header, 4), static_cast<uint32_t>(height));
    EXPECT_EQ(header.substr(8), std::string("\x08\x02\0\0\0", 5));
    const size_t rowBytes = 1 + 3 * static_cast<size_t>(width);
    std::vector<uint8_t> rows(rowBytes * static_cast<size_t>(height) + 1);
    uLongf length = rows.size();
    EXPECT_EQ(::uncompress(rows.data(), &length,
                           reinterpret_cast<const Bytef*>(packed.data()), packed.size()),
              Z_OK);
    EXPECT_EQ(length, rows.size() - 1);
    std::vector<uint32_t> pixels;
    for (size_t row = 0; row + 1 < rows.size(); row += rowBytes) {
        EXPECT_EQ(rows[row], 0) << "a filter";
        for (size_t at = row + 1; at < row + rowBytes; at += 3)
            pixels.push_back(
                OpaqueBlack |
                static_cast<uint32_t>(rows[at] << 16 | rows[at + 1] << 8 | rows[at + 2]));
    }
    return pixels;
}

TEST(PictureWriter, APngReadsBackPixelByPixel) {
    const TestFolder folder;
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 3}, {37, 20}, {300, 211}}) {
        Raster raster = Speckles(width, height);
        const std::string path = folder.File("a.png");
        // A part of a surface has rows that lie further apart.
        const RasterView part{raster.Row(0), (width + 1) / 2, height, width};
        for (const RasterView& view : {raster.View(), part}) {
            WriteFastPng(path, view);
            const Bitmap read(FreeImage_Load(FIF_PNG, path.c_str(), 0));
            ASSERT_TRUE(read);
            EXPECT_EQ(read.BitsPerPixel(), 24);
            ASSERT_EQ(read.Width(), view.Width);
            ASSERT_EQ(read.Height(), view.Height);
            const auto own = PixelsOfPng(Slurp(path), view.Width, view.Height);
            ASSERT_EQ(own.size(), static_cast<size_t>(view.Width * view.Height));
            auto ownPixel = own.begin();
            for (int y = 0; y < view.Height; ++y)
                for (int x = 0; x < view.Width; ++x, ++ownPixel) {
                    ASSERT_EQ(PixelOf(read, x, y), view.Row(y)[x]) << x << "," << y;
                    ASSERT_EQ(*ownPixel, view.Row(y)[x]) << x << "," << y;
                }
        }
    }
}

TEST(PictureWriter, WhatCannotBeWrittenIsAnErrorAndLeavesTheOldFile) {
    const TestFolder folder;
    const std::string old = folder.Write("old.png", "old");
    Raster raster = Speckles(3, 3);
    for (const auto write : {WriteBmp, WriteFastPng}) {
        EXPECT_EQ(
            ErrorOf([&] { write(folder.File("no/a.bmp"), raster.View()); }).NumberValue(),
            76);
        EXPECT_EQ(ErrorOf([&] { write(old, RasterView()); }).NumberValue(), 5);
        EXPECT_EQ(Slurp(old), "old");
    }
}

} // namespace
} // namespace vardenix::tests
