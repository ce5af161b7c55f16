#include "workspace/StatusLine.h"

#include "companion/Vardenix.h"
#include "files/FileNames.h"
#include "texts/Numbers.h"

namespace vardenix {

namespace {

std::string Place(int32_t x, int32_t y) {
    return "X " + std::to_string(x) + "  Y " + std::to_string(y);
}

std::string TileWords(int32_t tile, const TileLookup& lookup) {
    const std::string name = TileNameOf(tile, lookup);
    return std::to_string(tile) + (name.empty() ? "" : " " + name);
}

std::string FeetWords(int16_t feet) { return Format0(feet) + " ft"; }

std::string HeightWords(const MapInteraction& interaction) {
    const std::string feet = FeetWords(interaction.Feet);
    switch (interaction.Heights) {
    case HeightTool::Set:
        return "set to " + feet;
    case HeightTool::Raise:
        return "raise by " + feet;
    case HeightTool::Lower:
        return "lower by " + feet;
    default:
        return "smooth";
    }
}

// What the tools do to elevations of posts, or which number another field gets.
std::string FieldWords(const MapInteraction& interaction) {
    const HandState& hand = interaction.Hand;
    const std::string value = std::to_string(hand.Value);
    switch (hand.Paints) {
    case Painting::Palette:
        return "palette " + value;
    case Painting::X1:
        return "X1 " + value;
    case Painting::X2:
        return "X2 " + value;
    default:
        break;
    }
    const std::string feet = FeetWords(interaction.Feet);
    if (hand.Sloping)
        return "slope between two posts";
    switch (hand.Shape) {
    case PostShape::Set:
        return "elevation " + feet;
    case PostShape::Raise:
        return "raise by " + feet;
    case PostShape::Lower:
        return "lower by " + feet;
    case PostShape::Smooth:
        return "smooth";
    case PostShape::Flatten:
        return "flatten to the first post";
    }
    return {};
}

std::string TilesWords(const MapInteraction& interaction, const TileLookup& lookup) {
    if (interaction.Tool == MapTool::Eraser)
        return "tile " + TileWords(interaction.Hand.EraserTile, lookup);
    if (interaction.SelectedTile == -1)
        return "no tile chosen";
    const size_t more = interaction.Hand.MoreTiles.size();
    const std::string tile = TileWords(interaction.SelectedTile, lookup);
    if (interaction.Hand.Paints == Painting::Ground)
        return "ground of tile " + tile;
    if (interaction.Hand.Paints == Painting::Way && interaction.Tool == MapTool::Brush)
        return "way of tile " + tile;
    return "tile " + tile +
           (more == 0 ? "" : " and " + std::to_string(more) + " more at random");
}

std::string WaitingWords(const MapInteraction& interaction) {
    if (interaction.WaitImportCorner)
        return "Import of " + std::to_string(interaction.ImportWidth) + " X " +
               std::to_string(interaction.ImportHeight) +
               " posts: click its lower left corner";
    const std::string what = interaction.ExportFeatures ? "Export of features" : "Export";
    return what + (interaction.WaitExportCorner1 ? ": click a corner"
                                                 : ": click the opposite corner");
}

std::string NameOf(const MapInteraction& interaction) {
    switch (interaction.Tool) {
    case MapTool::Rectangle:
        return "Rectangle";
    case MapTool::Fill:
        return "Fill";
    case MapTool::Pick:
        return "Pick";
    case MapTool::Select:
        return "Select";
    case MapTool::Lasso:
        return "Lasso";
    case MapTool::Eraser:
        return "Eraser " + std::to_string(interaction.BrushSize);
    default:
        return "Brush " + std::to_string(interaction.BrushSize);
    }
}

} // namespace

std::string PostWords(const MapView& view, const Terrain& terrain,
                      const TileLookup& lookup, double x, double y) {
    if (view.L0Mode) {
        const PostPlace place = ElevationUnderCursor(view, x, y);
        if (!OnElevations(place, terrain))
            return {};
        return Place(place.X, place.Y) + "   " +
               FeetWords(terrain.Elevations.At(place.X + 1, place.Y + 1));
    }
    const PostPlace at = PostUnderCursor(view, x, y);
    if (!OnTerrain(at, terrain))
        return {};
    const TerrainPost& post =
        terrain.LxArr(XYToSerial(at.X + 1, at.Y + 1, terrain.MapWidth));
    return Place(at.X, at.Y) + "   " + FeetWords(post.Elevation) + "   Tile " +
           TileWords(post.TileOffset, lookup) + "   Palette " +
           std::to_string(post.Palette);
}

std::string ToolWords(const MapInteraction& interaction, const MapView& view,
                      const TileLookup& lookup) {
    if (interaction.Waits())
        return WaitingWords(interaction) + " (Esc ends it)";
    const HandState& hand = interaction.Hand;
    std::string name = NameOf(interaction);
    if (hand.Stamp)
        return "Paste " + std::to_string(hand.Stamp->Clip.Width) + " x " +
               std::to_string(hand.Stamp->Clip.Height) + " posts: Esc ends it";
    if (interaction.Tool == MapTool::Pick)
        return name;
    if (interaction.Tool == MapTool::Select || interaction.Tool == MapTool::Lasso)
        return name + ": " +
               (hand.Selected.Empty()
                    ? "nothing selected"
                    : std::to_string(hand.Selected.Count()) + " selected");
    const std::string what = EditsHeights(interaction, view) ? HeightWords(interaction)
                             : PaintsFields(interaction, view)
                                 ? FieldWords(interaction)
                                 : TilesWords(interaction, lookup);
    const bool heightsStay = view.L0Mode && !EditsHeights(interaction, view);
    return name + ": " + what +
           (heightsStay ? ", on level 2 and not on the heights" : "") +
           (hand.Selected.Empty() ? "" : ", within the selection");
}

std::string SavedWords(const std::string& path, const LocalTime& now) {
    return AfterLastSlash(path) + " saved at " + HoursMinutes(now);
}

std::string ExportedWords(const std::string& path) {
    const bool folder = path.ends_with('/') || path.ends_with('\\');
    return AfterLastSlash(folder ? path.substr(0, path.size() - 1) : path) + " written";
}

std::string HitWords(size_t hits) {
    return std::to_string(hits) + (hits == 1 ? " hit" : " hits");
}

} // namespace vardenix
