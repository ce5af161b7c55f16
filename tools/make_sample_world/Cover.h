#pragma once

#include "make_sample_theater/Catalogue.h"
#include "make_sample_theater/Ground.h"

#include <cstdint>
#include <string>

namespace vardenix::sample {

// The class of a ground in the map of land cover.
int32_t ClassOf(Ground ground);

// A line for each class: the ground that a sample tile of it shows.
std::string CoverTable(const Catalogue& catalogue);

} // namespace vardenix::sample
