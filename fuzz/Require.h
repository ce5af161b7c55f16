#pragma once

#include <cstdlib>

// A property that must hold for every input; what breaks it counts as a crash.
inline void Require(bool holds) {
    if (!holds)
        std::abort();
}
