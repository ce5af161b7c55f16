#include "mapview/Relief.h"
#include "mapview/Repaint.h"
#include "pictures/Blending.h"
#include "platform/ForEachInParallel.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace vardenix {
namespace {

// Below it quarters of a cell are not told apart.
constexpr int32_t LeastCellOfQuarters = 8;
constexpr int32_t ThickEvery = 5; // of contour lines
constexpr int32_t LeastCellOfThickLines = 16;

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

// What is laid over a row of pixels.
struct ReliefTints {
    explicit ReliefTints(int32_t width)
        : Colors(static_cast<size_t>(std::max(width, 0))), Weights(Colors.size()) {}

    void Fill(size_t from, size_t to, const ReliefTint& tint) {
        std::fill(Colors.begin() + static_cast<ptrdiff_t>(from),
                  Colors.begin() + static_cast<ptrdiff_t>(to), OpaquePixel(tint.Color));
        std::fill(Weights.begin() + static_cast<ptrdiff_t>(from),
                  Weights.begin() + static_cast<ptrdiff_t>(to), tint.Alpha);
    }
    // From the first pixel of `row` on, those from `from` to before `to`.
    void LayOver(uint32_t* row, size_t from, size_t to) const {
        size_t x = from;
        for (; x + PixelsAtOnce <= to; x += PixelsAtOnce) {
            FourPixels colors;
            std::memcpy(&colors, &Colors[x], sizeof colors);
            BlendFour(row + x, colors, WeightsOf(&Weights[x]));
        }
        for (; x < to; ++x)
            row[x] = BlendPixel(row[x], Colors[x], Weights[x]);
    }

    std::vector<uint32_t> Colors;
    std::vector<uint8_t> Weights;
};

// The relief over the rows of posts in view, each of which has its rows of pixels to
// itself. A row of posts is of one part, or of four where quarters are told apart.
class ReliefRows {
public:
    ReliefRows(const Repaint& repaint, const RasterView& target)
        : repaint_(repaint), target_(target), heights_(HeightsShown(repaint)),
          finest_(heights_.Width() != repaint.Sources.Terrain.MapWidth),
          parts_(finest_ && repaint.Grid.CellSide() >= LeastCellOfQuarters ? FinestPerPost
                                                                           : 1) {}

    int32_t Parts() const { return parts_; }

    // Counted from 0 at the upper edge of the row.
    void Paint(int32_t row, int32_t part, ReliefTints& tints) const {
        size_t from = static_cast<size_t>(std::max(target_.Width, 0));
        size_t to = 0;
        PixelRect lines; // of the part, by its upper edge and its height
        for (int32_t column = 0; column < repaint_.Grid.Columns(); ++column) {
            const auto post =
                repaint_.Grid.At(row * repaint_.Grid.Columns() + column + 1);
            if (!post)
                continue;
            lines = post->Cell;
            for (int32_t a = 0; a < parts_; ++a) {
                const int32_t left =
                    post->Cell.Left - repaint_.Left + post->Cell.Width * a / parts_;
                const int32_t right =
                    post->Cell.Left - repaint_.Left + post->Cell.Width * (a + 1) / parts_;
                const size_t x1 = InTarget(left, target_.Width);
                const size_t x2 = InTarget(right, target_.Width);
                if (x1 >= x2)
                    continue;
                tints.Fill(x1, x2, TintAt(*post, a, part));
                from = std::min(from, x1);
                to = std::max(to, x2);
            }
        }
        const int32_t top = lines.Top - repaint_.Top;
        const size_t y2 =
            InTarget(top + lines.Height * (part + 1) / parts_, target_.Height);
        for (size_t y = InTarget(top + lines.Height * part / parts_, target_.Height);
             y < y2; ++y)
            tints.LayOver(target_.Row(static_cast<int32_t>(y)), from, std::max(from, to));
    }

private:
    static size_t InTarget(int32_t pixel, int32_t side) {
        return static_cast<size_t>(std::clamp(pixel, 0, std::max(side, 0)));
    }

    ReliefTint TintAt(const PostCell& post, int32_t across, int32_t down) const {
        int32_t x = post.X - 1;
        int32_t y = post.Y - 1;
        if (finest_) {
            const bool whole = parts_ == 1;
            x = x * FinestPerPost + (whole ? FinestPerPost / 2 : across);
            y = y * FinestPerPost +
                (whole ? FinestPerPost / 2 : FinestPerPost - 1 - down);
        }
        return TintOf(ShadeAt(heights_, x, y), repaint_.View.ReliefStrength);
    }

    const Repaint& repaint_;
    const RasterView& target_;
    HeightField heights_;
    bool finest_;
    int32_t parts_;
};

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

HeightField HeightsShown(const Repaint& repaint) {
    const Terrain& terrain = repaint.Sources.Terrain;
    const bool finest = repaint.View.L0Mode &&
                        terrain.Elevations.EMapWidth == FinestPerPost * terrain.MapWidth;
    return {terrain, finest ? Layer::Heights : Layer::Posts};
}

void PaintBareGround(Repaint& repaint) {
    StepsTogether steps(repaint.Surface);
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i)
        if (const auto post = repaint.Grid.At(i))
            repaint.Surface.BlendColor(post->Cell, BareGround, 255);
    steps.End();
}

void PaintRelief(Repaint& repaint) {
    const RasterView target = repaint.Surface.Pixels();
    const ReliefRows rows(repaint, target);
    ForEachInParallel(static_cast<size_t>(repaint.Grid.Rows()), [&](size_t row) {
        ReliefTints tints(target.Width);
        for (int32_t part = 0; part < rows.Parts(); ++part)
            rows.Paint(static_cast<int32_t>(row), part, tints);
    });
}

void DrawContours(Repaint& repaint) {
    const HeightField heights = HeightsShown(repaint);
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
