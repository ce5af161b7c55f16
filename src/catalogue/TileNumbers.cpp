#include "catalogue/TileNumbers.h"

#include "texts/RuntimeError.h"

#include <string>

namespace vardenix {

namespace {

void Require(bool there, const std::string& what) {
    if (!there)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "the catalogue has no " + what);
}

void RequireTile(const TextureBin& bin, int32_t set, int32_t slot) {
    Require(HasTile(bin, set, slot), "tile in slot " + std::to_string(slot) + " of set " +
                                         std::to_string(ShownSet(set)));
}

void RequireNumber(const Catalogue& catalogue, int32_t number) {
    Require(number >= 0 && static_cast<size_t>(number) < catalogue.Lookup.size(),
            "tile number " + std::to_string(number));
}

} // namespace

const TileSet& SetAt(const TextureBin& bin, int32_t set) {
    Require(HasSet(bin, set), "set " + std::to_string(ShownSet(set)));
    return bin.Sets[static_cast<size_t>(set)];
}

TileSet& SetAt(TextureBin& bin, int32_t set) {
    Require(HasSet(bin, set), "set " + std::to_string(ShownSet(set)));
    return bin.Sets[static_cast<size_t>(set)];
}

bool HasTile(const TextureBin& bin, int32_t set, int32_t slot) {
    return HasSet(bin, set) && slot >= 0 &&
           slot < bin.Sets[static_cast<size_t>(set)].TileCount;
}

const TileRecord& TileAt(const TextureBin& bin, int32_t set, int32_t slot) {
    RequireTile(bin, set, slot);
    return bin.Sets[static_cast<size_t>(set)].Tiles[static_cast<size_t>(slot) + 1];
}

TileRecord& TileAt(TextureBin& bin, int32_t set, int32_t slot) {
    RequireTile(bin, set, slot);
    return bin.Sets[static_cast<size_t>(set)].Tiles[static_cast<size_t>(slot) + 1];
}

const TileInfo& InfoAt(const Catalogue& catalogue, int32_t number) {
    RequireNumber(catalogue, number);
    return catalogue.Lookup[static_cast<size_t>(number)];
}

TileInfo& InfoAt(Catalogue& catalogue, int32_t number) {
    RequireNumber(catalogue, number);
    return catalogue.Lookup[static_cast<size_t>(number)];
}

} // namespace vardenix
