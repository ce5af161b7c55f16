#include "companion/Vardenix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

// The mean of four values of which `sum` is the sum. Shifting down rounds toward
// minus infinity, so the remainder is 0 to 3 for negative sums too.
int16_t MeanOfFour(int32_t sum) {
    const int32_t quotient = sum >> 2;
    const int32_t remainder = sum & 3;
    const bool up = remainder == 3 || (remainder == 2 && (quotient & 1) != 0);
    return static_cast<int16_t>(quotient + (up ? 1 : 0));
}

// The root of a quarter of `squares`, a whole number up to 2^32, without ever rounding
// twice: with q the whole root of `squares` the result lies in [q / 2, (q + 1) / 2), so
// an even q decides at once, and an odd q is a tie only when `squares` is q * q. Doubles
// hold all of it exactly, and unlike 64-bit integers the compiler takes several of them
// at a time.
int16_t RootOfQuarter(double squares) {
    const auto q = static_cast<int32_t>(std::sqrt(squares));
    const int32_t half = q >> 1;
    const bool tie = static_cast<double>(q) * static_cast<double>(q) == squares;
    const int32_t up = (q & 1) & (static_cast<int32_t>(!tie) | (half & 1));
    return static_cast<int16_t>(std::min(half + up, 32767));
}

template <typename Combine>
void HalveGrid(const int16_t* source, int32_t count, int32_t width, int16_t* target,
               Combine combine) {
    const auto columns = static_cast<std::ptrdiff_t>(width / 2);
    const std::ptrdiff_t rows = count / width / 2;
    for (std::ptrdiff_t y = 0; y < rows; ++y) {
        const int16_t* lower = source + 2 * y * width;
        const int16_t* upper = lower + width;
        int16_t* out = target + y * columns;
        for (std::ptrdiff_t x = 0; x < columns; ++x)
            out[x] =
                combine(lower[2 * x], lower[2 * x + 1], upper[2 * x], upper[2 * x + 1]);
    }
}

double Square(int32_t value) {
    return static_cast<double>(value) * static_cast<double>(value);
}

} // namespace

int32_t XYToSerial(int32_t X, int32_t Y, int32_t Width) {
    return static_cast<int32_t>((static_cast<int64_t>(Y) - 1) * Width + X);
}

int32_t SegToSerial(int32_t SegX, int32_t SegY, int32_t I, int32_t J, int32_t Width) {
    const int64_t x = (static_cast<int64_t>(SegX) - 1) * 16 + I;
    const int64_t y = (static_cast<int64_t>(SegY) - 1) * 16 + J;
    return static_cast<int32_t>((y - 1) * Width + x);
}

void BreakElv(const int16_t* Source, int32_t Count, int32_t Width, int32_t Method,
              int16_t* Target) {
    if (Width < 2)
        return;
    switch (Method) {
    case 1:
        HalveGrid(Source, Count, Width, Target,
                  [](int32_t a, int32_t b, int32_t c, int32_t d) {
                      return RootOfQuarter(Square(a) + Square(b) + Square(c) + Square(d));
                  });
        break;
    case 2:
        HalveGrid(Source, Count, Width, Target,
                  [](int32_t a, int32_t b, int32_t c, int32_t d) {
                      return MeanOfFour(a + b + c + d);
                  });
        break;
    case 3:
        HalveGrid(
            Source, Count, Width, Target, [](int32_t a, int32_t b, int32_t c, int32_t d) {
                return static_cast<int16_t>(std::max(std::max(a, b), std::max(c, d)));
            });
        break;
    default:
        break;
    }
}
