#pragma once

#include "support/MapWorld.h"
#include "support/RecordingCommands.h"
#include "support/ToldMap.h"
#include "windows/WindowTest.h"
#include "workspace/windows/FrmVXMap.h"

#include <QTest>

namespace vardenix::tests {

// The map window over a theater of 64 posts a side without any picture on the disk, four
// by four cells of 64 pixels in view, `zoomPosts` posts along each.
class MapWindowTest : public testing::Test {
protected:
    explicit MapWindowTest(int16_t zoomPosts) {
        state_.Starting = false;
        state_.Terrain.MapWidth = 64;
        state_.Terrain.LxArr = PostArray(64 * 64);
        world_.View.GridCells = 4;
        world_.View.TilePixels = 64;
        world_.View.ZoomPosts = zoomPosts;
        commands_.OnRefresh = [this] { window_.RefreshPicArray(); };
    }

    void Open() {
        window_.InitForm();
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
        commands_.Story.clear();
    }

    QWidget& PicShow() { return Find<QWidget>(window_, "PicShow"); }

    ProgramState state_;
    MapWorld world_{64};
    MapRenderer renderer_ = world_.Renderer();
    RecordingCommands commands_;
    MapInteraction interaction_;
    UndoPoints undo_{state_.Terrain, state_.Changes, commands_};
    ToldMap map_{commands_.Story};
    FrmVXMap window_{
        {state_, world_.View, interaction_, renderer_, undo_, commands_, map_}};
};

} // namespace vardenix::tests
