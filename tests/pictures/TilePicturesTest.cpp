#include "pictures/TilePictures.h"

#include "pictures/Dxt1Writer.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/ImagePainting.h"
#include "support/PictureMaker.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t Ground = 0xFF112233;
constexpr auto Dds = PictureFormat::Dds;

// A tile with lights and darks, compressed.
std::string Tile(int side, int seed) {
    std::vector<uint8_t> rgba;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            for (const int part : {x * 3 + seed, y * 5, (x ^ y) * 2, 255})
                rgba.push_back(static_cast<uint8_t>(part));
    const auto file = Dxt1File(rgba, side, side, {Dxt1Fit::Range});
    return {file.begin(), file.end()};
}

// What is to come out: the file loaded afresh and stretched, without any cache.
void PaintAfresh(const RasterView& target, PictureFormat format, const std::string& path,
                 TileUse use, const PixelRect& cell) {
    Bitmap bitmap = ImageLoad(format, path);
    if (use == TileUse::Day)
        ImagePaintDC(target, bitmap, WholeInto(bitmap, cell));
    else {
        Bitmap night = ConvertTo32Bits(bitmap);
        const Bitmap mask = ConvertToGreyscale(Threshold(Clone(bitmap), 127));
        SetChannel(night, mask, 4);
        ImagePaintTransparent(target, night, WholeInto(night, cell), 255);
    }
}

Raster Speckles(int width, int height) {
    Raster raster(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            raster.Row(y)[x] = Speckled(y, x);
    return raster;
}

// Makes a file look changed, however fast the test runs.
void Age(const std::string& path, int seconds) {
    fs::last_write_time(path, fs::last_write_time(path) - std::chrono::seconds(seconds));
}

bool PaintCell(TilePictures& pictures, TilePictureId id, Raster& raster, int side) {
    return pictures.Paint(raster.View(), id, {0, 0, side, side});
}

std::vector<TilePictureId> TilesOf(TilePictures& pictures, const TestFolder& folder,
                                   size_t count, int side) {
    std::vector<TilePictureId> ids(count);
    for (size_t tile = 0; tile < count; ++tile)
        ids[tile] = pictures.IdOf(folder.Write(std::to_string(tile) + ".dds",
                                               Tile(side, static_cast<int>(tile))),
                                  Dds, TileUse::Day);
    return ids;
}

TEST(TilePictures, PaintsWhatLoadingAndStretchingWouldPaint) {
    const TestFolder folder;
    const std::string tile = folder.Write("a tile.dds", Tile(128, 40));
    const std::string odd = folder.Write("odd.dds", Tile(37, 90));
    const std::string plain =
        folder.Write("plain.dds", DdsHeader(2, 2, {"", 24}) + "abcdefghi\xFF\xFF\xFF");
    const std::string jpeg = folder.Write("NoTile.jpg", JpegOf(33, 17, 0xD0C0B0));
    TilePictures pictures;
    for (const auto use : {TileUse::Day, TileUse::Night}) {
        for (const std::string& path : {tile, odd, plain, jpeg}) {
            const auto format = path == jpeg ? PictureFormat::Jpeg : Dds;
            const auto id = pictures.IdOf(path, format, use);
            for (const int side : {1, 3, 16, 51, 128, 512}) {
                for (const auto& [left, top] :
                     {std::pair{0, 0}, {17, 5}, {-1, -2}, {190, 133}, {-500, 20}}) {
                    const PixelRect cell{left, top, side, side + side % 2};
                    Raster cached = Speckles(200, 140);
                    Raster afresh = Speckles(200, 140);
                    ASSERT_TRUE(pictures.Paint(cached.View(), id, cell));
                    PaintAfresh(afresh.View(), format, path, use, cell);
                    ASSERT_EQ(PixelsOf(cached), PixelsOf(afresh))
                        << path << " " << side << " at " << left << "," << top;
                }
            }
        }
    }
    // Two of blocks, to six sizes, and two others; by day and by night.
    EXPECT_EQ(pictures.Decodes(), 2u * (2 * 6 + 2));
}

TEST(TilePictures, NightPicturesReplaceTheDayOnlyWhereTheyAreBright) {
    const TestFolder folder;
    const std::string dark =
        folder.Write("dark.dds", DdsHeader(2, 1, {"", 24}) + "\x10\x10\x10\xF0\xF1\xF2");
    TilePictures pictures;
    Raster raster(2, 1, Ground);
    EXPECT_TRUE(pictures.Paint(raster.View(), pictures.IdOf(dark, Dds, TileUse::Night),
                               {0, 0, 2, 1}));
    EXPECT_EQ(raster.Row(0)[0], Ground);
    EXPECT_EQ(raster.Row(0)[1], 0xFFF2F1F0u);
}

TEST(TilePictures, DecodesEachPictureOnce) {
    const TestFolder folder;
    TilePictures pictures;
    const auto id = pictures.IdOf(folder.Write("a.dds", BlockTile(16, 16, "DXT3")), Dds,
                                  TileUse::Day);
    EXPECT_EQ(pictures.IdOf(folder.File("a.dds"), Dds, TileUse::Day), id);
    EXPECT_NE(pictures.IdOf(folder.File("a.dds"), Dds, TileUse::Night), id);
    EXPECT_NE(pictures.IdOf(folder.File("a.dds"), PictureFormat::Jpeg, TileUse::Day), id);
    Raster raster(100, 100);
    for (int repaint = 0; repaint < 3; ++repaint) {
        pictures.BeginRepaint();
        for (const int side : {6, 7, 6, 50})
            EXPECT_TRUE(PaintCell(pictures, id, raster, side));
    }
    EXPECT_EQ(pictures.Decodes(), 1u);
    EXPECT_EQ(pictures.MemoryInUse(), 4u * (16 * 16 + 6 * 6 + 7 * 7 + 50 * 50));
}

TEST(TilePictures, UnpacksBlocksOnceForEachSize) {
    const TestFolder folder;
    TilePictures pictures;
    const auto id = pictures.IdOf(folder.Write("a.dds", Tile(16, 0)), Dds, TileUse::Day);
    Raster raster(100, 100);
    for (int repaint = 0; repaint < 3; ++repaint) {
        pictures.BeginRepaint();
        for (const int side : {6, 7, 6, 50})
            EXPECT_TRUE(PaintCell(pictures, id, raster, side));
    }
    EXPECT_EQ(pictures.Decodes(), 3u);
    EXPECT_EQ(pictures.MemoryInUse(), 4u * (6 * 6 + 7 * 7 + 50 * 50));
}

// By day and by night, blocks and others, missing and broken ones.
TEST(TilePictures, PreparedPicturesPaintWhatOthersDo) {
    const TestFolder folder;
    for (const size_t bound : {size_t{1} << 20, size_t{9000}, size_t{0}}) {
        TilePictures prepared(bound);
        TilePictures others(bound);
        for (const auto use : {TileUse::Day, TileUse::Night}) {
            std::vector<std::string> paths{
                folder.File("missing.dds"), folder.Write("broken.dds", "broken"),
                folder.Write("dxt5.dds", BlockTile(16, 16, "DXT5"))};
            paths.reserve(paths.size() + 70);
            for (int tile = 0; tile < 70; ++tile)
                paths.push_back(
                    folder.Write(std::to_string(tile) + ".dds", Tile(21, tile * 20)));
            std::vector<TilePictureId> ids;
            ids.reserve(paths.size());
            for (const std::string& path : paths)
                ids.push_back(prepared.IdOf(path, Dds, use));
            prepared.BeginRepaint();
            prepared.Prepare(ids, 9);
            EXPECT_LE(prepared.MemoryInUse(), bound);
            const uint64_t decodes = prepared.Decodes();
            for (size_t i = 0; i < paths.size(); ++i) {
                Raster one(9, 9, Ground);
                Raster other(9, 9, Ground);
                const bool painted = PaintCell(prepared, ids[i], one, 9);
                EXPECT_EQ(painted,
                          PaintCell(others, others.IdOf(paths[i], Dds, use), other, 9));
                EXPECT_EQ(painted, i > 1);
                ASSERT_EQ(PixelsOf(one), PixelsOf(other)) << paths[i];
            }
            if (bound > 100000) {
                EXPECT_EQ(prepared.Decodes(), decodes + 1); // the one without blocks
            }
        }
    }
}

TEST(TilePictures, PreparingEndsWhenItIsTold) {
    const TestFolder folder;
    TilePictures pictures;
    const auto ids = TilesOf(pictures, folder, 20, 16);
    pictures.BeginRepaint();
    pictures.Prepare(ids, 8, [] { return true; });
    EXPECT_LT(pictures.Decodes(), 20u);
    Raster raster(8, 8);
    for (const auto id : ids)
        EXPECT_TRUE(PaintCell(pictures, id, raster, 8));
}

TEST(TilePictures, SeesAChangedFileAtTheNextRepaint) {
    const TestFolder folder;
    const std::string path = folder.Write("a.dds", BlockTile(4, 4, "DXT1")); // black
    const std::string other = BlockTile(8, 4, "DXT1").substr(136);           // red
    TilePictures pictures;
    const auto id = pictures.IdOf(path, Dds, TileUse::Day);
    Raster raster(1, 1, Ground);
    EXPECT_TRUE(PaintCell(pictures, id, raster, 1));
    EXPECT_EQ(raster.Row(0)[0], 0xFF000000u);

    Spill(path, DdsHeader(4, 4, {"DXT1"}) + other);
    Age(path, 60);
    EXPECT_TRUE(PaintCell(pictures, id, raster, 1));
    EXPECT_EQ(raster.Row(0)[0], 0xFF000000u); // one repaint shows one picture
    pictures.BeginRepaint();
    EXPECT_TRUE(PaintCell(pictures, id, raster, 1));
    EXPECT_EQ(raster.Row(0)[0], 0xFFFF0000u);

    // Another length with the same time.
    const auto time = fs::last_write_time(path);
    Spill(path, BlockTile(4, 4, "DXT1") + "and more");
    fs::last_write_time(path, time);
    pictures.BeginRepaint();
    EXPECT_TRUE(PaintCell(pictures, id, raster, 1));
    EXPECT_EQ(raster.Row(0)[0], 0xFF000000u);
    EXPECT_EQ(pictures.Decodes(), 3u);
    EXPECT_EQ(pictures.MemoryInUse(), 4u);
}

TEST(TilePictures, HasNoPictureForAMissingOrBrokenFile) {
    const TestFolder folder;
    fs::create_directory(folder.File("folder.dds"));
    TilePictures pictures;
    Raster raster(8, 8, Ground);
    for (const std::string& path :
         {folder.File("missing.dds"), folder.File("no/folder.dds"),
          folder.File("folder.dds"), folder.Write("empty.dds", ""),
          folder.Write("cut.dds", Tile(16, 0).substr(0, 200)),
          folder.Write("jpeg.dds", JpegOf(16, 16, 0)), std::string("missing.dds")}) {
        for (const auto use : {TileUse::Day, TileUse::Night}) {
            const auto id = pictures.IdOf(path, Dds, use);
            EXPECT_FALSE(PaintCell(pictures, id, raster, 8)) << path;
            EXPECT_FALSE(PaintCell(pictures, id, raster, 0)) << path;
        }
    }
    EXPECT_EQ(PixelsOf(raster), std::vector<uint32_t>(64, Ground));
    EXPECT_EQ(pictures.MemoryInUse(), 0u);
}

TEST(TilePictures, TriesABrokenFileOncePerRepaint) {
    const TestFolder folder;
    const std::string path = folder.Write("a.dds", "broken");
    TilePictures pictures;
    const auto id = pictures.IdOf(path, Dds, TileUse::Day);
    Raster raster(8, 8, Ground);
    for (int post = 0; post < 5; ++post)
        EXPECT_FALSE(PaintCell(pictures, id, raster, 8));
    EXPECT_EQ(pictures.Decodes(), 1u);
    Spill(path, Tile(16, 0));
    EXPECT_FALSE(PaintCell(pictures, id, raster, 8));
    pictures.BeginRepaint();
    EXPECT_TRUE(PaintCell(pictures, id, raster, 8));
}

TEST(TilePictures, FindsFilesWhoseNamesDifferInCaseAndThoseThatMove) {
    const TestFolder folder;
    const std::string real = folder.Write("Dds/h1.dds", BlockTile(4, 4, "DXT1"));
    TilePictures pictures;
    const auto id = pictures.IdOf(folder.Path() + "\\DDS\\H1.DDS", Dds, TileUse::Day);
    Raster raster(4, 4, Ground);
    EXPECT_TRUE(PaintCell(pictures, id, raster, 4));
    EXPECT_EQ(raster.Row(3)[3], 0xFF000000u);

    fs::rename(real, folder.File("Dds/H1.dds"));
    pictures.BeginRepaint();
    EXPECT_TRUE(PaintCell(pictures, id, raster, 4));

    fs::remove(folder.File("Dds/H1.dds"));
    pictures.BeginRepaint();
    EXPECT_FALSE(PaintCell(pictures, id, raster, 4));
    EXPECT_EQ(pictures.MemoryInUse(), 0u);

    folder.Write("Dds/h1.Dds", Tile(16, 0));
    EXPECT_FALSE(PaintCell(pictures, id, raster, 4)); // not before the next repaint
    pictures.BeginRepaint();
    EXPECT_TRUE(PaintCell(pictures, id, raster, 4));
}

TEST(TilePictures, StaysWithinItsMemoryAndPaintsTheSame) {
    const TestFolder folder;
    for (const size_t bound : {size_t{0}, size_t{3000}, size_t{20000}}) {
        TilePictures pictures(bound);
        for (int round = 0; round < 3; ++round) {
            pictures.BeginRepaint();
            for (int tile = 0; tile < 12; ++tile) {
                const std::string path =
                    folder.Write(std::to_string(tile) + ".dds", Tile(32, tile * 20));
                const auto id = pictures.IdOf(path, Dds, TileUse::Day);
                for (const int side : {0, 5, 20, 40}) {
                    Raster cached(40, 40, Ground);
                    Raster afresh(40, 40, Ground);
                    ASSERT_TRUE(PaintCell(pictures, id, cached, side));
                    PaintAfresh(afresh.View(), Dds, path, TileUse::Day,
                                {0, 0, side, side});
                    ASSERT_EQ(PixelsOf(cached), PixelsOf(afresh));
                    ASSERT_LE(pictures.MemoryInUse(), bound);
                }
            }
        }
    }
}

TEST(TilePictures, DropsSourcesBeforeTheCellsOfARepaint) {
    const TestFolder folder;
    // Room for one decoded tile of 64 by 64 and for all the cells of 8 by 8.
    TilePictures pictures(64 * 64 * 4 + 20 * 8 * 8 * 4);
    const auto ids = TilesOf(pictures, folder, 20, 64);
    Raster raster(8, 8);
    for (int round = 0; round < 3; ++round) {
        pictures.BeginRepaint();
        for (const auto id : ids)
            EXPECT_TRUE(PaintCell(pictures, id, raster, 8));
    }
    EXPECT_EQ(pictures.Decodes(), 20u);
}

TEST(TilePictures, DropsWhatWasUsedLongestAgo) {
    const TestFolder folder;
    TilePictures pictures(2 * (16 * 16 + 8 * 8) * 4);
    const auto ids = TilesOf(pictures, folder, 3, 16);
    Raster raster(8, 8);
    const auto decodes = [&](size_t tile, int side) {
        const uint64_t before = pictures.Decodes();
        pictures.BeginRepaint();
        EXPECT_TRUE(PaintCell(pictures, ids[tile], raster, side));
        return pictures.Decodes() - before;
    };
    EXPECT_EQ(decodes(0, 8), 1u);
    EXPECT_EQ(decodes(1, 8), 1u);
    EXPECT_EQ(decodes(0, 8), 0u); // its cell is now younger than tile 1's
    EXPECT_EQ(decodes(2, 8), 1u); // pushes out what is oldest
    EXPECT_EQ(decodes(0, 8), 0u);
    EXPECT_EQ(decodes(2, 8), 0u);
}

} // namespace
} // namespace vardenix::tests
