#include "workspace/HandState.h"

namespace vardenix {

void Renumber(HandState& hand, const TileRenumbering& numbers) {
    std::erase_if(hand.MoreTiles, [&](int32_t tile) { return numbers.TakesAway(tile); });
    for (int32_t& tile : hand.MoreTiles)
        tile = numbers.Of(tile);
    hand.EraserTile =
        numbers.TakesAway(hand.EraserTile) ? 0 : numbers.Of(hand.EraserTile);
    if (hand.Stamp)
        for (TerrainPost& post : hand.Stamp->Clip.Posts)
            post.TileOffset = numbers.Of(post.TileOffset);
}

} // namespace vardenix
