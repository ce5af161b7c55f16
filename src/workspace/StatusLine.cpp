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
    if (interaction.Tool == MapTool::Pick)
        return NameOf(interaction);
    const std::string what = EditsHeights(interaction, view) ? HeightWords(interaction)
                             : interaction.SelectedTile == -1
                                 ? "no tile chosen"
                                 : "tile " + TileWords(interaction.SelectedTile, lookup);
    const bool heightsStay = view.L0Mode && !EditsHeights(interaction, view);
    return NameOf(interaction) + ": " + what +
           (heightsStay ? ", on level 2 and not on the heights" : "");
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
