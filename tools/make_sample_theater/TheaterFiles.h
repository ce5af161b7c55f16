#pragma once

#include "make_sample_theater/Catalogue.h"
#include "make_sample_theater/Palette.h"

#include <filesystem>

namespace vardenix::sample {

// Texture.bin: the sets with their tiles, areas and paths.
void WriteCatalogue(const Catalogue& catalogue, const std::filesystem::path& path);

// theater.map, 1112 bytes.
void WriteMapFile(int posts, const Palette& palette, const std::filesystem::path& path);

// theater.lst in the install folder and the theater's description beside its data.
void WriteTheaterList(const std::filesystem::path& install);

} // namespace vardenix::sample
