// What the next click would leave, seen on the map before it is made.
#include "app/OpenedWorkspace.h"
#include "mapview/windows/MapPicture.h"
#include "workspace/windows/FrmVXMap.h"

namespace vardenix {
namespace {

using tests::Find;
using tests::Int32Bytes;
using tests::Posts;

class MapGhostTest : public tests::OpenedWorkspace {
protected:
    static MapPicture& Picture() {
        return Find<MapPicture>(Window("FrmVXMap"), "PicShow");
    }
    // The view is of 5 by 5 posts of 128 pixels at the lower left.
    static QPoint Middle(int x, int y) { return {x * 128 + 64, 640 - y * 128 - 64}; }
    static void PointAt(int x, int y) { QTest::mouseMove(&Picture(), Middle(x, y)); }
    static const MapPicture::Band& Band() { return Picture().ShownBand().value(); }
    MapInteraction& Hand() { return workspace_->Interaction(); }
    std::string Tiles() {
        std::string tiles;
        for (const TerrainPost& post : state_.Terrain.LxArr.Values())
            tiles += static_cast<char>('0' + post.TileOffset);
        return tiles;
    }
    QColor Seen(int x, int y) {
        return Painted().pixelColor(Middle(x, y) + QPoint(9, 9));
    }
};

TEST_F(MapGhostTest, TheBrushShowsItsTileWhereItWouldPaint) {
    Open();
    PointAt(3, 2);
    EXPECT_FALSE(Picture().ShownBand()); // no tile is chosen
    const QImage plain = Painted();
    const std::string tiles = Tiles();
    Hand().SelectedTile = 1;
    PointAt(3, 3);
    EXPECT_EQ(Band().Frame, QRect(3 * 128, 128, 128, 128));
    EXPECT_EQ(Band().Words, "");
    EXPECT_NE(Painted(), plain);
    EXPECT_EQ(Tiles(), tiles);
    Hand().BrushSize = 3;
    PointAt(3, 2);
    EXPECT_EQ(Band().Frame, QRect(2 * 128, 128, 3 * 128, 3 * 128));
    EXPECT_EQ(Band().Ghost.size(), QSize(3 * 128, 3 * 128));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&Picture(), &leave);
    EXPECT_FALSE(Picture().ShownBand());
    EXPECT_EQ(Painted(), plain);
}

TEST_F(MapGhostTest, TheRectangleTellsItsSizeInPosts) {
    Open();
    Hand().SelectedTile = 1;
    workspace_->Map().ChooseTool(MapTool::Rectangle);
    PointAt(1, 1);
    EXPECT_FALSE(Picture().ShownBand());
    const std::string tiles = Tiles();
    QTest::mousePress(&Picture(), Qt::LeftButton, {}, Middle(1, 1));
    QMouseEvent move(QEvent::MouseMove, Middle(3, 2), Picture().mapToGlobal(Middle(3, 2)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Picture(), &move);
    EXPECT_EQ(Band().Words, "3 X 2");
    EXPECT_EQ(Band().Frame, QRect(128, 640 - 3 * 128, 3 * 128, 2 * 128));
    EXPECT_EQ(Tiles(), tiles);
    QTest::keyClick(&workspace_->Map(), Qt::Key_Escape);
    QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, Middle(3, 2));
    EXPECT_EQ(Tiles(), tiles);
}

TEST_F(MapGhostTest, AStampShowsTheTilesOfItsRegion) {
    Open();
    // Tile 1 at the left, 0 at the right.
    platform_.Dialogs.ExpectOpen(
        "Open file to import...",
        folder_.Write("in.exp",
                      Int32Bytes(2) + Int32Bytes(1) + Int32Bytes(1) + Int32Bytes(0)));
    Find<QAbstractButton>(Window("FrmVXMain"), "CmdImport").click();
    const std::string tiles = Tiles();
    PointAt(2, 2);
    EXPECT_EQ(Band().Words, "2 X 1");
    ASSERT_EQ(Band().Ghost.size(), QSize(256, 128));
    // As the post of that column is painted, and its neighbour.
    EXPECT_EQ(Band().Ghost.copy(8, 8, 100, 100).convertToFormat(QImage::Format_RGB32),
              workspace_->Map()
                  .Picture2()
                  .Image()
                  .copy(128 + 8, 640 - 120, 100, 100)
                  .convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(Tiles(), tiles);
    QTest::keyClick(&workspace_->Map(), Qt::Key_Escape);
    EXPECT_FALSE(Picture().ShownBand());
}

TEST_F(MapGhostTest, BeyondTheTerrainThereIsNothingToLend) {
    Open();
    workspace_->ScrollTo(Posts - 1, Posts - 1);
    Hand().SelectedTile = 1;
    PointAt(3, 3);
    EXPECT_TRUE(Band().Ghost.isNull());
    Hand().BrushSize = 3;
    PointAt(1, 1); // reaches back to the last post
    EXPECT_EQ(Band().Ghost.size(), QSize(128, 128));
}

} // namespace
} // namespace vardenix
