#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vardenix {

// The pixels of a small picture: 4 bytes each (red, green, blue, 255), rows from the top.
struct RgbaPicture {
    int32_t Side = 0;
    std::vector<uint8_t> Pixels;
};

// The largest side that the sums are proved for.
constexpr int32_t SquareLargestSide = 8192;

// The pixels of a square picture in somebody's memory: blue, green, red (and alpha).
struct PixelSquare {
    const uint8_t* Top = nullptr; // the first row
    std::ptrdiff_t Stride = 0;    // bytes from one row to the next one below it
    int32_t Side = 0;
    int32_t BytesPerPixel = 0; // 3 or 4
};

// The weights that one side shrinks to another with; see SquareShrinker.
struct ShrinkWeights {
    ShrinkWeights(int32_t from, int32_t to);

    // What one pixel of the target is made of.
    struct Window {
        size_t Left = 0;   // first pixel of the source
        size_t Count = 0;  // pixels of the source
        size_t First = 0;  // place of the first weight in Exact
        size_t Parts = 0;  // place of the first weight in Scaled
        int32_t Bias = 0;  // what the sum over Scaled lacks to the rounded value
        int32_t Doubt = 0; // how far that sum can be off
    };

    int32_t From;
    int32_t To;
    int Shift = 0; // Scaled is Exact times two to this
    std::vector<Window> Windows;
    std::vector<double> Exact;
    std::vector<int16_t> Scaled; // each window's padded with zeros to whole vectors

private:
    void Scale(Window& window);
};

// Shrinks square pictures to several smaller sides at once, with exactly the bytes that
// the image library gives for the bicubic filter and at a tenth of its cost. It is made
// for one side of the source and can be used by several threads at once.
//
// Far tiles want thousands of tiles at three sizes. The library adds up doubles, one
// sample after the other; here the sums are of 16-bit integers, several at a time, and
// where their proven error leaves the rounding open, about one sample in a hundred, the
// library's own sum is made, in its order.
class SquareShrinker {
public:
    // `to` holds sides from 1 to from - 1, `from` at most SquareLargestSide; error 5
    // otherwise.
    SquareShrinker(int32_t from, const std::vector<int32_t>& to);

    int32_t From() const { return from_; }

    // A picture for each side, in their order. The square has the side that this was made
    // for; error 5 otherwise.
    std::vector<RgbaPicture> Shrink(const PixelSquare& square) const;

private:
    int32_t from_;
    std::vector<ShrinkWeights> weights_;
};

} // namespace vardenix
