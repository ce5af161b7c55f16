#pragma once

#include "catalogue/TileRenumbering.h"
#include "workspace/PostClip.h"
#include "workspace/PostShaping.h"
#include "workspace/Selection.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vardenix {

// What brush, rectangle and fill give to the posts of level 2. A ground comes with the
// tiles that join it to what lies round it; a way (river, road or railroad) follows the
// brush.
enum class Painting : int16_t { Tile, Ground, Heights, Palette, X1, X2, Way };

// What fills take as one.
enum class FillLike : int16_t { Tile, Kind, Ground };

// A clip that follows the pointer, to be stamped by clicks.
struct StampInHand {
    PostClip Clip;
    // Where the pointer has it: columns and rows from its lower left post.
    PostPlace Grip{};
    bool TilesOnly = false; // whatever fields come along otherwise
};

// What the maker's hand holds beside the tool itself; it stays while tools change.
struct HandState {
    Selection Selected; // bounds what the tools change; an empty one bounds nothing

    Painting Paints = Painting::Tile;
    // Tools come back with what they painted last: grounds begin with the rectangle.
    int16_t GroundTool = 1;
    int16_t TileTool = 0;
    PostShape Shape = PostShape::Raise;
    bool Sloping = false; // in place of Shape: a slope between two posts
    bool Soft = false;    // the brush over heights
    uint8_t Value = 0;    // of Palette, X1 and X2

    std::vector<int32_t> MoreTiles; // painted in turn at random with the chosen one
    uint32_t Seed = 1;
    int32_t EraserTile = 0;

    FillLike Like = FillLike::Tile;
    // The sort of a tile by its number, by which fills tell what is alike; none for the
    // number itself.
    std::function<int32_t(int32_t)> SortOf;

    bool EdgeInside = false; // of grounds: nothing outside changes

    ClipFields Fields; // that come along
    std::optional<StampInHand> Stamp;
};

// The tiles in hand are still those that they were; one that has gone is held no more.
void Renumber(HandState& hand, const TileRenumbering& numbers);

} // namespace vardenix
