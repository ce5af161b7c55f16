#include "mapview/MapRenderer.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/ImagePainting.h"
#include "support/MapWorld.h"
#include "support/MemorySurface.h"
#include "support/PictureMaker.h"
#include "support/RecordingSurface.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

// Repaints of real picture files on bare memory.
namespace vardenix {
namespace {

using tests::MemorySurface;

// Side 4 by 4 pixels of four colours or so; each number has its own.
std::string TileOf(uint32_t width) { return tests::BlockTile(width, width, "DXT1"); }

class Painted : public testing::Test {
protected:
    Painted() : world_(16, folder_.Path() + "/") {
        for (int i = 0; i < 8; ++i) {
            const std::string name = "H" + std::to_string(i);
            folder_.Write(name + ".dds", TileOf(8U << (i % 4)));
            folder_.Write(name + "N.dds", TileOf(16U << (i % 3)));
        }
        folder_.Write("NoTile.jpg", tests::JpegOf(8, 8, 0x804020));
        for (int y = 1; y <= 16; ++y)
            for (int x = 1; x <= 16; ++x) {
                world_.SetTile(x, y, (x * 5 + y * 3) % 8);
                world_.Post(x, y).Palette = static_cast<uint8_t>(x * y);
            }
        for (int i = 0; i < 256; ++i)
            world_.MapFileRecord.Palette[i] = {static_cast<uint8_t>(i),
                                               static_cast<uint8_t>(255 - i),
                                               static_cast<uint8_t>(i * 7), 0};
    }

    std::vector<uint32_t> Repainted(TilePictures& pictures) {
        MemorySurface surface(world_.View.SquareSide());
        tests::Story story;
        tests::RecordingScreen screen(story);
        MapRenderer renderer({world_.Terrain, world_.Catalogue, world_.MapFileRecord,
                              world_.Settings, world_.AppPath},
                             {pictures, world_.PB3, world_.Log, world_.AbortPaint});
        renderer.RefreshPicArray(world_.View, surface, screen, {});
        return tests::PixelsOf(surface.Picture());
    }

    static void ExpectNoTile(uint32_t pixel) {
        EXPECT_NEAR(static_cast<int>(pixel >> 16 & 255), 0x80, 3);
        EXPECT_NEAR(static_cast<int>(pixel >> 8 & 255), 0x40, 3);
        EXPECT_NEAR(static_cast<int>(pixel & 255), 0x20, 3);
    }

    // The same view, every picture loaded anew for every post and painted cell by cell.
    std::vector<uint32_t> PaintedWithoutCache() {
        const MapView& view = world_.View;
        Raster raster(view.SquareSide(), view.SquareSide(), 0xFF404040);
        const int posts = view.GridCells * view.ZoomPosts;
        const double size = static_cast<double>(view.TilePixels) / view.ZoomPosts;
        const int side = static_cast<int>(std::ceil(size));
        for (int row = 0; row < posts; ++row)
            for (int column = 0; column < posts; ++column) {
                const int left = static_cast<int>(std::nearbyint(column * size));
                const int top =
                    static_cast<int>(std::nearbyint((posts - 1 - row) * size));
                const int right = static_cast<int>(std::nearbyint((column + 1) * size));
                const int bottom = static_cast<int>(std::nearbyint((posts - row) * size));
                PaintPost(
                    column + view.MapLeftX + 1, row + view.MapBottomY + 1,
                    {raster.Row(top) + left, right - left, bottom - top, raster.Width()},
                    side);
            }
        return tests::PixelsOf(raster);
    }

    tests::TestFolder folder_;
    tests::MapWorld world_;

private:
    void PaintPost(int x, int y, const RasterView& cell, int side) {
        if (x > 16 || y > 16)
            return;
        const std::string name = "H" + std::to_string(world_.Post(x, y).TileOffset);
        const Bitmap day = ImageLoad(PictureFormat::Dds, folder_.File(name + ".dds"));
        ImagePaintDC(cell, day, WholeInto(day, {0, 0, side, side}));
        if (world_.View.ApplyMAP) {
            const auto shade = static_cast<uint8_t>(x * y);
            const uint32_t color = static_cast<uint32_t>(shade) << 16 |
                                   static_cast<uint32_t>(255 - shade) << 8 |
                                   static_cast<uint8_t>(shade * 7);
            BlendColor(cell, {0, 0, side, side}, color, world_.View.MapAlpha);
        }
        if (world_.View.ApplyNight) {
            const Bitmap night = MaskNightPicture(
                ImageLoad(PictureFormat::Dds, folder_.File(name + "N.dds")));
            ImagePaintTransparent(cell, night, WholeInto(night, {0, 0, side, side}));
        }
    }
};

TEST_F(Painted, WithTheCacheIsPixelForPixelAsWithout) {
    TilePictures pictures;
    TilePictures tiny(1);
    world_.View.TilePixels = 64;
    for (const int zoom : {1, 3, 5, 8})
        for (const bool coloured : {false, true}) {
            world_.View.ZoomPosts = static_cast<int16_t>(zoom);
            world_.View.ApplyMAP = world_.View.ApplyNight = coloured;
            const std::vector<uint32_t> expected = PaintedWithoutCache();
            EXPECT_EQ(Repainted(pictures), expected) << "cold, zoom " << zoom;
            EXPECT_EQ(Repainted(pictures), expected) << "warm, zoom " << zoom;
            EXPECT_EQ(Repainted(tiny), expected) << "nothing kept, zoom " << zoom;
        }
}

// Cells of three pixels: 15 pixels show 5 posts, each in the mean of what its picture is.
TEST_F(Painted, AnOverviewShowsEachPostInTheMeanColorOfItsTile) {
    world_.View.ZoomPosts = 40;
    world_.View.TilePixels = 120;
    world_.View.RoomWidth = world_.View.RoomHeight = 15;
    world_.View.MapLeftX = 12; // the last column lies beyond the terrain
    MemorySurface surface(15);
    tests::Story story;
    tests::RecordingScreen screen(story);
    world_.Renderer().RefreshPicArray(world_.View, surface, screen, {});
    for (int y = 0; y < 15; ++y) {
        for (int x = 0; x < 12; ++x) {
            const int post = 13 + x / 3;
            const int row = 1 + (14 - y) / 3;
            const Bitmap day = ImageLoad(
                PictureFormat::Dds,
                folder_.File("H" + std::to_string((post * 5 + row * 3) % 8) + ".dds"));
            const Raster pixels = BitmapToHBitmap(day);
            double sums[3]{};
            for (int32_t v = 0; v < pixels.Height(); ++v)
                for (int32_t u = 0; u < pixels.Width(); ++u)
                    for (int i = 0; i < 3; ++i)
                        sums[i] += pixels.Row(v)[u] >> (8 * i) & 255;
            const double count = pixels.Width() * pixels.Height();
            for (int i = 0; i < 3; ++i)
                EXPECT_NEAR(surface.At(x, y) >> (8 * i) & 255, sums[i] / count, 4)
                    << x << "," << y << " " << i;
        }
        EXPECT_EQ(surface.At(13, y) & 0xFFFFFF, MapBackground);
    }
}

TEST_F(Painted, ACellPastTheUpperLeftCornerShowsItsLowerRightPart) {
    MemorySurface whole(16);
    MemorySurface part(16);
    const TilePictureId tile = world_.Day(2); // 32 pixels a side
    EXPECT_TRUE(whole.PaintTile(world_.Pictures, tile, {0, 0, 16, 16}, 16));
    EXPECT_TRUE(part.PaintTile(world_.Pictures, tile, {-4, -8, 15, 16}, 16));
    for (int32_t y = 0; y < 8; ++y)
        for (int32_t x = 0; x < 11; ++x)
            EXPECT_EQ(part.At(x, y), whole.At(x + 4, y + 8)) << x << "," << y;
    EXPECT_EQ(part.At(11, 0), 0U); // cut from the square
    EXPECT_EQ(part.At(0, 8), 0U);
    EXPECT_TRUE(part.PaintTile(world_.Pictures, tile, {100, -200, 15, 16}, 16));
}

TEST_F(Painted, EveryDistinctTileIsDecodedOnce) {
    world_.View.ZoomPosts = 7;
    Repainted(world_.Pictures);
    Repainted(world_.Pictures);
    EXPECT_EQ(world_.Pictures.Decodes(), 8U);
}

TEST_F(Painted, NoTileStandsInForAPictureThatIsGoneSinceTheOpening) {
    world_.SetTile(1, 1, 9); // no such file
    world_.Catalogue.Lookup[9].HasImage = 1;
    ExpectNoTile(Repainted(world_.Pictures).at(255 * 256 + 5));
}

TEST_F(Painted, AMissingPictureStillGetsTheMapColour) {
    folder_.Write("H0.dds", "no picture");
    world_.SetTile(1, 1, 0); // palette entry 1: 1, 254, 7
    world_.View.ApplyMAP = true;
    world_.View.MapAlpha = 255;
    EXPECT_EQ(Repainted(world_.Pictures).at(255 * 256), 0xFF01FE07);
}

TEST_F(Painted, NoTileStandsInForWhatHasNoPicture) {
    world_.SetTile(1, 1, 5000);
    ExpectNoTile(Repainted(world_.Pictures).at(255 * 256));
}

TEST_F(Painted, NoTileStandsInForAPictureThatCannotBeRead) {
    world_.SetTile(1, 1, 0);
    const std::string whole = tests::Slurp(folder_.File("H0.dds"));
    for (const std::string& bytes :
         {std::string(), std::string("no picture"), whole.substr(0, 150),
          tests::Slurp(folder_.File("NoTile.jpg"))}) {
        folder_.Write("H0.dds", bytes);
        for (int repaint = 1; repaint <= 2; ++repaint)
            ExpectNoTile(Repainted(world_.Pictures).at(255 * 256));
    }
    folder_.Write("H0.dds", whole);
    EXPECT_EQ(Repainted(world_.Pictures), PaintedWithoutCache());
    // Without the substitute there is nothing to paint.
    folder_.Write("H0.dds", "no picture");
    std::filesystem::remove(folder_.File("NoTile.jpg"));
    EXPECT_EQ(Repainted(world_.Pictures).at(255 * 256), 0xFF404040);
}

TEST_F(Painted, ATileChangedOnTheDiskIsSeenAtTheNextRepaint) {
    Repainted(world_.Pictures);
    folder_.Write("H0.dds", TileOf(256));
    world_.View.GridCells = 8;
    EXPECT_EQ(Repainted(world_.Pictures), PaintedWithoutCache());
}

// The renderer passes over the step then, so the image library itself is asked.
TEST_F(Painted, BrightnessZeroWouldChangeNoPixel) {
    Raster raster(256, 256);
    for (int32_t y = 0; y < 256; ++y)
        for (int32_t x = 0; x < 256; ++x)
            raster.Row(y)[x] = 0xFF000000 | static_cast<uint32_t>(x) << 16 |
                               static_cast<uint32_t>(255 - x) << 8 |
                               static_cast<uint32_t>(y);
    const Bitmap adjusted = AdjustPictureBrightness(PictureToBitmap(raster.View()), 0.0);
    ASSERT_TRUE(adjusted);
    EXPECT_EQ(tests::PixelsOf(BitmapToPicture(adjusted)), tests::PixelsOf(raster));
}

TEST_F(Painted, NoTileStandsInForATileDeletedFromTheDisk) {
    world_.SetTile(1, 1, 0);
    EXPECT_EQ(Repainted(world_.Pictures), PaintedWithoutCache());
    std::filesystem::remove(folder_.File("H0.dds"));
    ExpectNoTile(Repainted(world_.Pictures).at(255 * 256));
}

TEST_F(Painted, BrightnessLiesOverTilesAndMapColoursAndUnderTheRest) {
    world_.View.Brightness = -100;
    world_.View.ShowGrid = true;
    world_.View.GridColor = 0x0000FF;
    const std::vector<uint32_t> pixels = Repainted(world_.Pictures);
    EXPECT_EQ(pixels.at(5 * 256 + 5), 0xFF000000);
    EXPECT_EQ(pixels.at(5), 0xFFFF0000);
}

} // namespace
} // namespace vardenix
