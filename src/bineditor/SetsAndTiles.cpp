#include "bineditor/SetsAndTiles.h"

#include "catalogue/PictureFolder.h"
#include "catalogue/TextureBinFile.h"
#include "catalogue/TileNumbers.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

size_t Index(int32_t value) { return static_cast<size_t>(value); }

// Sets in an order that may not be theirs yet; element 0 stands for nothing.
using SetOrder = std::vector<const TileSet*>;

SetOrder OrderOf(const TextureBin& bin) {
    SetOrder order{nullptr};
    order.reserve(Index(bin.NumSets) + 2);
    for (int32_t set = 1; set <= bin.NumSets; ++set)
        order.push_back(&bin.Sets[Index(set)]);
    return order;
}

// A set of more than 16 tiles runs into the numbers of the next one, which writes over
// them; past the end of the table there is no number left.
TileLookup LookupOf(const SetOrder& order, const std::string& ddsFolder,
                    const BarShare& share, Progress& progress) {
    const size_t sets = order.size() - 1;
    TileLookup lookup(sets * TilesPerSet);
    const PictureFolder pictures(ddsFolder);
    for (size_t set = 1; set <= sets; ++set) {
        const TileSet& tileSet = *order[set];
        size_t number = (set - 1) * TilesPerSet;
        for (size_t i = 1; i < tileSet.Tiles.size() && number < lookup.size();
             ++i, ++number)
            lookup[number] = InfoOfTile(tileSet.Tiles[i], tileSet, pictures);
        progress.SetBar(share.From +
                        ToInt32((share.To - share.From) * static_cast<double>(set) /
                                static_cast<double>(sets)));
        progress.LetEventsThrough();
    }
    return lookup;
}

// The sets as they stand in `order`, out of `sets` and `added`; nothing here can fail
// once there is room.
void TakeOrder(TextureBin& bin, const SetOrder& order, std::vector<TileSet>& room,
               TileSet* added) noexcept {
    room.emplace_back();
    for (size_t i = 1; i < order.size(); ++i) {
        if (added != nullptr && order[i] == added)
            room.push_back(std::move(*added));
        else
            room.push_back(std::move(
                bin.Sets[Index(static_cast<int32_t>(order[i] - bin.Sets.data()))]));
    }
    bin.Sets.swap(room);
    bin.NumSets = static_cast<int32_t>(order.size()) - 1;
}

void RequireRoomForSet(const TextureBin& bin, const TileSet& newSet) {
    if (newSet.TileCount > TilesPerSet)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a new set of " + std::to_string(newSet.TileCount) +
                               " tiles; a set has room for 16");
    if (bin.NumSets >= MaxSets)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "the catalogue has " + std::to_string(bin.NumSets) +
                               " sets already, as many as can be opened");
}

// The lookup of the tiles behind `slot` moves down with them; what uses had been counted
// goes along. `last` comes into the last slot.
void MoveLookupDown(Catalogue& catalogue, int32_t set, int32_t slot, TileInfo last) {
    const auto first = catalogue.Lookup.begin() + FirstNumberOf(set);
    std::move(first + slot + 1, first + TilesPerSet, first + slot);
    *(first + TilesPerSet - 1) = std::move(last);
}

// Of the tile that comes into the last slot of a set when one before it goes: only a set
// of more than 16 tiles has one.
TileInfo InfoForLastSlot(const TileSet& set, const std::string& ddsFolder) {
    if (set.TileCount <= TilesPerSet)
        return {};
    return InfoOfTile(set.Tiles[TilesPerSet + 1], set, PictureFolder(ddsFolder));
}

} // namespace

void RebuildTileLookup(Catalogue& catalogue, const BarShare& share, Progress& progress) {
    catalogue.Lookup =
        LookupOf(OrderOf(catalogue.Bin), catalogue.DDSFolder, share, progress);
}

NewSetPlace PlaceOfNewSet(int32_t selectedSet, bool insertAfter) {
    const int32_t set = insertAfter || selectedSet < 1 ? selectedSet + 1 : selectedSet;
    return {set, FirstNumberOf(set)};
}

std::string TileNameField(const std::string& name) {
    std::string field = name.substr(0, TileNameLength);
    std::replace(field.begin(), field.end(), '\0', ' ');
    field.resize(TileNameLength, ' ');
    return field;
}

TileRenumbering InsertSet(Catalogue& catalogue, int32_t place, TileSet newSet,
                          Progress& progress) {
    TextureBin& bin = catalogue.Bin;
    if (place < 1 || place > bin.NumSets + 1)
        SetAt(bin, place);
    RequireRoomForSet(bin, newSet);
    TileRenumbering numbers =
        TileRenumbering::SetInserted(FirstNumberOf(place), NumbersOf(bin));
    progress.SetBar(25);
    SetOrder order = OrderOf(bin);
    order.insert(order.begin() + place, &newSet);
    std::vector<TileSet> room;
    room.reserve(order.size() + 1);
    progress.SetBar(50);
    TileLookup lookup = LookupOf(order, catalogue.DDSFolder, {50, 75}, progress);
    bin.NumTiles += newSet.TileCount;
    TakeOrder(bin, order, room, &newSet);
    catalogue.Lookup = std::move(lookup);
    return numbers;
}

TileRenumbering DeleteSet(Catalogue& catalogue, int32_t set) {
    TextureBin& bin = catalogue.Bin;
    const int32_t tiles = SetAt(bin, set).TileCount;
    TileRenumbering numbers =
        TileRenumbering::SetDeleted(FirstNumberOf(set), NumbersOf(bin));
    bin.Sets.erase(bin.Sets.begin() + set);
    bin.NumSets -= 1;
    bin.NumTiles -= tiles;
    const auto first = catalogue.Lookup.begin() + FirstNumberOf(set);
    catalogue.Lookup.erase(first, first + TilesPerSet);
    return numbers;
}

TileRenumbering DeleteTile(Catalogue& catalogue, int32_t set, int32_t slot) {
    TextureBin& bin = catalogue.Bin;
    TileAt(bin, set, slot);
    TileSet& tileSet = SetAt(bin, set);
    if (tileSet.TileCount < 2)
        throw RuntimeError(ErrorNumber::InvalidCall, "the only tile of set " +
                                                         std::to_string(ShownSet(set)) +
                                                         "; delete the set instead");
    TileRenumbering numbers = TileRenumbering::TileDeleted(FirstNumberOf(set) + slot);
    TileInfo last = InfoForLastSlot(tileSet, catalogue.DDSFolder);
    tileSet.Tiles.erase(tileSet.Tiles.begin() + slot + 1);
    tileSet.TileCount -= 1;
    bin.NumTiles -= 1;
    if (slot < TilesPerSet)
        MoveLookupDown(catalogue, set, slot, std::move(last));
    return numbers;
}

TileRenumbering MoveSet(Catalogue& catalogue, int32_t source, int32_t target, bool before,
                        Progress& progress) {
    TextureBin& bin = catalogue.Bin;
    SetAt(bin, source);
    SetAt(bin, target);
    SetOrder order{nullptr};
    order.reserve(Index(bin.NumSets) + 1);
    std::vector<int32_t> newPlaces(Index(bin.NumSets) + 1);
    const auto append = [&](int32_t set) {
        newPlaces[Index(set)] = static_cast<int32_t>(order.size());
        order.push_back(&bin.Sets[Index(set)]);
    };
    progress.SetBar(0);
    for (int32_t set = 1; set <= bin.NumSets; ++set) {
        if (set == target && target != source && before)
            append(source);
        if (set != source || target == source)
            append(set);
        if (set == target && target != source && !before)
            append(source);
        progress.SetBar(ToInt32(set * 33.0 / bin.NumSets));
    }
    TileRenumbering numbers = TileRenumbering::SetsMoved(newPlaces);
    std::vector<TileSet> room;
    room.reserve(order.size() + 1);
    TileLookup lookup = LookupOf(order, catalogue.DDSFolder, {33, 66}, progress);
    TakeOrder(bin, order, room, nullptr);
    catalogue.Lookup = std::move(lookup);
    return numbers;
}

void ChangeSetType(Catalogue& catalogue, int32_t set, uint8_t terrain) {
    TileSet& tileSet = SetAt(catalogue.Bin, set);
    tileSet.Terrain = terrain;
    const int32_t tiles = std::min(tileSet.TileCount, TilesPerSet);
    for (int32_t slot = 0; slot < tiles; ++slot)
        InfoAt(catalogue, FirstNumberOf(set) + slot).Terrain = terrain;
}

void CleanTileNames(TextureBin& bin) {
    for (TileSet& set : bin.Sets)
        for (TileRecord& tile : set.Tiles)
            std::replace(tile.TileName.begin(), tile.TileName.end(), '\0', ' ');
}

} // namespace vardenix
