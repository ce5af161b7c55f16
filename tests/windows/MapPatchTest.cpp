// Parts of a map that are painted anew, held against the whole repaint.
#include "mapview/MapPatch.h"

#include "mapview/windows/QtDrawingSurface.h"
#include "support/MapWorld.h"

#include <gtest/gtest.h>

#include <random>

namespace vardenix {
namespace {

// Lines and shapes across the view.
class Shapes : public FeatureLayer {
public:
    bool ShowFeatures() const override { return true; }
    bool Shown(FeatureKind) const override { return true; }
    void FeatureDraw(DrawingSurface& surface, const MapView&, FeatureKind kind,
                     bool) override {
        if (kind != FeatureKind::Road)
            return;
        surface.SetPen(0x00FFFF, 2);
        const PicturePoint points[] = {{31.5, 3}, {31.5, 90.5}, {77, 90.5}, {2, 11}};
        surface.Polyline(points);
        surface.SetPen(0x00FF00, 1);
        surface.Line({3, 5}, {157, 96});
        surface.SetFill(FillStyle::Solid, 0x800080);
        surface.Ellipse({40.5, 20}, {61, 44.5});
        surface.SetPen(0, 1);
    }
};

class MapPatchTest : public testing::Test {
protected:
    MapPatchTest() {
        for (int i = 0; i < 256; ++i)
            world_.MapFileRecord.Palette[i] = {static_cast<uint8_t>(i),
                                               static_cast<uint8_t>(255 - i),
                                               static_cast<uint8_t>(i * 7), 0};
        world_.View.ApplyMAP = true;
        world_.View.MapAlpha = 200;
        world_.View.GridColor = 0x0000FF;
        world_.View.SegmentColor = 0xFF0000;
        world_.Settings.HeightsFont.Name = "Liberation Sans";
        world_.Settings.HeightsFont.Size = 7;
        world_.Terrain.Elevations.EMapWidth = 4 * Width;
        world_.Terrain.Elevations.L0ElvArr = HeightArray(16 * Width * Width);
        for (TerrainPost& post : world_.Terrain.LxArr.Values())
            Change(post);
        for (int16_t& height : world_.Terrain.Elevations.L0ElvArr.Values())
            height = static_cast<int16_t>(random_() % 20000 - 10000);
        world_.AddArea(1, {7, 400, 1640, -1640}); // beyond its tile
        world_.AddArea(2, {1, 800, 3000, 1640});
        world_.AddPath(3, {10, 100, 1640, -900, 1640, 4000});
        world_.AddPath(4, {11, 10, 200, 3000, 2900, 300});
    }

    void Change(TerrainPost& post) {
        post.TileOffset = static_cast<int32_t>(random_() % 5);
        post.Palette = static_cast<uint8_t>(random_());
        post.Elevation = static_cast<int16_t>(random_() % 30000 - 9000);
    }

    void ExpectPatched(const std::string& what) {
        MapRenderer renderer = world_.Renderer();
        NoScreen screen;
        QtDrawingSurface patched;
        QtDrawingSurface whole;
        QtDrawingSurface small;
        patched.Resize(world_.View.PictureWidth(), world_.View.PictureHeight());
        whole.Resize(world_.View.PictureWidth(), world_.View.PictureHeight());
        renderer.RefreshPicArray(world_.View, patched, screen, {&shapes_, {}});
        for (int round = 0; round < 4; ++round) {
            const auto at = [&] { return static_cast<int32_t>(random_() % Width); };
            PostBox posts{at(), at(), 0, 0};
            posts.X2 =
                std::min(posts.X1 + static_cast<int32_t>(random_() % 3), Width - 1);
            posts.Y2 =
                std::min(posts.Y1 + static_cast<int32_t>(random_() % 3), Width - 1);
            for (int32_t y = posts.Y1; y <= posts.Y2; ++y)
                for (int32_t x = posts.X1; x <= posts.X2; ++x)
                    Change(world_.Post(x + 1, y + 1));
            world_.Terrain.Elevations.At(posts.X1 * 4 + 1, posts.Y1 * 4 + 2) = -12345;
            const MapPatch patch = PatchOf(
                world_.View, posts, ReachOf(world_.View, renderer.Sources(), small));
            if (patch.Clip.Width > 0) {
                small.Resize(patch.Clip.Width, patch.Clip.Height);
                renderer.RepaintPatch(world_.View, small, patch, {&shapes_, {}});
                patched.Put(small, patch.Clip);
            }
            renderer.RefreshPicArray(world_.View, whole, screen, {&shapes_, {}});
            ASSERT_TRUE(patched.Image() == whole.Image()) << what << ", " << round;
        }
    }

    static constexpr int Width = 24;
    tests::MapWorld world_{Width};
    std::mt19937 random_{21};
    Shapes shapes_;
};

struct Cells {
    int16_t GridCells, ZoomPosts;
    int32_t TilePixels;
};

TEST_F(MapPatchTest, IsPixelForPixelThatOfAWholeRepaint) {
    for (const Cells& cells : {Cells{5, 1, 32}, Cells{3, 3, 64}, Cells{2, 7, 32},
                               Cells{4, 5, 16}, Cells{2, 20, 16}}) {
        world_.View.GridCells = cells.GridCells;
        world_.View.ZoomPosts = cells.ZoomPosts;
        world_.View.TilePixels = cells.TilePixels;
        const std::string size =
            std::to_string(cells.TilePixels) + "/" + std::to_string(cells.ZoomPosts);
        // All layers together at every size, every choice of them at the first.
        for (int layers = cells.ZoomPosts == 1 ? 0 : 23; layers < 32; ++layers) {
            world_.View.MapLeftX = static_cast<int32_t>(random_() % 20);
            world_.View.MapBottomY = static_cast<int32_t>(random_() % 20);
            world_.View.ShowGrid = (layers & 1) != 0;
            world_.View.ShowHeights = (layers & 2) != 0;
            world_.View.ShowAreasPaths = (layers & 4) != 0;
            world_.View.L0Mode = (layers & 8) != 0;
            world_.View.Brightness = (layers & 16) != 0 ? 20 : 0;
            world_.View.ShowSegments = (layers & 16) != 0;
            world_.View.ShowRelief = (layers & 5) != 0;
            world_.View.ShowContours = (layers & 6) != 0;
            ASSERT_NO_FATAL_FAILURE(
                ExpectPatched(size + " layers " + std::to_string(layers)));
        }
    }
}

TEST_F(MapPatchTest, FitsAPictureThatCutsItsCells) {
    for (const Cells& cells : {Cells{5, 1, 32}, Cells{3, 3, 64}, Cells{2, 20, 16},
                               Cells{5, 23, 256}, Cells{5, 40, 16}}) {
        world_.View.ZoomPosts = cells.ZoomPosts;
        world_.View.TilePixels = cells.TilePixels;
        world_.View.RoomWidth = 203;
        world_.View.RoomHeight = 117;
        world_.View.MapLeftX = 5;
        world_.View.MapBottomY = 3;
        world_.View.ShowGrid = true;
        world_.View.ShowHeights = true;
        world_.View.ShowSegments = true;
        ASSERT_NO_FATAL_FAILURE(ExpectPatched(std::to_string(cells.TilePixels)));
    }
}

TEST_F(MapPatchTest, ReachesNoFartherThanTheCellAndItsLines) {
    world_.View.GridCells = 5;
    world_.View.TilePixels = 32;
    world_.View.MapLeftX = 10;
    QtDrawingSurface texts;
    const int32_t reach = ReachOf(world_.View, world_.Renderer().Sources(), texts);
    const MapPatch patch = PatchOf(world_.View, {12, 1, 12, 1}, reach);
    EXPECT_LE(patch.Clip.Width, 40);
    EXPECT_LE(patch.Clip.Height, 40);
    EXPECT_LE(patch.Clip.Left, 2 * 32);
    EXPECT_GE(patch.Clip.Left + patch.Clip.Width, 3 * 32);
    EXPECT_EQ(PatchOf(world_.View, {9, 1, 9, 9}, reach).Clip.Width, 0);
    EXPECT_EQ(PatchOf(world_.View, {15, 1, 19, 9}, reach).Clip.Width, 0);
}

} // namespace
} // namespace vardenix
