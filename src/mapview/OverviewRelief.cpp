// Relief and contour lines over an overview, where a post is a few pixels wide or less.

#include "mapview/OverviewPlaces.h"
#include "platform/ForEachInParallel.h"

#include <algorithm>

namespace vardenix {
namespace {

constexpr size_t RowsOfBand = 32;

class OverviewRelief {
public:
    OverviewRelief(const Repaint& repaint, const OverviewPlaces& places)
        : view_(repaint.View), places_(places), heights_(HeightsShown(repaint)),
          perPost_(heights_.Width() / std::max(repaint.Sources.Terrain.MapWidth, 1)) {}

    // Of the pixels of row `y`, which are the posts of `row`.
    void PaintRow(int32_t y, int32_t row, std::vector<ReliefTint>& tints, bool sameRow) {
        uint32_t* pixels = places_.Target.Row(y);
        if (view_.ShowRelief) {
            if (!sameRow)
                TakeTints(row, tints);
            LayOver(pixels, tints);
        }
        if (view_.ShowContours)
            DrawLines(pixels, row, places_.RowAt(y - 1));
    }

private:
    int32_t FeetAt(int32_t column, int32_t row) const {
        return heights_.At(MiddleOf(column), MiddleOf(row));
    }
    // Of a post, among the heights.
    int32_t MiddleOf(int32_t post) const { return post * perPost_ + perPost_ / 2; }

    void TakeTints(int32_t row, std::vector<ReliefTint>& tints) const {
        const auto& columns = places_.Columns;
        tints.resize(columns.size());
        for (size_t x = 0; x < columns.size(); ++x) {
            if (x > 0 && columns[x] == columns[x - 1])
                tints[x] = tints[x - 1];
            else if (columns[x] >= 0)
                tints[x] = TintOf(ShadeAt(heights_, MiddleOf(columns[x]), MiddleOf(row)),
                                  view_.ReliefStrength);
        }
    }

    void LayOver(uint32_t* pixels, const std::vector<ReliefTint>& tints) const {
        for (size_t x = 0; x < tints.size(); ++x) {
            if (places_.Columns[x] < 0)
                continue;
            const uint32_t below =
                view_.ReliefAlone ? OpaquePixel(BareGround) : pixels[x];
            pixels[x] = MixedPixel(below, OpaquePixel(tints[x].Color), tints[x].Alpha);
        }
    }

    // A pixel wide, where the level differs from that of the pixel to the right or above.
    void DrawLines(uint32_t* pixels, int32_t row, int32_t above) const {
        const auto& columns = places_.Columns;
        const int32_t step = std::max(view_.ContourStep, 1);
        const auto levelAt = [&](int32_t column, int32_t of) {
            return ContourLevel(FeetAt(column, of), step);
        };
        for (size_t x = 0; x < columns.size(); ++x) {
            const int32_t column = columns[x];
            if (column < 0)
                continue;
            const int32_t next = x + 1 < columns.size() ? columns[x + 1] : -1;
            const bool edge =
                (next >= 0 && next != column) || (above >= 0 && above != row);
            if (!edge)
                continue;
            const int32_t level = levelAt(column, row);
            if ((next >= 0 && next != column && levelAt(next, row) != level) ||
                (above >= 0 && above != row && levelAt(column, above) != level))
                pixels[x] = OpaquePixel(ContourColor);
        }
    }

    const MapView& view_;
    const OverviewPlaces& places_;
    HeightField heights_;
    int32_t perPost_; // heights along a side of a post
};

} // namespace

void PaintReliefOverview(Repaint& repaint) {
    const OverviewPlaces places(repaint);
    OverviewRelief relief(repaint, places);
    const auto height = static_cast<size_t>(std::max(places.Target.Height, 0));
    ForEachInParallel((height + RowsOfBand - 1) / RowsOfBand, [&](size_t band) {
        const size_t end = std::min(height, (band + 1) * RowsOfBand);
        std::vector<ReliefTint> tints;
        int32_t before = -1;
        for (size_t i = band * RowsOfBand; i < end; ++i) {
            const auto y = static_cast<int32_t>(i);
            const int32_t row = places.RowAt(y);
            if (row >= 0)
                relief.PaintRow(y, row, tints, row == before);
            before = row;
        }
    });
}

} // namespace vardenix
