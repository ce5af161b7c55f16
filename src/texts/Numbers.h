#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// The nearest whole number, a half going to the even neighbour: 0.5 gives 0, 1.5 gives 2.
double RoundHalfEven(double value);

// The rounded value in a field of the width named; error 6 (Overflow) when it does not
// fit.
uint8_t ToByte(double value);
int16_t ToInt16(double value);
int32_t ToInt32(double value);

// The rounded value, or the nearest that fits the field where it does not; not a number
// is 0.
int16_t ClampToInt16(double value);
int32_t ClampToInt32(double value);

// The share of a bar: part * 100 / whole, rounded half to even; 0 for a whole of 0.
int Percent(int64_t part, int64_t whole);

// The number that the beginning of a text spells, 0 when it spells none: leading blanks,
// a sign, digits, one ".", and an exponent with e or d. Independent of the locale. A
// number beyond the range of a double is infinite.
double Val(std::string_view text);

// Format "0": decimal text without a fraction, rounded half to even.
std::string Format0(double value);

// Format "0.00" and the like, with that many decimals.
std::string FormatFixed(double value, int decimals);

// The shortest text that reads back to the same value: 10, 8.25, 1e+20.
std::string ShortestText(float value);
std::string ShortestText(double value);

} // namespace vardenix
