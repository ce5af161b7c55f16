#pragma once

#include "catalogue/TextureBin.h"

#include <cstddef>
#include <cstdint>

namespace vardenix {

// Sets count from 1 and are shown from 0; slots count from 0.

constexpr int32_t FirstNumberOf(int32_t set) { return (set - 1) * TilesPerSet; }
constexpr int32_t SetOfNumber(int32_t number) { return number / TilesPerSet + 1; }
constexpr int32_t SlotOfNumber(int32_t number) { return number % TilesPerSet; }
constexpr int32_t ShownSet(int32_t set) { return set - 1; }

// A set from 1, 0 while there is none, and a slot of it from 0, -1 for none.
struct TilePlace {
    int32_t Set = 1;
    int32_t Slot = 0;
};

constexpr TilePlace PlaceOfNumber(int32_t number) {
    return {SetOfNumber(number), SlotOfNumber(number)};
}
constexpr int32_t NumberOfPlace(const TilePlace& place) {
    return FirstNumberOf(place.Set) + place.Slot;
}

// All numbers that the sets own, with a tile or without.
constexpr int32_t NumbersOf(const TextureBin& bin) { return bin.NumSets * TilesPerSet; }

constexpr bool HasSet(const TextureBin& bin, int32_t set) {
    return set >= 1 && set <= bin.NumSets;
}

// Error 9 for a set that the catalogue does not have.
TileSet& SetAt(TextureBin& bin, int32_t set);
const TileSet& SetAt(const TextureBin& bin, int32_t set);

// Whether a tile lies in the slot. A set may have more tiles than slots.
bool HasTile(const TextureBin& bin, int32_t set, int32_t slot);

// Error 9 for a slot without a tile.
TileRecord& TileAt(TextureBin& bin, int32_t set, int32_t slot);
const TileRecord& TileAt(const TextureBin& bin, int32_t set, int32_t slot);

// What is known of a number; error 9 outside the table.
TileInfo& InfoAt(Catalogue& catalogue, int32_t number);
const TileInfo& InfoAt(const Catalogue& catalogue, int32_t number);

} // namespace vardenix
