#include "workspace/MapInteraction.h"

#include "companion/Vardenix.h"
#include "levels/PostHash.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

namespace {

constexpr uint32_t TerrainTipColor = 15659248;
constexpr uint32_t ElevationTipColor = 12383484;
constexpr const char* OutsideTerrain = "Outside Terrain Area";

int32_t Rounded(double value) { return ClampToInt32(RoundHalfEven(value)); }

int32_t CellPixels(const MapView& view) { return std::max(Rounded(view.CellSize()), 1); }

// The square under a pixel where the picture is painted in cells of `side` pixels, a real
// number: halves of rounded edges do not occur.
PostPlace PaintedCell(const MapView& view, double x, double y, double side) {
    const double across = std::floor(x) + 0.5;
    const double up = view.PictureHeight() - std::floor(y) - 0.5;
    return {ClampToInt32(std::floor(across / side)), ClampToInt32(std::floor(up / side))};
}

// Columns from the left edge and rows from the bottom edge of a view whose picture is
// `height` pixels high by its rounded cells.
PostPlace Cells(double x, double y, int32_t height, int32_t side) {
    return {Rounded(x) / side, (height - Rounded(y)) / side};
}

ReadOut ElevationReadOut(const Terrain& terrain, PostPlace place) {
    ReadOut out{OutsideTerrain, ElevationTipColor, "L0/ELV File"};
    if (OnElevations(place, terrain))
        out.Text =
            "X:" + std::to_string(place.X) + "    " + "Y:" + std::to_string(place.Y) +
            "\r\nHeight: " + Format0(terrain.Elevations.At(place.X + 1, place.Y + 1)) +
            "ft";
    return out;
}

ReadOut PostReadOut(const Terrain& terrain, const TileLookup& lookup, PostPlace post) {
    ReadOut out{OutsideTerrain, TerrainTipColor, {}};
    if (!OnTerrain(post, terrain))
        return out;
    const TerrainPost& under =
        terrain.LxArr(XYToSerial(post.X + 1, post.Y + 1, terrain.MapWidth));
    const int32_t segY = (terrain.MapWidth - post.Y - 1) / SegmentSide;
    out.Text = "X:" + std::to_string(post.X) + "    " + "Y:" + std::to_string(post.Y) +
               "\r\nSegment:" + std::to_string(post.X / SegmentSide) + "," +
               std::to_string(segY) + "\r\nTile #:" + std::to_string(under.TileOffset) +
               "\r\n" + TileNameOf(under.TileOffset, lookup) +
               "\r\nPalette #:" + std::to_string(under.Palette);
    return out;
}

} // namespace

void ChooseTool(MapInteraction& interaction, MapTool tool) {
    if (tool != MapTool::Pick)
        interaction.ToolBeforePick = tool;
    interaction.Tool = tool;
}

namespace {

bool PaintsLevelTwo(const MapInteraction& interaction, const MapView& view) {
    return !view.L0Mode &&
           (interaction.Tool == MapTool::Brush ||
            interaction.Tool == MapTool::Rectangle || interaction.Tool == MapTool::Fill);
}

} // namespace

bool PaintsLand(const MapInteraction& interaction, const MapView& view) {
    const Painting paints = interaction.Hand.Paints;
    return PaintsLevelTwo(interaction, view) &&
           (paints == Painting::Ground ||
            (paints == Painting::Way && interaction.Tool == MapTool::Brush));
}

bool PaintsFields(const MapInteraction& interaction, const MapView& view) {
    const Painting paints = interaction.Hand.Paints;
    return PaintsLevelTwo(interaction, view) && paints != Painting::Tile &&
           paints != Painting::Ground && paints != Painting::Way;
}

int32_t TileToPaint(const MapInteraction& interaction, PostPlace post) {
    const HandState& hand = interaction.Hand;
    if (interaction.Tool == MapTool::Eraser)
        return hand.EraserTile;
    if (hand.MoreTiles.empty())
        return interaction.SelectedTile;
    const uint32_t drawn = DrawAtPost(post.X, post.Y, hand.Seed,
                                      static_cast<uint32_t>(hand.MoreTiles.size()) + 1);
    return drawn == 0 ? interaction.SelectedTile : hand.MoreTiles[drawn - 1];
}

PostPlace PostUnderCursor(const MapView& view, double x, double y) {
    const int32_t side = CellPixels(view);
    const PostPlace cell = view.FillsRoom() ? PaintedCell(view, x, y, view.CellSize())
                                            : Cells(x, y, view.ViewRows() * side, side);
    return {cell.X + view.MapLeftX, cell.Y + view.MapBottomY};
}

PostPlace ElevationUnderCursor(const MapView& view, double x, double y) {
    const int32_t side = CellPixels(view);
    const int32_t quarter = std::max(Rounded(side / 4.0), 1);
    const PostPlace cell = view.FillsRoom()
                               ? PaintedCell(view, x, y, view.CellSize() / 4)
                               : Cells(x, y, view.ViewRows() * side, quarter);
    return {cell.X + view.MapLeftX * 4, cell.Y + view.MapBottomY * 4};
}

bool OnTerrain(PostPlace post, const Terrain& terrain) {
    return post.X >= 0 && post.Y >= 0 && post.X < terrain.MapWidth &&
           post.Y < terrain.MapWidth;
}

bool OnElevations(PostPlace place, const Terrain& terrain) {
    const int32_t width = terrain.Elevations.EMapWidth;
    return place.X >= 0 && place.Y >= 0 && place.X < width && place.Y < width;
}

bool EditsHeights(const MapInteraction& interaction, const MapView& view) {
    return view.L0Mode && interaction.Heights != HeightTool::None;
}

MapPointer PointerFor(const MapInteraction& interaction, const MapView& view) {
    if (interaction.Waits())
        return MapPointer::Cross;
    if (interaction.Hand.Stamp)
        return MapPointer::Cross;
    switch (interaction.Tool) {
    case MapTool::Pick:
        return MapPointer::Pick;
    case MapTool::Select:
    case MapTool::Lasso:
        return MapPointer::Select;
    case MapTool::Eraser:
        return MapPointer::Eraser;
    default:
        break;
    }
    if (interaction.SelectedTile == -1 && !EditsHeights(interaction, view) &&
        !PaintsFields(interaction, view))
        return MapPointer::Default;
    return interaction.Tool == MapTool::Rectangle ? MapPointer::Rectangle
           : interaction.Tool == MapTool::Fill    ? MapPointer::Fill
                                                  : MapPointer::Brush;
}

std::optional<PostBox> BoxAtCursor(const MapInteraction& interaction, const MapView& view,
                                   PostPlace post) {
    if (interaction.WaitExportCorner2)
        return PostBox{view.ExportX1, view.ExportY1, post.X, post.Y};
    if (interaction.WaitImportCorner && interaction.ImportWidth > 0)
        return PostBox{post.X, post.Y, post.X + interaction.ImportWidth - 1,
                       post.Y + interaction.ImportHeight - 1};
    return std::nullopt;
}

int32_t KindOfTile(const TileLookup& lookup, int32_t tileNumber) {
    const auto index = static_cast<size_t>(static_cast<uint32_t>(tileNumber));
    return index < lookup.size() ? lookup[index].Terrain : -1;
}

std::string TileNameOf(int32_t tileNumber, const TileLookup& lookup) {
    if (tileNumber < 0 || static_cast<size_t>(tileNumber) >= lookup.size())
        return "Not Specified in BIN File";
    return lookup[static_cast<size_t>(tileNumber)].Name;
}

ReadOut ReadOutAt(const MapView& view, const Terrain& terrain, const TileLookup& lookup,
                  double x, double y) {
    return view.L0Mode ? ElevationReadOut(terrain, ElevationUnderCursor(view, x, y))
                       : PostReadOut(terrain, lookup, PostUnderCursor(view, x, y));
}

int32_t AfterWheel(int32_t value, int32_t backward, const MapView& view,
                   const ControlRange& range) {
    const int64_t wanted = int64_t{value} + int64_t{backward} * view.ZoomPosts;
    return static_cast<int32_t>(
        std::clamp<int64_t>(wanted, range.Min, std::max(range.Min, range.Max)));
}

std::optional<TilePlace> PlaceInBIN(int32_t tileNumber, int32_t numSets) {
    const TilePlace place = PlaceOfNumber(tileNumber);
    if (tileNumber < 0 || place.Set > numSets)
        return std::nullopt;
    return place;
}

} // namespace vardenix
