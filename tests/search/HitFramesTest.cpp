#include "search/HitFrames.h"

#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using Lines = std::vector<std::string>;

TEST(HitFrames, HitsInViewAreFramed) {
    // Ten posts a side of 10 pixels each, from 20, 30 on.
    MapView view;
    view.MapLeftX = 20;
    view.MapBottomY = 30;
    view.ZoomPosts = 5;
    view.GridCells = 2;
    view.TilePixels = 50;
    Terrain terrain;
    terrain.MapWidth = 64;
    // Posts 20,30 and 29,39 counted from 0, and two outside the view.
    const SearchResults hits{0, 30 * 64 + 20, 30 * 64 + 21, 30 * 64 + 31, 39 * 64 + 30};
    HitFrames frames(hits, terrain);
    tests::Story story;
    tests::RecordingSurface surface(story);
    frames.DrawMarks(surface, view);
    EXPECT_TRUE(story.Lines().empty());
    frames.Shown = true;
    frames.DrawMarks(surface, view);
    EXPECT_EQ(story.Lines(), (Lines{"box 1,91 9,99 pen FF00FF 1 none",
                                    "box 91,1 99,9 pen FF00FF 1 none"}));
}

} // namespace
} // namespace vardenix
