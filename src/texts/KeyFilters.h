#pragma once

namespace vardenix {

// The keys that boxes for numbers keep; all others are dropped, typed or pasted.

// Digits and backspace: boxes for whole numbers from 0.
constexpr bool KeepsDigitKey(char32_t key) {
    constexpr char32_t Backspace = 8;
    return key == Backspace || (key >= U'0' && key <= U'9');
}

// The point and the minus too: boxes for floats.
constexpr bool KeepsFloatKey(char32_t key) {
    return KeepsDigitKey(key) || key == U'.' || key == U'-';
}

} // namespace vardenix
