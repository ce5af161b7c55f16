#pragma once

#include "pictures/Raster.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vardenix {

// Something that is drawn once and laid on at many places.
class Stamp {
public:
    // Its corner comes to (left, top); what lies outside the picture is cut. What the
    // two colours, 0xAARRGGBB, are for is the stamp's own.
    virtual void LayOver(const RasterView& picture, int32_t left, int32_t top,
                         uint32_t color, uint32_t other) const = 0;

protected:
    Stamp() = default;
    Stamp(const Stamp&) = default;
    Stamp(Stamp&&) = default;
    Stamp& operator=(const Stamp&) = default;
    Stamp& operator=(Stamp&&) = default;
    ~Stamp() = default;
};

// Pixels from (Left, Top) to before (Right, Bottom).
struct PixelBox {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;
};

// One thing to do to the pixels of a picture.
struct DrawingStep {
    enum class Kind : uint8_t {
        Copy,       // a raster's pixels
        CopyOpaque, // those of them that are opaque
        Fill,       // the box
        Frame,      // the box's outermost X pixels
        Blend,      // Color over the box, with Alpha
        Lay,        // a stamp, which touches nothing beyond the box
    };

    Kind What = Kind::Fill;
    uint8_t Alpha = 255;
    uint32_t Color = 0; // 0xAARRGGBB, as is Other
    uint32_t Other = 0;
    PixelBox Box;  // nothing outside is touched; it may reach beyond the picture
    int32_t X = 0; // where a raster or a stamp begins
    int32_t Y = 0;
    const Raster* Pixels = nullptr; // both borrowed until the step is done
    const Stamp* Drawn = nullptr;
};

void DoStep(const RasterView& picture, const DrawingStep& step);

// Steps that are done together, by all processors: each has a band of the picture's rows
// to itself and does all steps there, in their order. Relies on a step's touching nothing
// outside its box and looking at no pixel but the one it changes.
class DrawingSteps {
public:
    // Beyond it, steps take more memory than the processor has at hand.
    static constexpr size_t Most = 16384;

    void Add(const DrawingStep& step) { steps_.push_back(step); }
    bool IsEmpty() const { return steps_.empty(); }
    bool IsFull() const { return steps_.size() >= Most; }
    void Drop() { steps_.clear(); }

    // Does all of them; none is left.
    void Do(const RasterView& picture);

private:
    std::vector<DrawingStep> steps_;
};

// Calls work(band, top) for bands of rows that make up the picture from row `first` to
// before `last`, on all processors; `top` is the band's first row. Bands share no pixel.
void InBands(const RasterView& picture, int32_t first, int32_t last,
             const std::function<void(const RasterView&, int32_t)>& work);

} // namespace vardenix
