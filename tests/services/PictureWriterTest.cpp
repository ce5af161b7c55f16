// Pictures written from rows of a surface, read back by the image library.
#include "services/PictureWriter.h"

#include "platform/RuntimeError.h"
#include "services/ImageFiles.h"
#include "services/ImageLayer.h"
#include "services/ImageScaling.h"
#include "services/PictureMaker.h"
#include "support/TestFolder.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <filesystem>

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
            for (int y = 0; y < view.Height; ++y)
                for (int x = 0; x < view.Width; ++x)
                    ASSERT_EQ(PixelOf(read, x, y), view.Row(y)[x]) << x << "," << y;
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
