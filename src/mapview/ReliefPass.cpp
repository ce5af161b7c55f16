#include "mapview/Relief.h"
#include "mapview/Repaint.h"

#include <algorithm>
#include <cstdlib>

namespace vardenix {
namespace {

// Below it quarters of a cell are not told apart.
constexpr int32_t LeastCellOfQuarters = 8;
constexpr uint32_t BareGround = 0xB4B4B4;
constexpr uint32_t ContourColor = 0x1E4678; // brown
constexpr int32_t ThickEvery = 5;           // of contour lines
constexpr int32_t LeastCellOfThickLines = 16;

// The grid of heights whose relief is shown: that which is edited, as far as it is there.
HeightField FieldOf(const Repaint& repaint) {
    const Terrain& terrain = repaint.Sources.Terrain;
    const bool finest = repaint.View.L0Mode &&
                        terrain.Elevations.EMapWidth == FinestPerPost * terrain.MapWidth;
    return {terrain, finest ? Layer::Heights : Layer::Posts};
}

// Calls draw(x, y, rect) with the places of the grid that a post's cell shows.
template <typename Draw>
void ForEachPlace(const Repaint& repaint, const HeightField& heights,
                  const PostCell& post, Draw draw) {
    const bool finest = heights.Width() != repaint.Sources.Terrain.MapWidth;
    const PixelRect& cell = post.Cell;
    if (!finest) {
        draw(post.X - 1, post.Y - 1, cell);
        return;
    }
    const int32_t left = (post.X - 1) * FinestPerPost;
    const int32_t bottom = (post.Y - 1) * FinestPerPost;
    if (cell.Width < LeastCellOfQuarters) {
        draw(left + FinestPerPost / 2, bottom + FinestPerPost / 2, cell);
        return;
    }
    for (int32_t b = 0; b < FinestPerPost; ++b)
        for (int32_t a = 0; a < FinestPerPost; ++a) {
            const int32_t x1 = cell.Width * a / FinestPerPost;
            const int32_t x2 = cell.Width * (a + 1) / FinestPerPost;
            const int32_t y1 = cell.Height * b / FinestPerPost; // from the top
            const int32_t y2 = cell.Height * (b + 1) / FinestPerPost;
            draw(left + a, bottom + FinestPerPost - 1 - b,
                 PixelRect{cell.Left + x1, cell.Top + y1, x2 - x1, y2 - y1});
        }
}

template <typename Draw>
void ForEachPlaceInView(Repaint& repaint, const HeightField& heights, Draw draw) {
    StepsTogether steps(repaint.Surface);
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i)
        if (const auto post = repaint.Grid.At(i))
            ForEachPlace(repaint, heights, *post, draw);
    steps.End();
}

// Pixel by pixel, so that every surface has the same line and needs no pen for it.
void DrawPiece(DrawingSurface& surface, const PixelRect& rect, const ContourPiece& piece,
               int32_t width) {
    const auto pixel = [&](const PicturePoint& point) {
        return PicturePoint{
            static_cast<double>(std::min(PixelAt(rect.Left + point.X * rect.Width),
                                         rect.Left + rect.Width - 1)),
            static_cast<double>(std::min(PixelAt(rect.Top + (1 - point.Y) * rect.Height),
                                         rect.Top + rect.Height - 1))};
    };
    const PicturePoint from = pixel(piece.From);
    const PicturePoint to = pixel(piece.To);
    const double across = to.X - from.X;
    const double down = to.Y - from.Y;
    const int32_t steps = PixelAt(std::max(std::abs(across), std::abs(down)));
    for (int32_t i = 0; i <= steps; ++i) {
        const double part = steps == 0 ? 0 : static_cast<double>(i) / steps;
        surface.BlendColor({PixelAt(from.X + across * part),
                            PixelAt(from.Y + down * part), width, width},
                           ContourColor, 255);
    }
}

} // namespace

void PaintBareGround(Repaint& repaint) {
    StepsTogether steps(repaint.Surface);
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i)
        if (const auto post = repaint.Grid.At(i))
            repaint.Surface.BlendColor(post->Cell, BareGround, 255);
    steps.End();
}

void PaintRelief(Repaint& repaint) {
    const HeightField heights = FieldOf(repaint);
    ForEachPlaceInView(
        repaint, heights, [&](int32_t x, int32_t y, const PixelRect& rect) {
            const double shade = ShadeAt(heights, x, y);
            if (shade == 0)
                return;
            const ReliefTint tint = TintOf(shade, repaint.View.ReliefStrength);
            if (tint.Alpha != 0)
                repaint.Surface.BlendColor(rect, tint.Color, tint.Alpha);
        });
}

void DrawContours(Repaint& repaint) {
    const HeightField heights = FieldOf(repaint);
    const int32_t step = std::max(repaint.View.ContourStep, 1);
    const bool thick = repaint.View.CellSize() >= LeastCellOfThickLines;
    ForEachPlaceInView(
        repaint, heights, [&](int32_t x, int32_t y, const PixelRect& rect) {
            for (const ContourPiece& piece : ContoursAt(heights, x, y, step))
                DrawPiece(repaint.Surface, rect, piece,
                          thick && piece.Feet % (ThickEvery * step) == 0 ? 2 : 1);
        });
}

} // namespace vardenix
