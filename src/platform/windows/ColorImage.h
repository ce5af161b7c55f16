#pragma once

#include <QColor>
#include <QImage>

#include <cstdint>
#include <vector>

namespace vardenix {

// The program's colours are 0x00BBGGRR.
QColor ColorOf(uint32_t color);
uint32_t ValueOf(const QColor& color);

// A square picture, rows from the top. `pixels` has side x side elements; an empty
// picture for side 0.
QImage ImageOf(const std::vector<uint32_t>& pixels, int side);

} // namespace vardenix
