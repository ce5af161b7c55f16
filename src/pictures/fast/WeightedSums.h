#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vardenix {

// The inner loops of SquareShrinker, by whatever the processor does at once.

constexpr size_t SamplesAtOnce = 16;
constexpr size_t RowsAtOnce = 4;

// Whole vectors that hold `count` weights.
constexpr size_t PaddedCount(size_t count) {
    return (count + SamplesAtOnce - 1) / SamplesAtOnce * SamplesAtOnce;
}

// For each row, the sum over row[left + i] * weights[i], i below `count`, a multiple of
// SamplesAtOnce. The caller sees to it that no sum of any part leaves 32 bits.
std::array<int32_t, RowsAtOnce>
WeightedSums(const std::array<const int16_t*, RowsAtOnce>& rows, size_t left,
             const int16_t* weights, size_t count);
// WeightedSums on a processor without wide vectors.
std::array<int32_t, RowsAtOnce>
NarrowWeightedSums(const std::array<const int16_t*, RowsAtOnce>& rows, size_t left,
                   const int16_t* weights, size_t count);

// to[i] = from[i * Step] - 128, for one colour of pixels of Step bytes.
template <size_t Step>
void TakeColour(const uint8_t* from, size_t count, int16_t* to) {
    for (size_t i = 0; i < count; ++i)
        to[i] = static_cast<int16_t>(from[i * Step] - 128);
}

} // namespace vardenix
