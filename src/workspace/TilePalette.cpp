#include "workspace/TilePalette.h"

#include "catalogue/TypeNames.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"

#include <algorithm>

namespace vardenix {

int PaletteIndex(int32_t classCode) {
    for (int index = 0; index < static_cast<int>(PaletteClasses.size()); ++index)
        if (TerrainFromIndex(index) == classCode)
            return index;
    return -1;
}

std::vector<int32_t> TilesOfClass(const TileLookup& lookup, int32_t classCode) {
    std::vector<int32_t> tiles;
    for (size_t tile = 0; tile < lookup.size(); ++tile)
        if (!lookup[tile].Name.empty() && lookup[tile].Terrain == classCode)
            tiles.push_back(static_cast<int32_t>(tile));
    return tiles;
}

std::vector<int32_t> TilesNamed(const TileLookup& lookup,
                                const std::vector<int32_t>& tiles,
                                std::string_view part) {
    const std::string wanted = UpperCase(TrimBlanks(part));
    std::vector<int32_t> named;
    for (const int32_t tile : tiles)
        if (std::to_string(tile) == wanted ||
            UpperCase(lookup.at(static_cast<size_t>(tile)).Name).find(wanted) !=
                std::string::npos)
            named.push_back(tile);
    return named;
}

std::vector<int32_t> TilesToShow(const TileLookup& lookup, int32_t classCode,
                                 std::string_view part) {
    std::vector<int32_t> tiles =
        TilesNamed(lookup, TilesOfClass(lookup, classCode), part);
    if (!tiles.empty() || TrimBlanks(part).empty())
        return tiles;
    std::vector<int32_t> all;
    for (size_t tile = 0; tile < lookup.size(); ++tile)
        if (!lookup[tile].Name.empty())
            all.push_back(static_cast<int32_t>(tile));
    return TilesNamed(lookup, all, part);
}

bool HasTile(const TileLookup& lookup, int32_t tile) {
    return tile >= 0 && static_cast<size_t>(tile) < lookup.size() &&
           !lookup[static_cast<size_t>(tile)].Name.empty();
}

PaletteLayout LayOutPalette(size_t buttons, int32_t frameWidth) {
    PaletteLayout layout;
    layout.Columns = std::max(1, frameWidth / PaletteButtonSide);
    layout.Buttons.reserve(buttons);
    PalettePlace place;
    for (size_t i = 0; i < buttons; ++i) {
        layout.Buttons.push_back(place);
        if (place.Left + PaletteButtonSide + PaletteButtonSide > frameWidth) {
            place.Left = 0;
            place.Top += PaletteButtonSide;
            layout.Frame1Height += PaletteButtonSide;
        } else {
            place.Left += PaletteButtonSide;
        }
    }
    return layout;
}

int32_t PaletteScrollMax(int32_t frame1Height) {
    return ToInt32(frame1Height / double{PaletteButtonSide} - 1);
}

int32_t PaletteScrollEnd(const PaletteLayout& layout, int32_t wholeRows) {
    if (layout.Buttons.empty())
        return 0;
    const int32_t rows = layout.Buttons.back().Top / PaletteButtonSide + 1;
    return std::clamp(rows - wholeRows, 0, PaletteScrollMax(layout.Frame1Height));
}

int32_t Frame1Top(int32_t scrollValue) {
    return PaletteFirstTop - scrollValue * PaletteButtonSide;
}

int32_t ScrollToRow(int32_t row, int32_t scrollValue, int32_t wholeRows) {
    return std::clamp(scrollValue, row - std::max(1, wholeRows) + 1, row);
}

int32_t MoveInPalette(int32_t index, PaletteMove move, int32_t buttons, int32_t columns,
                      int32_t wholeRows) {
    const int32_t last = buttons - 1;
    const auto byRows = [&](int32_t rows) {
        int32_t to = index + rows * columns;
        const int32_t column = index % columns;
        if (to < 0)
            to = column;
        if (to <= last)
            return to;
        return last / columns > index / columns ? last : index;
    };
    switch (move) {
    case PaletteMove::Left:
        return std::max(0, index - 1);
    case PaletteMove::Right:
        return std::min(last, index + 1);
    case PaletteMove::Up:
        return byRows(-1);
    case PaletteMove::Down:
        return byRows(1);
    case PaletteMove::PageUp:
        return byRows(-std::max(1, wholeRows));
    case PaletteMove::PageDown:
        return byRows(std::max(1, wholeRows));
    case PaletteMove::First:
        return 0;
    case PaletteMove::Last:
        return last;
    }
    return index;
}

int32_t ChooseTile(int32_t selectedTile, int32_t clickedTile) {
    return selectedTile == clickedTile ? -1 : clickedTile;
}

ChosenTiles ChooseAlso(ChosenTiles chosen, int32_t clickedTile) {
    if (chosen.First == -1) {
        chosen.First = clickedTile;
    } else if (chosen.First == clickedTile) {
        chosen.First = -1;
        if (!chosen.More.empty()) {
            chosen.First = chosen.More.front();
            chosen.More.erase(chosen.More.begin());
        }
    } else if (std::erase(chosen.More, clickedTile) == 0) {
        chosen.More.push_back(clickedTile);
    }
    return chosen;
}

ChosenTiles ChooseUpTo(const ChosenTiles& chosen, int32_t clickedTile,
                       const std::vector<int32_t>& shown) {
    const auto from = std::find(shown.begin(), shown.end(), chosen.First);
    const auto to = std::find(shown.begin(), shown.end(), clickedTile);
    if (from == shown.end() || to == shown.end())
        return ChooseAlso(chosen, clickedTile);
    ChosenTiles all{chosen.First, {std::min(from, to), std::max(from, to) + 1}};
    std::erase(all.More, chosen.First);
    return all;
}

std::string TileCaption(const TileLookup& lookup, int32_t tile) {
    std::string number = "Tile #:" + std::to_string(tile);
    const auto index = static_cast<size_t>(tile);
    if (tile < 0 || index >= lookup.size() || lookup[index].Name.empty())
        return number;
    return lookup[index].Name + " | " + number;
}

std::string PaletteStatus(const TileLookup& lookup, int32_t selectedTile) {
    if (selectedTile < 0)
        return "No tile chosen";
    return "Chosen: " + TileCaption(lookup, selectedTile);
}

std::string TileCount(size_t tiles) {
    return std::to_string(tiles) + (tiles == 1 ? " tile" : " tiles");
}

} // namespace vardenix
