#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace vardenix::sample {

// Draws an invented piece of the earth as maps of the usual kinds, round the place that
// the sample theater is to have: elevations.tif in metres and landcover.tif of classes,
// both in another reference system than the theater's; coast.geojson, towns.geojson and
// ways.geojson; theater.place, which says where the theater lies; and landcover.table,
// which gives each class a ground of the sample theater. `out` is made if it is not
// there. `say` gets one line a step. RuntimeError for what the disk or the helper program
// refuses.
void MakeSampleWorld(const std::filesystem::path& out, uint32_t seed,
                     const std::function<void(const std::string&)>& say);

} // namespace vardenix::sample
