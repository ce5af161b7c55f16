#pragma once

#include "make_sample_theater/Picture.h"
#include "make_sample_theater/Scene.h"

namespace vardenix::sample {

// The bare ground of a tile at a place: no trees, fields, ways or houses. Where two
// grounds meet it draws their border, with surf and beach along the sea.
Colour GroundColour(const Scene& scene, Place place);

} // namespace vardenix::sample
