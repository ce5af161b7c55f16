#pragma once

#include <cstdint>
#include <optional>

class QWidget;

namespace vardenix {

struct HeightRange {
    int16_t Low = 0; // feet, both included
    int16_t High = 0;
};

// Asks for two elevations; nothing when cancelled. What was given last stands there.
std::optional<HeightRange> AskForHeights(QWidget* parent);

} // namespace vardenix
