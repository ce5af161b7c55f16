#include "mapview/HeightColors.h"
#include "mapview/Repaint.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {
namespace {

// Finest elevations along a side of a post.
constexpr int32_t ElevationsPerPost = 4;

// Pixels, with fractions.
struct Box {
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
};

// Prints elevations, each distinct one measured and coloured once.
class HeightPrinter {
public:
    HeightPrinter(DrawingSurface& surface, const Configuration& settings)
        : surface_(surface), settings_(settings) {
        surface.SetFont(settings.HeightsFont);
    }

    // Centred in a box. Digits that would run into those of the next one are left out.
    void Print(int16_t elevation, const Box& box) {
        const Printed& printed = Of(elevation);
        if (printed.Size.Width > box.Width) {
            ++leftOut_;
            return;
        }
        surface_.DrawRimmedText({box.Left + (box.Width - printed.Size.Width) / 2,
                                 box.Top + (box.Height - printed.Size.Height) / 2},
                                printed.Text, printed.Color, RimOf(printed.Color));
    }
    int32_t LeftOut() const { return leftOut_; }

private:
    struct Printed {
        std::string Text;
        TextSize Size;
        uint32_t Color = 0;
    };

    const Printed& Of(int16_t elevation) {
        uint32_t& place = places_[static_cast<uint16_t>(elevation)];
        if (place == 0) {
            const std::string text = std::to_string(elevation);
            printed_.push_back(
                {text, surface_.MeasureText(text), GetHeightColor(settings_, elevation)});
            place = static_cast<uint32_t>(printed_.size());
        }
        return printed_[place - 1];
    }

    DrawingSurface& surface_;
    const Configuration& settings_;
    int32_t leftOut_ = 0;
    std::vector<Printed> printed_;
    // Of each of the 65,536 elevations, its place in the above from 1; 0 without one.
    std::vector<uint32_t> places_ = std::vector<uint32_t>(65536);
};

Box BoxOf(const PixelRect& cell) {
    return {static_cast<double>(cell.Left), static_cast<double>(cell.Top),
            static_cast<double>(cell.Width), static_cast<double>(cell.Height)};
}

// The 4 by 4 quarter cells of a post: `draw(a, b, box)` with column a from the left and
// row b from the top, both from 0.
template <typename Draw>
void ForEachQuarter(const PostCell& post, Draw draw) {
    const Box cell = BoxOf(post.Cell);
    const double width = cell.Width / ElevationsPerPost;
    const double height = cell.Height / ElevationsPerPost;
    for (int32_t b = 0; b < ElevationsPerPost; ++b)
        for (int32_t a = 0; a < ElevationsPerPost; ++a)
            draw(a, b, Box{cell.Left + a * width, cell.Top + b * height, width, height});
}

void PrintFinestHeights(const Repaint& repaint, HeightPrinter& printer,
                        const PostCell& post) {
    const ElevationLayer& layer = repaint.Sources.Terrain.Elevations;
    const int32_t left = (post.X - 1) * ElevationsPerPost + 1;
    const int32_t top = post.Y * ElevationsPerPost;
    // No layer, or one of another theater.
    if (top > layer.EMapWidth || left + ElevationsPerPost - 1 > layer.EMapWidth)
        return;
    ForEachQuarter(post, [&](int32_t a, int32_t b, const Box& box) {
        printer.Print(layer.At(left + a, top - b), box);
    });
}

void PrintHeights(const Repaint& repaint, HeightPrinter& printer, const PostCell& post) {
    if (repaint.View.L0Mode)
        PrintFinestHeights(repaint, printer, post);
    else
        printer.Print(post.Post.Elevation, BoxOf(post.Cell));
}

// Its right and lower sides are the left and upper ones of its neighbours.
void DrawBox(DrawingSurface& surface, const Box& box) {
    surface.Rectangle({box.Left, box.Top}, {box.Left + box.Width, box.Top + box.Height});
}

void DrawGrid(Repaint& repaint, const PostCell& post) {
    DrawingSurface& surface = repaint.Surface;
    surface.SetFill(FillStyle::None, 0);
    surface.SetPen(repaint.View.GridColor, 1);
    if (!repaint.View.L0Mode) {
        DrawBox(surface, BoxOf(post.Cell));
        return;
    }
    ForEachQuarter(post,
                   [&](int32_t, int32_t, const Box& box) { DrawBox(surface, box); });
    surface.SetPen(repaint.View.GridColor, 3);
    DrawBox(surface, BoxOf(post.Cell));
    surface.SetPen(repaint.View.GridColor, 1);
}

void PaintNight(Repaint& repaint, TileIds& pictures, const PostCell& post) {
    const int32_t number = post.Post.TileOffset;
    const TileInfo* entry = EntryOf(repaint.Sources.Catalogue, number);
    if (entry == nullptr || entry->HasImage != 1)
        return;
    PaintCell(repaint, pictures.Of(repaint, number, *entry), post.Cell);
    LogPainting(repaint, "Night Tile");
}

bool PaintEveryPost(Repaint& repaint, TileIds& nightPictures, HeightPrinter* printer) {
    const MapView& view = repaint.View;
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i) {
        if (const auto post = repaint.Grid.At(i)) {
            if (view.ApplyNight)
                PaintNight(repaint, nightPictures, *post);
            if (printer != nullptr)
                PrintHeights(repaint, *printer, *post);
            if (view.ShowGrid)
                DrawGrid(repaint, *post);
        }
        if (!repaint.GoOn(i, 50))
            return false;
    }
    if (printer != nullptr)
        repaint.HeightsLeftOut = printer->LeftOut();
    return true;
}

} // namespace

bool PaintOverlays(Repaint& repaint) {
    TileIds nightPictures(repaint, TileUse::Night);
    if (repaint.View.ApplyNight)
        nightPictures.Prepare(repaint);
    std::optional<HeightPrinter> printer;
    if (repaint.View.ShowHeights)
        printer.emplace(repaint.Surface, repaint.Sources.Settings);
    StepsTogether steps(repaint.Surface);
    const bool finished =
        PaintEveryPost(repaint, nightPictures, printer ? &*printer : nullptr);
    steps.End();
    return finished;
}

} // namespace vardenix
