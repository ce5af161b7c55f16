#pragma once

#include "mapview/DrawingSteps.h"
#include "pictures/Raster.h"

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

    // The outline lies on the edges of a box of that size at the corner, as the toolkit
    // draws it, so that the circle is one pixel wider and higher. `color` is the
    // outline's, `other` the inside's; without `filled` what lies inside stays. Good for
    // as long as this object.
    const Stamp& Of(int32_t width, int32_t height, bool filled);

private:
    // Pixels of one row, from the box's corner.
    struct Run {
        int32_t X, Y, Length;
    };
    struct Drawn : Stamp {
        std::vector<Run> Inside; // none without a fill
        std::vector<Run> Outline;

        void LayOver(const RasterView& picture, int32_t left, int32_t top, uint32_t color,
                     uint32_t other) const override;
    };

    // The fill of the smallest covers some of their outline, so each kind is drawn apart.
    static Drawn Make(int32_t width, int32_t height, bool filled);

    std::unordered_map<int32_t, Drawn> drawn_; // by size and fill
};

} // namespace vardenix
