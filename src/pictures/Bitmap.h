#pragma once

#include "pictures/fast/SquareShrinking.h"

#include <cstdint>
#include <memory>
#include <optional>

struct FIBITMAP;

namespace vardenix {

// Pixels along the longest side of a picture that is made.
constexpr int32_t ImageLargestSide = 32767;

// A picture of the image library, owned; or none. Rows of 1, 4, 8, 16, 24 or 32 bits a
// pixel; those of 24 and 32 bits are blue, green, red (and alpha), so that a 32-bit pixel
// read as a number is 0xAARRGGBB. All questions answer 0 where there is no bitmap.
class Bitmap {
public:
    Bitmap() = default;
    // Takes over a handle of the library, which may be null.
    explicit Bitmap(FIBITMAP* handle) : handle_(handle) {}

    explicit operator bool() const { return handle_ != nullptr; }
    // Stays owned here.
    FIBITMAP* Handle() const { return handle_.get(); }

    int32_t Width() const;
    int32_t Height() const;
    int32_t BitsPerPixel() const;

    // Row 0 is the top one; `y` below the height, and there is a bitmap.
    uint8_t* Row(int32_t y);
    const uint8_t* Row(int32_t y) const;

private:
    struct Unload {
        void operator()(FIBITMAP* handle) const;
    };
    std::unique_ptr<FIBITMAP, Unload> handle_;
};

// The pixels of a square bitmap of 24 or 32 bits, for as long as it lives and has them;
// nothing for any other, which the library itself has to shrink.
std::optional<PixelSquare> SquareOf(const Bitmap& bitmap);

} // namespace vardenix
