#include "services/Bitmap.h"

#include <FreeImage.h>

namespace vardenix {

void Bitmap::Unload::operator()(FIBITMAP* handle) const { FreeImage_Unload(handle); }

int32_t Bitmap::Width() const {
    return static_cast<int32_t>(FreeImage_GetWidth(handle_.get()));
}

int32_t Bitmap::Height() const {
    return static_cast<int32_t>(FreeImage_GetHeight(handle_.get()));
}

int32_t Bitmap::BitsPerPixel() const {
    return static_cast<int32_t>(FreeImage_GetBPP(handle_.get()));
}

// The library counts its rows from the bottom.
uint8_t* Bitmap::Row(int32_t y) {
    return FreeImage_GetScanLine(handle_.get(), Height() - 1 - y);
}

const uint8_t* Bitmap::Row(int32_t y) const {
    return FreeImage_GetScanLine(handle_.get(), Height() - 1 - y);
}

} // namespace vardenix
