#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace vardenix {

// The public key that updates of this build must be signed with: Ed25519, the base64 line
// of its PEM form. Empty for a build that takes unsigned ones.
std::string_view UpdateKey();

// Whether `signature` (64 bytes) is that of `bytes` by the holder of the key. A key or
// signature of any other kind is not.
bool IsSignedBy(std::string_view key, std::span<const std::byte> bytes,
                std::span<const std::byte> signature);

} // namespace vardenix
