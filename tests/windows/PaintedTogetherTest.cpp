// Whole views on the surface that the map window shows: what is put off and done in bands
// against the same drawn at once.
#include "mapview/windows/QtDrawingSurface.h"
#include "support/MapWorld.h"
#include "support/PictureMaker.h"
#include "support/RecordingSurface.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

class AtOnce : public QtDrawingSurface {
public:
    void BeginSteps() override {}
};

class PaintedTogether : public testing::Test {
protected:
    PaintedTogether() : world_(64, folder_.Path() + "/") {
        for (uint32_t i = 0; i < 8; ++i) {
            const std::string name = "H" + std::to_string(i);
            if (i != 5)
                folder_.Write(name + ".dds",
                              tests::BlockTile(8U << i % 4, 8U << i % 4, "DXT1"));
            folder_.Write(name + "N.dds",
                          tests::BlockTile(16, 16, i == 3 ? "DXT5" : "DXT1"));
            world_.AddArea(static_cast<int>(i),
                           {7, 500, 1600, 1600.0F + 100.0F * static_cast<float>(i)});
            world_.AddPath(static_cast<int>(i),
                           {10, 300, 0, 1640, 3280, i % 2 == 0 ? 1640.0F : 2000.0F});
        }
        folder_.Write("NoTile.jpg", tests::JpegOf(8, 8, 0x804020));
        for (int i = 0; i < 256; ++i)
            world_.MapFileRecord.Palette[i] = {static_cast<uint8_t>(i),
                                               static_cast<uint8_t>(255 - i),
                                               static_cast<uint8_t>(i * 7), 0};
        uint32_t random = 5;
        for (TerrainPost& post : world_.Terrain.LxArr.Values()) {
            random = random * 1664525 + 1013904223;
            post.TileOffset = static_cast<int32_t>(random >> 16) % 9 == 8
                                  ? 999
                                  : static_cast<int32_t>(random >> 16) % 8;
            post.Elevation = static_cast<int16_t>((random >> 8) % 30000 - 5000);
            post.Palette = static_cast<uint8_t>(random >> 24);
        }
        MapView& view = world_.View;
        view.ApplyMAP = view.ApplyNight = view.ShowHeights = view.ShowGrid = true;
        view.ShowSegments = view.ShowExport = view.ShowAreasPaths = true;
        view.GridColor = 0x2020FF;
        view.Brightness = 17;
        view.GridCells = 10;
        view.TilePixels = 64;
        view.ZoomPosts = 5;
        view.MapLeftX = 20; // reaches past the edge
    }

    QImage Painted(QtDrawingSurface& surface) {
        surface.Resize(world_.View.PictureWidth(), world_.View.PictureHeight());
        tests::Story story;
        tests::RecordingScreen screen(story);
        world_.Renderer().RefreshPicArray(world_.View, surface, screen, {});
        return surface.Image();
    }

    tests::TestFolder folder_;
    tests::MapWorld world_;
};

TEST_F(PaintedTogether, EveryLayerIsThePictureDrawnAtOnce) {
    for (const bool filled : {false, true})
        for (const int16_t zoom : {int16_t{1}, int16_t{3}, int16_t{6}}) {
            world_.View.AreasFilled = filled;
            world_.View.ZoomPosts = zoom;
            QtDrawingSurface together;
            AtOnce atOnce;
            const QImage one = Painted(together);
            EXPECT_TRUE(one == Painted(atOnce)) << zoom;
            // And once more, with everything kept.
            EXPECT_TRUE(one == Painted(together)) << zoom;
        }
}

} // namespace
} // namespace vardenix
