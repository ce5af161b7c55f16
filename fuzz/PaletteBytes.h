#pragma once

#include "Require.h"
#include "mapeditor/PaletteFiles.h"
#include "texts/RuntimeError.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace vardenix::fuzz {

// A palette file of any length: too short, it is refused and nothing changes; else what
// is written again is what was read, from byte `begin` on.
template <size_t Length>
void ReadAndWriteAgain(const uint8_t* data, size_t size, size_t begin,
                       void (*take)(std::span<const std::byte>, std::string_view,
                                    MapPalette),
                       std::array<std::byte, Length> (*write)(ConstMapPalette)) {
    MapFileRecord record;
    for (int i = 0; i < PaletteSize; ++i)
        record.Palette[i] = {1, 2, 3, static_cast<uint8_t>(i)};
    const MapFileRecord before = record;
    // Named, since GCC 12 takes the array for a pointer when it looks for overflows.
    const MapPalette palette(std::begin(record.Palette), PaletteSize);
    try {
        take(std::as_bytes(std::span(data, size)), "palette", palette);
        Require(size >= Length);
        const auto bytes = write(palette);
        Require(std::memcmp(bytes.data() + begin, data + begin, Length - begin) == 0);
    } catch (const RuntimeError& error) {
        Require(size < Length && error.Number() == ErrorNumber::InputPastEnd);
        Require(std::memcmp(record.Palette, before.Palette, sizeof record.Palette) == 0);
    }
}

} // namespace vardenix::fuzz
