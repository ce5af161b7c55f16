#include "pictures/Bitmap.h"

#include "pictures/ImageLibrary.h"

namespace vardenix {

void Bitmap::Unload::operator()(FIBITMAP* handle) const { ImageLibrary().Unload(handle); }

int32_t Bitmap::Width() const {
    return static_cast<int32_t>(ImageLibrary().GetWidth(handle_.get()));
}

int32_t Bitmap::Height() const {
    return static_cast<int32_t>(ImageLibrary().GetHeight(handle_.get()));
}

int32_t Bitmap::BitsPerPixel() const {
    return static_cast<int32_t>(ImageLibrary().GetBPP(handle_.get()));
}

// The library counts its rows from the bottom.
uint8_t* Bitmap::Row(int32_t y) {
    return ImageLibrary().GetScanLine(handle_.get(), Height() - 1 - y);
}

const uint8_t* Bitmap::Row(int32_t y) const {
    return ImageLibrary().GetScanLine(handle_.get(), Height() - 1 - y);
}

std::optional<PixelSquare> SquareOf(const Bitmap& bitmap) {
    const int32_t bits = bitmap.BitsPerPixel();
    if (bitmap.Width() != bitmap.Height() || (bits != 24 && bits != 32))
        return std::nullopt;
    const std::ptrdiff_t stride = bitmap.Height() < 2 ? 0 : bitmap.Row(1) - bitmap.Row(0);
    return PixelSquare{bitmap.Row(0), stride, bitmap.Width(), bits / 8};
}

} // namespace vardenix
