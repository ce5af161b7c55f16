#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>

namespace vardenix {

// The first half of a SHA-256. Two contents with the same one are the same, by chance and
// by intent: what was made of the one may stand for the other.
using Digest = std::array<uint8_t, 16>;

// Of all parts, one behind the other. Used by several threads at once. Error 7 when
// memory lacks.
Digest DigestOf(std::initializer_list<std::span<const std::byte>> parts);

// Two digits from 0 to f for each byte, for names of files.
std::string TextOf(const Digest& digest);

} // namespace vardenix
