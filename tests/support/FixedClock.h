#pragma once

#include "platform/Clock.h"

namespace vardenix::tests {

// Saturday, March 07, 2026, 09:05:02.
class FixedClock : public Clock {
public:
    LocalTime Now() const override { return {2026, 3, 7, 6, 9, 5, 2}; }
};

} // namespace vardenix::tests
