#pragma once

#include <cstdint>

namespace vardenix {

// Chance that is the same whenever it is asked for: a number for a post, counted from 0,
// and a seed. What is drawn at a post does not hang on the order in which posts are
// looked at, nor on what else is changed.
constexpr uint32_t HashOfPost(int32_t x, int32_t y, uint32_t seed) {
    uint32_t hash = static_cast<uint32_t>(x) * 0x9E3779B1U ^
                    static_cast<uint32_t>(y) * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    hash = (hash ^ hash >> 15) * 0x2C1B3C6DU;
    hash = (hash ^ hash >> 12) * 0x297A2D39U;
    return hash ^ hash >> 15;
}

// One of `count` (at least 1), all alike likely.
constexpr uint32_t DrawAtPost(int32_t x, int32_t y, uint32_t seed, uint32_t count) {
    return static_cast<uint32_t>(uint64_t{HashOfPost(x, y, seed)} * count >> 32);
}

} // namespace vardenix
