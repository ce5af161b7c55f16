#pragma once

#include "services/Raster.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace vardenix {

// Small circles with an outline of one pixel, each size drawn by the toolkit once and
// then laid on row by row: those of a theater's tiles come by the ten thousand.
class DrawnCircles {
public:
    // Sizes that are drawn here: 1 to 64 pixels, and round but for what rounding to
    // pixels does. The toolkit draws flatter ones in another way at every place.
    static bool Takes(int32_t width, int32_t height);

    // The outline lies on the edges of `box`, as the toolkit draws it, so that the circle
    // is one pixel wider and higher. Pixels are 0xAARRGGBB; without `filled` what lies
    // inside stays. Cut at the picture's edges.
    void Draw(const RasterView& picture, const PixelRect& box, bool filled,
              uint32_t outline, uint32_t inside);

private:
    // Pixels of one row, from the box's corner.
    struct Run {
        int32_t X, Y, Length;
    };
    struct Drawn {
        std::vector<Run> Inside; // none without a fill
        std::vector<Run> Outline;
    };

    const Drawn& Of(int32_t width, int32_t height, bool filled);
    // The fill of the smallest covers some of their outline, so each kind is drawn apart.
    static Drawn Make(int32_t width, int32_t height, bool filled);

    std::unordered_map<int32_t, Drawn> drawn_; // by size and fill
};

} // namespace vardenix
