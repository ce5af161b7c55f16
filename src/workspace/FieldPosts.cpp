#include "workspace/FieldPosts.h"

#include "levels/LevelGeometry.h"

namespace vardenix {

int32_t FieldOf(const TerrainPost& post, Painting field) {
    switch (field) {
    case Painting::Heights:
        return post.Elevation;
    case Painting::Palette:
        return post.Palette;
    case Painting::X1:
        return post.X1;
    case Painting::X2:
        return post.X2;
    default:
        return post.TileOffset;
    }
}

PostDelta FieldPosts(const Terrain& terrain, const Selection& selection, Painting field,
                     uint8_t value) {
    DeltaWriter writer;
    const auto posts = terrain.LxArr.Values();
    for (const RowSpan& span : selection.Spans())
        for (int32_t x = span.X1; x <= span.X2; ++x) {
            const int32_t serial = span.Y * terrain.MapWidth + x + 1;
            const TerrainPost& old = posts[static_cast<size_t>(serial) - 1];
            TerrainPost changed = old;
            switch (field) {
            case Painting::Palette:
                changed.Palette = value;
                break;
            case Painting::X1:
                changed.X1 = value;
                break;
            case Painting::X2:
                changed.X2 = value;
                break;
            default:
                break;
            }
            writer.Add(serial, old, changed);
        }
    return writer.Take();
}

PostBox SegmentsInView(const MapView& view, int32_t width) {
    const auto first = [](int32_t post) { return post / SegmentSide * SegmentSide; };
    return CutToGrid({first(view.MapLeftX), first(view.MapBottomY),
                      first(view.MapLeftX + view.ViewColumns() - 1) + SegmentSide - 1,
                      first(view.MapBottomY + view.ViewRows() - 1) + SegmentSide - 1},
                     width);
}

} // namespace vardenix
