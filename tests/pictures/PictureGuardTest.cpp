#include "pictures/PictureGuard.h"

#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "support/PictureMaker.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace vardenix::tests {
namespace {

Bitmap Decode(PictureFormat format, const std::string& file) {
    return ImageDecode(format, BytesOf(file), "a path");
}

int32_t Refusal(PictureFormat format, const std::string& file) {
    return ErrorOf([&] { Decode(format, file); }).NumberValue();
}

std::string Reason(PictureFormat format, const std::string& file) {
    return ErrorOf([&] { Decode(format, file); }).Detail();
}

std::string With(std::string file, size_t offset, const std::string& bytes) {
    return file.replace(offset, bytes.size(), bytes);
}

// Every beginning of a file that is shorter than the file.
void ExpectEachCutRefused(PictureFormat format, const std::string& file) {
    for (size_t length = 0; length < file.size(); ++length)
        ASSERT_EQ(Refusal(format, file.substr(0, length)), 481) << length << " bytes";
    EXPECT_EQ(Refusal(format, file), 0);
}

TEST(DdsGuard, ReadsBlocksOfEverySizeFromTheTopLeft) {
    for (const std::string code : {"DXT1", "DXT3", "DXT5"}) {
        for (const auto& [width, height] : {std::pair{4U, 4U},
                                            {8U, 8U},
                                            {1U, 1U},
                                            {2U, 3U},
                                            {5U, 3U},
                                            {7U, 9U},
                                            {12U, 16U},
                                            {4U, 1U},
                                            {1U, 33U}}) {
            const Bitmap bitmap =
                Decode(PictureFormat::Dds, BlockTile(width, height, code));
            ASSERT_EQ(bitmap.Width(), static_cast<int>(width));
            ASSERT_EQ(bitmap.Height(), static_cast<int>(height));
            for (uint32_t y = 0; y < height; ++y)
                for (uint32_t x = 0; x < width; ++x)
                    ASSERT_EQ(PixelOf(bitmap, static_cast<int>(x), static_cast<int>(y)),
                              BlockPixel(width, x, y, code))
                        << code << " " << width << "x" << height << " at " << x << ","
                        << y;
        }
    }
}

TEST(DdsGuard, ReadsPlainPixelsAsBlueGreenRed) {
    const std::string six = "\1\2\3\4\5\6\7\10\11\12\13\14\15\16\17\20\21\22";
    const Bitmap bitmap = Decode(PictureFormat::Dds, DdsHeader(3, 2, {"", 24}) + six);
    EXPECT_EQ(bitmap.BitsPerPixel(), 24);
    EXPECT_EQ(PixelOf(bitmap, 0, 0), 0xFF030201);
    EXPECT_EQ(PixelOf(bitmap, 2, 1), 0xFF121110);

    const std::string four = "\1\2\3\4\5\6\7\10";
    const Bitmap clear =
        Decode(PictureFormat::Dds, DdsHeader(1, 2, {"", 32, true}) + four);
    EXPECT_EQ(PixelOf(clear, 0, 0), 0x04030201U);
    EXPECT_EQ(PixelOf(clear, 0, 1), 0x08070605U);
    const Bitmap opaque = Decode(PictureFormat::Dds, DdsHeader(1, 2, {"", 32}) + four);
    EXPECT_EQ(PixelOf(opaque, 0, 1), 0xFF070605);
}

// A picture of 2 by 2, sixteen bits a pixel, its colours parted by these masks.
std::string Sixteen(const std::array<uint32_t, 4>& masks,
                    const std::array<uint32_t, 4>& pixels) {
    std::string file = DdsHeader(2, 2, {"", 16, masks[3] != 0});
    for (size_t i = 0; i < 4; ++i)
        file = With(file, 92 + 4 * i, Little(masks[i], 4));
    for (const uint32_t pixel : pixels)
        file += Little(pixel, 2);
    return file;
}

TEST(DdsGuard, ReadsSixteenBitsAsTheLibraryKnowsThem) {
    const std::string six =
        Sixteen({0xF800, 0x07E0, 0x001F, 0}, {0xF800, 0x07E0, 0x001F, 0xFFFF});
    const Bitmap bitmap = ConvertTo32Bits(Decode(PictureFormat::Dds, six));
    EXPECT_EQ(PixelOf(bitmap, 0, 0) & 0xFFFFFF, 0xFF0000U);
    EXPECT_EQ(PixelOf(bitmap, 1, 0) & 0xFFFFFF, 0x00FF00U);
    EXPECT_EQ(PixelOf(bitmap, 0, 1) & 0xFFFFFF, 0x0000FFU);
    EXPECT_EQ(PixelOf(bitmap, 1, 1) & 0xFFFFFF, 0xFFFFFFU);
    const std::string five =
        Sixteen({0x7C00, 0x03E0, 0x001F, 0x8000}, {0xFC00, 0x83E0, 0x801F, 0xFFFF});
    const Bitmap second = ConvertTo32Bits(Decode(PictureFormat::Dds, five));
    EXPECT_EQ(PixelOf(second, 0, 0) & 0xFFFFFF, 0xFF0000U);
    EXPECT_EQ(PixelOf(second, 1, 0) & 0xFFFFFF, 0x00FF00U);
    EXPECT_EQ(PixelOf(second, 0, 1) & 0xFFFFFF, 0x0000FFU);
    const std::string four =
        Sixteen({0x0F00, 0x00F0, 0x000F, 0xF000}, {0xFF00, 0xF0F0, 0xF00F, 0xFFFF});
    const Bitmap third = ConvertTo32Bits(Decode(PictureFormat::Dds, four));
    EXPECT_EQ(PixelOf(third, 0, 0) & 0xFFFFFF, 0xFF0000U);
    EXPECT_EQ(PixelOf(third, 1, 0) & 0xFFFFFF, 0x00FF00U);
    EXPECT_EQ(PixelOf(third, 0, 1) & 0xFFFFFF, 0x0000FFU);
    ExpectEachCutRefused(PictureFormat::Dds, six);
}

TEST(DdsGuard, RefusesSixteenBitsInAnyOtherWay) {
    EXPECT_EQ(Refusal(PictureFormat::Dds, Sixteen({0x1F, 0x07E0, 0xF800, 0}, {})), 481);
    EXPECT_EQ(Refusal(PictureFormat::Dds, Sixteen({0, 0, 0, 0}, {})), 481);
}

TEST(DdsGuard, HonoursALongRowAndForgivesAShortOne) {
    const std::string rows = "\1\2\3xxx\4\5\6";
    const Bitmap padded =
        Decode(PictureFormat::Dds, DdsHeader(1, 2, {"", 24, false, 6}) + rows);
    EXPECT_EQ(PixelOf(padded, 0, 1), 0xFF060504);
    const Bitmap packed =
        Decode(PictureFormat::Dds, DdsHeader(1, 2, {"", 24, false, 1}) + "\1\2\3\4\5\6");
    EXPECT_EQ(PixelOf(packed, 0, 1), 0xFF060504);
    // The row after next would lie 4 GB on.
    EXPECT_EQ(
        Refusal(PictureFormat::Dds, DdsHeader(1, 2, {"", 24, false, 0xFFFFFFFF}) + rows),
        481);
}

TEST(DdsGuard, TakesTheTopLevelOfAMipMappedTile) {
    const std::string top = BlockTile(8, 8, "DXT1");
    const std::string file = DdsHeader(8, 8, {"DXT1", 0, false, 0, 4}) + top.substr(128) +
                             std::string(24, 'm');
    const Bitmap bitmap = Decode(PictureFormat::Dds, file);
    EXPECT_EQ(bitmap.Width(), 8);
    EXPECT_EQ(PixelOf(bitmap, 7, 7), 0xFFFFFF00); // block 3
    // Lower levels may be cut off, the top one not.
    EXPECT_EQ(Refusal(PictureFormat::Dds, file.substr(0, 160)), 0);
    EXPECT_EQ(Refusal(PictureFormat::Dds, file.substr(0, 159)), 481);
}

TEST(DdsGuard, ReadsTheLargestSides) {
    for (const auto& [width, height] : {std::pair{8192U, 4U}, {2U, 8192U}}) {
        const Bitmap bitmap =
            Decode(PictureFormat::Dds, BlockTile(width, height, "DXT1"));
        const auto [x, y] = std::pair{bitmap.Width() - 1, bitmap.Height() - 1};
        EXPECT_EQ(x, static_cast<int>(width) - 1);
        EXPECT_EQ(PixelOf(bitmap, x, y),
                  BlockPixel(width, width - 1, height - 1, "DXT1"));
    }
}

TEST(DdsGuard, RefusesEachCutFile) {
    ExpectEachCutRefused(PictureFormat::Dds, BlockTile(9, 6, "DXT1"));
    ExpectEachCutRefused(PictureFormat::Dds, BlockTile(9, 6, "DXT5"));
    ExpectEachCutRefused(PictureFormat::Dds,
                         DdsHeader(3, 5, {"", 24}) + std::string(45, 'x'));
}

TEST(DdsGuard, RefusesHeadersThatCannotBe) {
    const std::string tile = BlockTile(8, 8, "DXT1") + std::string(4000, 'x');
    const auto refused = [&](size_t offset, uint32_t value) {
        return Refusal(PictureFormat::Dds, With(tile, offset, Little(value, 4)));
    };
    EXPECT_EQ(Refusal(PictureFormat::Dds, tile), 0);
    EXPECT_EQ(refused(0, 0), 481);
    EXPECT_EQ(refused(4, 123), 481);
    EXPECT_EQ(refused(76, 31), 481);
    EXPECT_EQ(refused(80, 0), 481);          // neither blocks nor colours
    EXPECT_EQ(refused(84, 0x30315844), 481); // "DX10"
    for (const uint32_t side : {0U, 8193U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU}) {
        EXPECT_EQ(refused(12, side), 481) << side;
        EXPECT_EQ(refused(16, side), 481) << side;
    }
    for (const uint32_t bits : {0U, 8U, 16U, 31U, 64U}) {
        EXPECT_EQ(Refusal(PictureFormat::Dds,
                          DdsHeader(2, 2, {"", bits}) + std::string(99, 'x')),
                  481)
            << bits;
    }
}

TEST(DdsGuard, SaysWhichFileAndWhy) {
    const std::string tile = BlockTile(8, 8, "DXT1");
    EXPECT_EQ(Reason(PictureFormat::Dds, tile.substr(0, 150)),
              "a path: the file is cut: 160 bytes expected, found 150");
    EXPECT_EQ(Reason(PictureFormat::Dds, With(tile, 16, Little(9000, 4))),
              "a path: sides from 1 to 8192 expected, found 9000 by 8");
    EXPECT_EQ(Reason(PictureFormat::Dds, JpegOf(64, 64, 0)), "a path: not a DDS file");
}

TEST(TargaGuard, ReadsColoursFromTopAndFromBottom) {
    const std::string pixels = "\1\2\3\4\5\6";
    const Bitmap top = Decode(PictureFormat::Targa, Targa(1, 2, pixels));
    EXPECT_EQ(PixelOf(top, 0, 0), 0xFF030201);
    const Bitmap bottom = Decode(PictureFormat::Targa, Targa(1, 2, pixels, {2, 24, 0}));
    EXPECT_EQ(PixelOf(bottom, 0, 0), 0xFF060504);
    const Bitmap clear =
        Decode(PictureFormat::Targa, Targa(1, 1, "\1\2\3\4", {2, 32, 0x28}));
    EXPECT_EQ(PixelOf(clear, 0, 0), 0x04030201U);
}

TEST(TargaGuard, SkipsTheNoteAndAMapThatNobodyNeeds) {
    TargaKind kind;
    kind.Note = "a note";
    kind.Map = std::string(6, 'm');
    kind.MapCount = 2;
    kind.MapBits = 24;
    const Bitmap bitmap = Decode(PictureFormat::Targa, Targa(1, 1, "\1\2\3", kind));
    EXPECT_EQ(PixelOf(bitmap, 0, 0), 0xFF030201);
}

TEST(TargaGuard, ReadsPalettesAndGreys) {
    const TargaKind palette{1, 8, 0x20, "note", "\1\2\3\4\5\6", 2, 24};
    const Bitmap colours =
        Decode(PictureFormat::Targa, Targa(2, 1, std::string("\0\1", 2), palette));
    EXPECT_EQ(colours.BitsPerPixel(), 8);
    const Bitmap wide = ImageConvertDepth(colours, ImageDepth::Bits24);
    EXPECT_EQ(PixelOf(wide, 0, 0), 0xFF030201);
    EXPECT_EQ(PixelOf(wide, 1, 0), 0xFF060504);
    const Bitmap greys = ImageConvertDepth(
        Decode(PictureFormat::Targa, Targa(2, 1, "\1\200", {3, 8})), ImageDepth::Bits24);
    EXPECT_EQ(PixelOf(greys, 0, 0), 0xFF010101);
    EXPECT_EQ(PixelOf(greys, 1, 0), 0xFF808080);
}

TEST(TargaGuard, UnpacksRunsThatCrossRows) {
    // Five of one colour, then one apart: rows of 3.
    const std::string packed = "\204\1\2\3" + std::string("\0\4\5\6", 4);
    const Bitmap bitmap = Decode(PictureFormat::Targa, Targa(3, 2, packed, {10}));
    EXPECT_EQ(PixelOf(bitmap, 0, 0), 0xFF030201);
    EXPECT_EQ(PixelOf(bitmap, 1, 1), 0xFF030201);
    EXPECT_EQ(PixelOf(bitmap, 2, 1), 0xFF060504);
}

TEST(TargaGuard, ReadsPicturesThatPackToLessThanAByteARow) {
    std::string packed;
    for (int i = 0; i < 64; ++i)
        packed += "\377\1\2\3";
    const Bitmap bitmap = Decode(PictureFormat::Targa, Targa(1, 8192, packed, {10}));
    EXPECT_EQ(bitmap.Height(), 8192);
    EXPECT_EQ(PixelOf(bitmap, 0, 8191), 0xFF030201);
}

TEST(TargaGuard, RefusesEachCutFile) {
    ExpectEachCutRefused(PictureFormat::Targa, Targa(5, 3, std::string(45, 'x')));
    ExpectEachCutRefused(PictureFormat::Targa,
                         Targa(3, 2, "\204\1\2\3" + std::string("\0\4\5\6", 4), {10}));
    ExpectEachCutRefused(PictureFormat::Targa,
                         Targa(2, 1, "ab", {1, 8, 0x20, "note", "\1\2\3\4\5\6", 2, 24}));
}

TEST(TargaGuard, RefusesHeadersThatCannotBe) {
    const std::string pixels(400, 'x');
    const auto refused = [&](int width, int height, const TargaKind& kind) {
        return Refusal(PictureFormat::Targa, Targa(width, height, pixels, kind));
    };
    EXPECT_EQ(refused(4, 4, {}), 0);
    EXPECT_EQ(refused(0, 4, {}), 481);
    EXPECT_EQ(refused(4, 0, {}), 481);
    EXPECT_EQ(refused(8193, 1, {}), 481);
    EXPECT_EQ(refused(65535, 65535, {10}), 481);
    EXPECT_EQ(refused(4, 4, {2, 8}), 481);
    EXPECT_EQ(refused(4, 4, {2, 15}), 481);
    EXPECT_EQ(refused(4, 4, {1, 8}), 481); // no palette
    EXPECT_EQ(refused(4, 4, {1, 8, 0, "", std::string(900, 'm'), 300, 24}), 481);
    EXPECT_EQ(refused(4, 4, {0, 24}), 481);
    EXPECT_EQ(refused(4, 4, {32, 24}), 481);
}

TEST(JpegGuard, ReadsPlainAndProgressivePictures) {
    for (const int flags : {0, 0x2000}) { // the library's switch for progressive
        const Bitmap bitmap = Decode(PictureFormat::Jpeg, JpegOf(17, 9, 0x4080C0, flags));
        ASSERT_EQ(bitmap.Width(), 17);
        ASSERT_EQ(bitmap.Height(), 9);
        const uint32_t pixel = PixelOf(bitmap, 16, 8);
        EXPECT_NEAR(pixel >> 16 & 255, 0x40, 3);
        EXPECT_NEAR(pixel >> 8 & 255, 0x80, 3);
        EXPECT_NEAR(pixel & 255, 0xC0, 3);
    }
}

TEST(JpegGuard, LeavesOutTheNotesBesideThePicture) {
    const std::string plain = JpegOf(16, 16, 0x4080C0);
    const std::string exif =
        "\xFF\xE1" + std::string("\0\x0A", 2) + "Exif" + std::string(4, '\xFF');
    std::string noted = plain;
    noted.insert(2, exif);
    const GuardedPicture picture =
        GuardPicture(PictureFormat::Jpeg, BytesOf(noted), "a path");
    EXPECT_EQ(
        std::string(reinterpret_cast<const char*>(picture.Bytes.data()), picture.Length),
        plain);
}

TEST(JpegGuard, RefusesEachCutFile) {
    ExpectEachCutRefused(PictureFormat::Jpeg, JpegOf(33, 20, 0x4080C0));
    ExpectEachCutRefused(PictureFormat::Jpeg, JpegOf(33, 20, 0x4080C0, 0x2000));
}

TEST(JpegGuard, RefusesSidesThatTheFileCannotFill) {
    const std::string file = JpegOf(64, 64, 0x4080C0);
    const size_t frame = file.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    const auto sides = [&](const std::string& heightAndWidth) {
        return Refusal(PictureFormat::Jpeg, With(file, frame + 5, heightAndWidth));
    };
    EXPECT_EQ(sides(std::string("\0\x40\0\x40", 4)), 0);
    EXPECT_EQ(sides(std::string("\0\0\0\x40", 4)), 481);
    EXPECT_EQ(sides(std::string("\0\x40\0\0", 4)), 481);
    EXPECT_EQ(sides(std::string("\x20\x01\0\x08", 4)), 481); // 8193
    EXPECT_EQ(sides(std::string("\x20\0\x20\0", 4)), 481);   // 8192 each, in a small file
    EXPECT_EQ(sides("\xFF\xFF\xFF\xFF"), 481);
}

TEST(JpegGuard, RefusesScansWithoutEnd) {
    const std::string file = JpegOf(512, 512, 0x4080C0, 0x2000);
    const size_t scan = file.find("\xFF\xDA");
    const size_t end = file.size() - 2;
    std::string many = file.substr(0, end);
    const size_t own = 10; // scans of the library's progressive pictures
    const std::string header = file.substr(scan, 14);
    for (size_t i = own; i < 5000; ++i)
        many += header;
    EXPECT_EQ(Reason(PictureFormat::Jpeg, many + file.substr(end)),
              "a path: 5000 scans are too many for its size");
}

TEST(PictureGuard, RefusesGarbageAndKindsThatAreNotRead) {
    std::string garbage;
    for (uint32_t i = 0; i < 3000; ++i)
        garbage += static_cast<char>(i * 2654435761U >> 13);
    for (const auto format : {PictureFormat::Dds, PictureFormat::Targa,
                              PictureFormat::Jpeg, PictureFormat::Bmp}) {
        EXPECT_EQ(Refusal(format, garbage), 481);
        EXPECT_EQ(Refusal(format, std::string(3000, '\0')), 481);
        EXPECT_EQ(Refusal(format, std::string(3000, '\xFF')), 481);
    }
    EXPECT_EQ(Refusal(PictureFormat::Png, garbage), 481);
    EXPECT_EQ(Refusal(PictureFormat::Unknown, garbage), 481);
    EXPECT_EQ(Refusal(static_cast<PictureFormat>(18), garbage), 481); // TIFF
}

} // namespace
} // namespace vardenix::tests
