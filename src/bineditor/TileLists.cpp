#include "bineditor/TileLists.h"

#include "bineditor/TileDetail.h"
#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "texts/Cutting.h"

namespace vardenix {

namespace {

constexpr uint32_t Red = 0x0000FF;
constexpr uint32_t Black = 0;

std::string CleanName(const TileRecord& tile) {
    return std::string(TrimBlanks(tile.TileName));
}

// A name that fills its field had no room for its extension, so its last letters were
// taken for one: the picture that just came in is not found when the catalogue is next
// read.
std::string WhyNoPicture(const TileInfo& info) {
    const bool cut =
        info.Name.size() >= TileNameLength && !UpperCase(info.Name).ends_with(".PCX");
    const std::string because =
        cut ? "the name was cut to " + std::to_string(TileNameLength) + " letters" : "";
    if (info.HasImage != 0)
        return cut ? "No picture the next time: " + because : "";
    return "No picture: " + info.DayFile + " is not there" + (cut ? "; " + because : "");
}

} // namespace

std::array<std::string, 3> SetColumns(const TextureBin& bin, int32_t row) {
    const TileSet& set = SetAt(bin, row + 1);
    return {std::to_string(row), TerrainName(set.Terrain), std::to_string(set.TileCount)};
}

TileRowLook LookOf(const Catalogue& catalogue, int32_t row) {
    const TilePlace place = PlaceOfNumber(row);
    if (!HasTile(catalogue.Bin, place.Set, place.Slot))
        return TileRowLook::Empty;
    return InfoAt(catalogue, row).UseCount > 0 ? TileRowLook::Used : TileRowLook::Unused;
}

TileRow TileRowOf(const Catalogue& catalogue, int32_t row) {
    const TilePlace place = PlaceOfNumber(row);
    TileRow result;
    result.Look = LookOf(catalogue, row);
    result.Columns = {std::to_string(row), std::to_string(ShownSet(place.Set)), "----",
                      "-", "-"};
    if (result.Look != TileRowLook::Empty) {
        const TileRecord& tile = TileAt(catalogue.Bin, place.Set, place.Slot);
        result.Columns[2] = CleanName(tile);
        result.Columns[3] = std::to_string(tile.NumAreas);
        result.Columns[4] = std::to_string(tile.NumPaths);
    }
    return result;
}

int32_t UnusedTileCount(const Catalogue& catalogue) {
    int32_t unused = 0;
    for (int32_t row = 0; row < NumbersOf(catalogue.Bin); ++row)
        unused += LookOf(catalogue, row) == TileRowLook::Unused ? 1 : 0;
    return unused;
}

std::string CountersLine(const Catalogue& catalogue) {
    return std::to_string(catalogue.Bin.NumSets) + " Sets || " +
           std::to_string(catalogue.Bin.NumTiles) + " Tiles || " +
           std::to_string(UnusedTileCount(catalogue)) + " Tiles not used in L2";
}

SlotDetails DetailsOf(const Catalogue& catalogue, const TilePlace& place) {
    SlotDetails details;
    if (!HasSet(catalogue.Bin, place.Set) || place.Slot < 0)
        return details;
    const int32_t number = NumberOfPlace(place);
    details.UsedInL2 = InfoAt(catalogue, number).UseCount >= 1;
    if (!HasTile(catalogue.Bin, place.Set, place.Slot))
        return details;
    const TileRecord& tile = TileAt(catalogue.Bin, place.Set, place.Slot);
    details.TileName = CleanName(tile);
    details.AreasPaths = AreasPathsText(tile);
    details.TileNumber = "Tile Number: " + std::to_string(number);
    details.NoPicture = WhyNoPicture(InfoAt(catalogue, number));
    return details;
}

SlotTip TipOf(const Catalogue& catalogue, const TilePlace& place) {
    if (!HasSet(catalogue.Bin, place.Set))
        return {"Empty Tile", Red};
    const int32_t number = NumberOfPlace(place);
    const TileInfo& info = InfoAt(catalogue, number);
    if (info.HasImage == 0)
        return {"Empty Tile", Red};
    const std::string from =
        info.HasImage == 1 ? "Loaded from DDS" : "Loaded from Texture.zip (PCX)";
    const bool used = info.UseCount > 0;
    return {from + "\r\n" + info.Name + "\r\nTile Number: " + std::to_string(number) +
                "\r\n" +
                (used ? "Used " + std::to_string(info.UseCount) + " times in L2"
                      : "Not used in L2"),
            used ? Black : Red};
}

std::string MoveSourceText(int32_t source) {
    return "Selected Set to be Moved: " + std::to_string(ShownSet(source));
}

std::string MovePositionText(int32_t source, int32_t target, bool before) {
    const std::string position = source == target ? "NONE SELECTED"
                                                  : (before ? "Before " : "After ") +
                                                        std::string("Set# ") +
                                                        std::to_string(ShownSet(target));
    return "Click on a set in the list above to define the move position.\n"
           "Current move position: " +
           position;
}

} // namespace vardenix
