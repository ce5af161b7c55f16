#pragma once

#include "mapview/DrawingSurface.h"

#include <cstdint>
#include <memory>

namespace vardenix {

// A black square of `side` pixels that can draw everything, texts only if it is made for
// them. The toolkit takes longer to load than most maps to paint, so this surface lies in
// a library of its own beside the program, which is opened at the first call and stays.
// Error 53 when that library cannot be opened or is another version's, 7 when there is no
// memory.
std::unique_ptr<DrawingSurface> MakeToolkitSurface(int32_t side, bool texts);

} // namespace vardenix
