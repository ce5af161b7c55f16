#pragma once

#include "make_sample_theater/World.h"

#include <filesystem>

namespace vardenix::sample {

// Writes Airports, Cities, Coasts, Labels, Rivers and Roads .tdf into a folder. Their
// coordinates are posts counted from 0, a whole number being the middle of a post.
void WriteFeatures(const World& world, const std::filesystem::path& folder);

} // namespace vardenix::sample
