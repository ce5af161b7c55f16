#include "pictures/ImageFiles.h"

#include "files/FileNames.h"
#include "pictures/ImageLayer.h"
#include "support/PictureMaker.h"
#include "support/TestFolder.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vardenix::tests {
namespace {

// By the library itself, from the disk.
Bitmap Reload(const std::string& path) {
    return Bitmap(
        FreeImage_Load(FreeImage_GetFIFFromFilename(path.c_str()), path.c_str(), 0));
}

FREE_IMAGE_FORMAT KindOf(const std::string& path) {
    return FreeImage_GetFileType(path.c_str());
}

TEST(ImageLoadEx, TakesTheFormatFromTheName) {
    const TestFolder folder;
    const std::string tile = folder.Write("a tile.DDS", BlockTile(8, 4, "DXT1"));
    const Bitmap bitmap = ImageLoadEx(tile);
    EXPECT_EQ(bitmap.Width(), 8);
    EXPECT_EQ(PixelOf(bitmap, 7, 3), BlockPixel(8, 7, 3, "DXT1"));
    EXPECT_EQ(ImageLoadEx(folder.Write("a.jpeg", JpegOf(3, 5, 0))).Height(), 5);
    EXPECT_EQ(ImageLoadEx(folder.Write("a.targa", Targa(1, 1, "abc"))).Width(), 1);
    // A JPEG under a tile's name is no tile, and the other way round.
    const std::string wrong = folder.Write("wrong.dds", JpegOf(64, 64, 0));
    EXPECT_EQ(ErrorOf([&] { ImageLoadEx(wrong); }).NumberValue(), 481);
}

TEST(ImageLoadEx, FindsATileWhoseNameDiffersInCase) {
    const TestFolder folder;
    folder.Write("Dds/h1234.dds", BlockTile(4, 4, "DXT1"));
    EXPECT_EQ(ImageLoadEx(folder.Path() + "\\dds\\H1234.DDS").Width(), 4);
}

TEST(ImageLoadEx, EndsInError481WithThePathForWhateverCannotBeLoaded) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.File("folder.dds"));
    for (const std::string& path :
         {folder.File("missing.dds"), folder.File("folder.dds"),
          folder.Write("empty.dds", ""), folder.Write("garbage.tga", "garbage"),
          folder.Write("noformat", "x"), folder.Write("some.txt", "x"),
          folder.Write("some.tif", "II*"), folder.File("missing/too.jpg")}) {
        const RuntimeError error = ErrorOf([&] { ImageLoadEx(path); });
        EXPECT_EQ(error.NumberValue(), 481) << path;
        EXPECT_EQ(error.Description(), "Invalid picture");
        EXPECT_EQ(error.Detail().rfind(path + ": ", 0), 0u) << error.Detail();
    }
    EXPECT_EQ(ErrorOf([&] { ImageLoadEx(folder.File("missing.dds")); }).Detail(),
              folder.File("missing.dds") + ": File not found");
}

TEST(ImageLoadEx, ReadsNoFileThatIsTooLongForAnyPicture) {
    const TestFolder folder;
    const std::string path = folder.Write("long.dds", BlockTile(4, 4, "DXT1"));
    std::filesystem::resize_file(path, uint64_t{20} << 30); // a hole on the disk
    EXPECT_EQ(ErrorOf([&] { ImageLoadEx(path); }).Detail(),
              path + ": the file is too long for a picture");
}

TEST(ImageLoadEx, ScalesWhenASizeIsGiven) {
    const TestFolder folder;
    const std::string tile = folder.Write("tile.dds", BlockTile(16, 8, "DXT1"));
    const Bitmap bitmap = ImageLoadEx(tile, {4, 4});
    EXPECT_EQ(bitmap.Width(), 4);
    EXPECT_EQ(bitmap.Height(), 4);
    EXPECT_EQ(ImageLoadEx(tile, {0.5, {}}).Height(), 4);
}

TEST(ImageLoad, TakesTheFormatToldAndGivesNoneForAFailedLoad) {
    const TestFolder folder;
    const std::string jpeg = folder.Write("a.dds", JpegOf(8, 8, 0));
    EXPECT_EQ(ImageLoad(PictureFormat::Jpeg, jpeg).Width(), 8);
    EXPECT_FALSE(ImageLoad(PictureFormat::Dds, jpeg));
    EXPECT_FALSE(ImageLoad(PictureFormat::Dds, folder.File("missing.dds")));
    EXPECT_FALSE(ImageLoad(PictureFormat::Unknown, jpeg));
    const Bitmap none = ImageLoad(PictureFormat::Dds, folder.File("missing.dds"));
    EXPECT_EQ(none.Width(), 0);
    EXPECT_EQ(none.BitsPerPixel(), 0);
}

// Tiles of another program's making, checked against that program's own reading.
TEST(ImageLoadEx, AgreesWithAnotherReaderOnItsTiles) {
    const TestFolder folder;
    for (const std::string kind : {"dxt1", "dxt5", "none"}) {
        const std::string tile = folder.File(kind + ".dds");
        const std::string raw = folder.File(kind + ".bgra");
        std::string command = "convert -size 64x32 gradient:'#204080'-'#F0A010' "
                              "-define dds:mipmaps=3 -define dds:compression=";
        command.append(kind).append(" '").append(tile).append("' && convert '");
        command.append(tile).append("' -depth 8 'bgra:").append(raw).append("'");
        ASSERT_EQ(std::system(command.c_str()), 0);
        const std::string expected = Slurp(raw);
        ASSERT_GE(expected.size(), 64u * 32u * 4u);
        const Bitmap bitmap = ImageLoadEx(tile);
        ASSERT_EQ(bitmap.Width(), 64);
        ASSERT_EQ(bitmap.Height(), 32);
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 64; ++x)
                for (int part = 0; part < 3; ++part) {
                    const int at = y * 256 + x * 4 + part;
                    ASSERT_NEAR(
                        PixelOf(bitmap, x, y) >> (8 * part) & 255,
                        static_cast<unsigned char>(expected[static_cast<size_t>(at)]), 4)
                        << kind << " " << x << "," << y;
                }
    }
}

TEST(ImageSaveEx, ResizesToATargaAndLeavesTheBitmapAlive) {
    const TestFolder folder;
    const Bitmap bitmap = BitmapOf(8, 8, 24, Speckled);
    ImageSaveOptions options;
    options.Format = PictureFormat::Targa;
    options.Size = {4, 2};
    const std::string path = folder.File("M1234.tga");
    EXPECT_EQ(ImageSaveEx(bitmap, path, options), path);
    EXPECT_EQ(bitmap.Width(), 8);
    EXPECT_EQ(PixelOf(bitmap, 7, 7), Speckled(7, 7));
    const Bitmap saved = Reload(path);
    EXPECT_EQ(saved.Width(), 4);
    EXPECT_EQ(saved.Height(), 2);
    EXPECT_EQ(folder.Names(), "M1234.tga"); // nothing staged is left
}

TEST(ImageSaveEx, KeepsEveryPixelInEachExactFormat) {
    const TestFolder folder;
    const Bitmap bitmap = BitmapOf(5, 3, 24, Speckled);
    for (const std::string name : {"a.bmp", "a.tga", "a.png"}) {
        const Bitmap saved = Reload(ImageSaveEx(bitmap, folder.File(name)));
        ASSERT_EQ(saved.BitsPerPixel(), 24) << name;
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 5; ++x)
                EXPECT_EQ(PixelOf(saved, x, y), Speckled(x, y)) << name;
    }
}

TEST(ImageSaveEx, NeedsAFormatFromSomewhere) {
    const TestFolder folder;
    const Bitmap bitmap = BitmapOf(2, 2, 24, Speckled);
    for (const std::string name : {"picture", "picture.xyz"}) {
        const RuntimeError error =
            ErrorOf([&] { ImageSaveEx(bitmap, folder.File(name)); });
        EXPECT_EQ(error.NumberValue(), 13);
        EXPECT_EQ(error.Description(),
                  "Unknown image format. Neither an explicit image format was specified "
                  "nor any known image format was parsed from the filename given.");
    }
    EXPECT_EQ(folder.Names(), "");
}

TEST(ImageSaveEx, RefusesAFormatThatCannotBeWritten) {
    const TestFolder folder;
    const Bitmap bitmap = BitmapOf(2, 2, 24, Speckled);
    const RuntimeError error =
        ErrorOf([&] { ImageSaveEx(bitmap, folder.File("a.dds")); });
    EXPECT_EQ(error.NumberValue(), 5);
    EXPECT_EQ(error.Description(),
              "FreeImage Library plugin 'DDS' is unable to write images of the image "
              "format requested.");
    // One that writes, but no pictures of this type.
    EXPECT_EQ(ErrorOf([&] { ImageSaveEx(bitmap, folder.File("a.hdr")); }).NumberValue(),
              5);
    EXPECT_EQ(ErrorOf([&] { ImageSaveEx(Bitmap(), folder.File("a.bmp")); }).NumberValue(),
              5);
    EXPECT_EQ(folder.Names(), "");
}

TEST(ImageSaveEx, AddsTheFirstExtensionOfTheFormatUnlessThereIsOne) {
    const TestFolder folder;
    const Bitmap bitmap = BitmapOf(2, 2, 24, Speckled);
    const auto saved = [&](const std::string& name, PictureFormat format) {
        ImageSaveOptions options;
        options.Format = format;
        return AfterLastSlash(ImageSaveEx(bitmap, folder.File(name), options));
    };
    EXPECT_EQ(saved("a", PictureFormat::Jpeg), "a.jpg");
    EXPECT_EQ(saved("a.JPE", PictureFormat::Jpeg), "a.JPE");
    EXPECT_EQ(saved("a.b.tga", PictureFormat::Jpeg), "a.b.tga.jpg");
    EXPECT_EQ(saved("b.tar", PictureFormat::Targa), "b.tar.tga"); // no part of "targa"
    EXPECT_EQ(saved("b.", PictureFormat::Targa), "b..tga");
    EXPECT_EQ(saved("tga", PictureFormat::Targa), "tga.tga");
    EXPECT_EQ(KindOf(folder.File("a.b.tga.jpg")), FIF_JPEG);
}

TEST(ImageSaveEx, GoesToTheNearestDepthThatTheFormatTakes) {
    const TestFolder folder;
    const auto depth = [&](const std::string& name, int bits, int asked) {
        const Bitmap bitmap = ImageConvertDepth(BitmapOf(9, 9, 24, Speckled),
                                                static_cast<ImageDepth>(bits));
        ImageSaveOptions options;
        options.ColorDepth = asked;
        return Reload(ImageSaveEx(bitmap, folder.File(name), options)).BitsPerPixel();
    };
    EXPECT_EQ(depth("a.jpg", 32, 0), 24);
    EXPECT_EQ(depth("a.png", 16, 0), 24); // 8 is as near, and loses more
    EXPECT_EQ(depth("a.tga", 32, 0), 32);
    EXPECT_EQ(depth("a.tga", 32, 24), 24);
    EXPECT_EQ(depth("a.tga", 4, 0), 8);
    EXPECT_EQ(depth("a.bmp", 24, 8), 8);
    EXPECT_EQ(depth("a.bmp", 24, 4), 4);
    EXPECT_EQ(depth("a.bmp", 24, 1), 1);
    EXPECT_EQ(depth("a.gif", 24, 0), 8);
    EXPECT_EQ(depth("a.wbmp", 24, 0), 1);
}

TEST(ImageSaveEx, ReplacesAFileWholeOrNotAtAll) {
    const TestFolder folder;
    const std::string path = folder.Write("a.bmp", "the old file");
    const Bitmap bitmap = BitmapOf(2, 2, 24, Speckled);
    EXPECT_EQ(ErrorOf([&] {
                  ImageSaveOptions options;
                  options.Size = {40000, 2};
                  ImageSaveEx(bitmap, path, options);
              }).NumberValue(),
              5);
    EXPECT_EQ(Slurp(path), "the old file");
    ImageSaveEx(bitmap, path);
    EXPECT_EQ(KindOf(path), FIF_BMP);
    EXPECT_EQ(
        ErrorOf([&] { ImageSaveEx(bitmap, folder.File("no/a.bmp")); }).NumberValue(), 76);
}

} // namespace
} // namespace vardenix::tests
