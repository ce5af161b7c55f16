#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vardenix {

// Pixels from the left and from the top.
struct PixelRect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Width = 0;
    int32_t Height = 0;
};

// A surface to paint on that somebody else owns: 0xAARRGGBB, rows from the top down,
// Stride pixels from one row to the next.
struct RasterView {
    uint32_t* Pixels = nullptr;
    int32_t Width = 0;
    int32_t Height = 0;
    ptrdiff_t Stride = 0;

    uint32_t* Row(int32_t y) const { return Pixels + y * Stride; }
};

constexpr uint32_t OpaqueBlack = 0xFF000000;

// A surface with pixels of its own; a side below 1 makes it empty.
class Raster {
public:
    Raster() = default;
    Raster(int32_t width, int32_t height, uint32_t fill = OpaqueBlack)
        : width_(width < 1 || height < 1 ? 0 : width), height_(width_ == 0 ? 0 : height),
          pixels_(static_cast<size_t>(width_) * static_cast<size_t>(height_), fill) {}

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    size_t Bytes() const { return pixels_.size() * sizeof(uint32_t); }

    const uint32_t* Row(int32_t y) const { return pixels_.data() + Offset(y); }
    uint32_t* Row(int32_t y) { return pixels_.data() + Offset(y); }

    RasterView View() { return {pixels_.data(), width_, height_, width_}; }

private:
    size_t Offset(int32_t y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(width_);
    }

    int32_t width_ = 0;
    int32_t height_ = 0;
    std::vector<uint32_t> pixels_;
};

} // namespace vardenix
