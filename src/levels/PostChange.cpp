#include "levels/PostChange.h"

namespace vardenix {

bool PostChange::Empty() const {
    return !TileOffset && !Elevation && !Palette && !X1 && !X2;
}

void ApplyChange(TerrainPost& post, const PostChange& change) {
    // The fields of a post are unaligned, so they are assigned one by one.
    if (change.TileOffset)
        post.TileOffset = *change.TileOffset;
    if (change.Elevation)
        post.Elevation = *change.Elevation;
    if (change.Palette)
        post.Palette = *change.Palette;
    if (change.X1)
        post.X1 = *change.X1;
    if (change.X2)
        post.X2 = *change.X2;
}

} // namespace vardenix
