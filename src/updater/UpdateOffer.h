#pragma once

#include <cstdint>
#include <string>

namespace vardenix {

// What kind of update waits to be applied.
enum UpdateKind : int32_t {
    UpdateNone = 0,
    UpdateMajor = 1, // by an installer
    UpdateMinor = 2, // of single files
    UpdateRefused = 3
};

// Goes from the service's answer to the applying of the update.
struct UpdateOffer {
    int32_t UpdateType = UpdateNone;
    std::string UpdateVersion; // as the service spells it, UTF-8
};

} // namespace vardenix
