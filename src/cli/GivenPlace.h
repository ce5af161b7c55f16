#pragma once

#include "cli/Commands.h"
#include "world/TheaterPlace.h"

namespace vardenix {

// Where the opened theater lies: as its user told, else as theater.map lets guess. Error
// 5 where neither tells.
TheaterPlace PlaceOfTheater(const CommandContext& context);

} // namespace vardenix
