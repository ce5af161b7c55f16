#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "workspace/EditGesture.h"
#include "workspace/MapInteraction.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vardenix {

// What the next click, or the release of the button, would leave on the map.
struct MapGhost {
    PostBox Squares; // posts from 0, ordered, or heights while these are edited
    bool OfHeights = false;
    // The tile of each post; without it there is a frame alone.
    std::function<int32_t(int32_t x, int32_t y)> Tile;
    bool TellsSize = false;
};

// With the pointer at a place of the picture. Nothing where no click would paint.
std::optional<MapGhost> GhostAt(const EditGesture& gesture,
                                const MapInteraction& interaction, const MapView& view,
                                double x, double y);

// The posts of a ghost that are in view and on the terrain; nothing where it has no tiles
// to show, or far too many for every move of the mouse.
std::optional<PostBox> PostsOfGhost(const MapGhost& ghost, const MapView& view,
                                    int32_t mapWidth);

// Posts have other tiles for as long as it lives, and their own again afterwards.
class LentTiles {
public:
    LentTiles(Terrain& terrain, const PostBox& posts,
              const std::function<int32_t(int32_t x, int32_t y)>& tile);
    LentTiles(const LentTiles&) = delete;
    LentTiles& operator=(const LentTiles&) = delete;
    ~LentTiles();

private:
    struct Own {
        int32_t Serial;
        int32_t Tile;
    };

    Terrain& terrain_;
    std::vector<Own> own_;
};

} // namespace vardenix
