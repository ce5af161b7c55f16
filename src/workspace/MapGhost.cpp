#include "workspace/MapGhost.h"

#include "companion/Vardenix.h"
#include "workspace/GridShapes.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr int64_t MostLentPosts = 2500;

PostBox WithinView(const MapView& view, const PostBox& posts) {
    return {std::max(posts.X1, view.MapLeftX), std::max(posts.Y1, view.MapBottomY),
            std::min(posts.X2, view.MapLeftX + view.ViewColumns() - 1),
            std::min(posts.Y2, view.MapBottomY + view.ViewRows() - 1)};
}

std::optional<MapGhost> GhostOfCorner(const MapInteraction& interaction,
                                      const MapView& view, PostPlace post) {
    const auto box = BoxAtCursor(interaction, view, post);
    if (!box)
        return std::nullopt;
    MapGhost ghost;
    ghost.Squares = Ordered(*box);
    ghost.TellsSize = true;
    const auto& tiles = interaction.ImportTiles;
    const int32_t width = interaction.ImportWidth;
    if (interaction.WaitImportCorner &&
        std::ssize(tiles) == int64_t{width} * interaction.ImportHeight)
        ghost.Tile = [&tiles, post, width](int32_t x, int32_t y) {
            return tiles[static_cast<size_t>(int64_t{y - post.Y} * width + x - post.X)];
        };
    return ghost;
}

} // namespace

std::optional<MapGhost> GhostAt(const EditGesture& gesture,
                                const MapInteraction& interaction, const MapView& view,
                                double x, double y) {
    if (interaction.Waits())
        return GhostOfCorner(interaction, view, PostUnderCursor(view, x, y));
    if (interaction.Hand.Stamp)
        return std::nullopt; // it has a picture of its own
    MapGhost ghost;
    ghost.OfHeights = EditsHeights(interaction, view);
    const bool erases = interaction.Tool == MapTool::Eraser;
    const bool fields = PaintsFields(interaction, view) || PaintsLand(interaction, view);
    if (!ghost.OfHeights && !fields && (erases || interaction.SelectedTile >= 0))
        ghost.Tile = [&interaction](int32_t column, int32_t row) {
            return TileToPaint(interaction, {column, row});
        };
    if (const auto squares = gesture.Squares()) {
        ghost.Squares = *squares;
        ghost.TellsSize = true;
        return ghost;
    }
    const bool paints = ghost.OfHeights || ghost.Tile || fields;
    if (gesture.Goes() || (interaction.Tool != MapTool::Brush && !erases) || !paints)
        return std::nullopt;
    ghost.Squares = BrushAt(ghost.OfHeights ? ElevationUnderCursor(view, x, y)
                                            : PostUnderCursor(view, x, y),
                            interaction.BrushSize);
    return ghost;
}

std::optional<PostBox> PostsOfGhost(const MapGhost& ghost, const MapView& view,
                                    int32_t mapWidth) {
    if (!ghost.Tile || ghost.OfHeights || view.IsOverview() || view.ScrollBusy)
        return std::nullopt;
    const PostBox posts = WithinView(view, ghost.Squares);
    const PostBox kept{std::max(posts.X1, 0), std::max(posts.Y1, 0),
                       std::min(posts.X2, mapWidth - 1),
                       std::min(posts.Y2, mapWidth - 1)};
    const int64_t across = int64_t{kept.X2} - kept.X1 + 1;
    const int64_t up = int64_t{kept.Y2} - kept.Y1 + 1;
    if (across <= 0 || up <= 0 || across * up > MostLentPosts)
        return std::nullopt;
    return kept;
}

LentTiles::LentTiles(Terrain& terrain, const PostBox& posts,
                     const std::function<int32_t(int32_t x, int32_t y)>& tile)
    : terrain_(terrain) {
    for (int32_t y = posts.Y1; y <= posts.Y2; ++y)
        for (int32_t x = posts.X1; x <= posts.X2; ++x) {
            const int32_t serial = XYToSerial(x + 1, y + 1, terrain.MapWidth);
            TerrainPost& post = terrain.LxArr(serial);
            own_.push_back({serial, int32_t{post.TileOffset}}); // of a packed record
            post.TileOffset = tile(x, y);
        }
}

LentTiles::~LentTiles() {
    for (const Own& own : own_)
        terrain_.LxArr(own.Serial).TileOffset = own.Tile;
}

} // namespace vardenix
