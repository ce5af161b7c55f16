#include "world/HeightsGhost.h"

#include "mapview/Relief.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

namespace {

constexpr int32_t FullStrength = 100;

// 0x00BBGGRR, with so much of white or black over it.
uint32_t Tinted(uint32_t color, const ReliefTint& tint) {
    uint32_t mixed = 0;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const uint32_t below = color >> shift & 0xFF;
        const uint32_t above = tint.Color >> shift & 0xFF;
        mixed |= (below * (255U - tint.Alpha) + above * tint.Alpha) / 255 << shift;
    }
    return mixed;
}

// Of a map alone nobody knows where the sea is: it lies at 0 ft, or below.
uint32_t GroundColor(int16_t feet, const PreviewColors& colors) {
    return feet <= 0 ? colors.Sea : ElevationClassColor(feet, colors);
}

// The planned heights among those that stay.
class PlannedField {
public:
    PlannedField(const HeightsPlan& plan, const Terrain& terrain)
        : plan_(plan), before_(terrain, plan.Into) {}

    int32_t At(int32_t x, int32_t y) const {
        const auto planned = plan_.At(x, y);
        return planned ? int32_t{*planned} : before_.At(x, y);
    }
    double ShadeAt(int32_t x, int32_t y) const {
        return ShadeOf(At(x + 1, y) - At(x - 1, y), At(x, y + 1) - At(x, y - 1),
                       before_.Spacing());
    }

private:
    const HeightsPlan& plan_;
    HeightField before_;
};

} // namespace

void HeightsGhost::DrawMarks(DrawingSurface& surface, const MapView& view) {
    if (plan_ == nullptr || view.CellSize() <= 0)
        return;
    const bool finest = plan_->Into == Layer::Heights;
    const int32_t perPost = finest ? FinestPerPost : 1;
    const double side = view.CellSize() / perPost;
    const PostBox seen{view.MapLeftX * perPost, view.MapBottomY * perPost,
                       (view.MapLeftX + view.ViewColumns()) * perPost - 1,
                       (view.MapBottomY + view.ViewRows()) * perPost - 1};
    const PostBox& box = plan_->Box;
    // Below a pixel not every square is seen.
    const int32_t step = std::max(static_cast<int32_t>(1 / side), 1);
    const auto left = [&](int32_t x) { return PixelAt((x - seen.X1) * side); };
    const auto top = [&](int32_t y) {
        return PixelAt(view.PictureHeight() - (y + step - seen.Y1) * side);
    };
    const PreviewColors colors{settings_.PreviewSeaColor, settings_.PreviewLevelColors};
    const PlannedField field(*plan_, terrain_);
    for (int32_t y = std::max(seen.Y1, box.Y1); y <= std::min(seen.Y2, box.Y2); y += step)
        for (int32_t x = std::max(seen.X1, box.X1); x <= std::min(seen.X2, box.X2);
             x += step) {
            const auto feet = plan_->At(x, y);
            if (!feet)
                continue;
            const PixelRect cell{left(x), top(y), left(x + step) - left(x),
                                 top(y - step) - top(y)};
            surface.BlendColor(cell,
                               Tinted(GroundColor(*feet, colors),
                                      TintOf(field.ShadeAt(x, y), FullStrength)),
                               255);
        }
}

} // namespace vardenix
