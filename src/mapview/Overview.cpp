// A view of so many posts that nobody could tell their pictures: each is the one colour
// that its tile's picture has on the whole.

#include "mapview/HeightColors.h"
#include "mapview/OverviewPlaces.h"
#include "platform/ForEachInParallel.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vardenix {
namespace {

constexpr uint32_t Opaque = 0xFF000000;
constexpr size_t RowsAtOnce = 32;
// Of the squares that pictures are shrunk to before their mean is taken, pixels.
constexpr int32_t MeanSide = 16;

// 0x00BBGGRR and the pixels' 0xAARRGGBB.
uint32_t PixelOf(uint32_t color) {
    return Opaque | (color & 255) << 16 | (color & 0xFF00) | (color >> 16 & 255);
}

// The numbers that posts in view have, each once.
std::vector<int32_t> NumbersInView(const Repaint& repaint) {
    const Terrain& terrain = repaint.Sources.Terrain;
    const MapView& view = repaint.View;
    const PostBox box =
        CutToGrid({view.MapLeftX, view.MapBottomY, view.MapLeftX + view.ViewColumns() - 1,
                   view.MapBottomY + view.ViewRows() - 1},
                  terrain.MapWidth);
    std::vector<uint8_t> seen(repaint.Sources.Catalogue.Lookup.size());
    for (int32_t y = box.Y1; y <= box.Y2; ++y) {
        const auto row = terrain.LxArr.Values().subspan(
            static_cast<size_t>(y) * static_cast<size_t>(terrain.MapWidth));
        for (int32_t x = box.X1; x <= box.X2; ++x) {
            const auto number =
                static_cast<uint32_t>(row[static_cast<size_t>(x)].TileOffset);
            if (number < seen.size())
                seen[number] = 1;
        }
    }
    std::vector<int32_t> numbers;
    for (size_t i = 0; i < seen.size(); ++i)
        if (seen[i] != 0)
            numbers.push_back(static_cast<int32_t>(i));
    return numbers;
}

// By tile number, and behind the last one that of the substitute.
class MeanColors {
public:
    explicit MeanColors(Repaint& repaint)
        : colors_(repaint.Sources.Catalogue.Lookup.size() + 1) {
        const std::vector<int32_t> numbers = NumbersInView(repaint);
        Take(repaint, numbers, TileUse::Day);
        if (repaint.View.ApplyNight)
            Take(repaint, numbers, TileUse::Night);
    }
    uint32_t Of(int32_t number) const {
        const auto index = static_cast<uint32_t>(number);
        return colors_[std::min<size_t>(index, colors_.size() - 1)];
    }

private:
    void Take(Repaint& repaint, const std::vector<int32_t>& numbers, TileUse use) {
        TilePictures& pictures = repaint.Tools.Pictures;
        TileIds tiles(repaint, use);
        std::vector<TilePictureId> ids{
            pictures.IdOf(repaint.Sources.ShippedPath + "NoTile.jpg", PictureFormat::Jpeg,
                          TileUse::Day)};
        for (const int32_t number : numbers) {
            const TileInfo& entry =
                repaint.Sources.Catalogue.Lookup[static_cast<size_t>(number)];
            ids.push_back(entry.HasImage == 1 ? tiles.Of(repaint, number, entry)
                                              : ids.front());
        }
        pictures.Prepare(ids, MeanSide);
        if (use == TileUse::Day)
            colors_.back() = ColorOf(pictures, ids.front(), Opaque);
        for (size_t i = 0; i < numbers.size(); ++i) {
            uint32_t& color = colors_[static_cast<size_t>(numbers[i])];
            color = ColorOf(pictures, ids[i + 1],
                            use == TileUse::Day ? colors_.back() : color);
        }
    }

    // Of all pixels of the picture; where it has none, or by night stays away, `other`.
    static uint32_t ColorOf(TilePictures& pictures, TilePictureId id, uint32_t other) {
        const Raster* cell = pictures.Ready(id, MeanSide).Cell;
        Raster made(MeanSide, MeanSide, other);
        if (cell == nullptr) {
            pictures.Paint({made.Row(0), MeanSide, MeanSide, made.Width()}, id,
                           {0, 0, MeanSide, MeanSide});
            cell = &made;
        }
        std::array<uint32_t, 3> sums{};
        for (int32_t y = 0; y < MeanSide; ++y)
            for (int32_t x = 0; x < MeanSide; ++x) {
                const uint32_t pixel = cell->Row(y)[x];
                const uint32_t seen = (pixel & Opaque) != 0 ? pixel : other;
                for (size_t i = 0; i < sums.size(); ++i)
                    sums[i] += seen >> (8 * i) & 255;
            }
        constexpr uint32_t count = MeanSide * MeanSide;
        uint32_t color = Opaque;
        for (size_t i = 0; i < sums.size(); ++i)
            color |= (sums[i] + count / 2) / count << (8 * i);
        return color;
    }

    std::vector<uint32_t> colors_;
};

// One row of the picture; posts beyond the terrain stay the background.
void PaintRow(const Repaint& repaint, const MeanColors& means,
              std::span<const TerrainPost> posts, std::span<const int32_t> columns,
              uint32_t* pixels) {
    const MapView& view = repaint.View;
    for (size_t x = 0; x < columns.size(); ++x) {
        if (columns[x] < 0)
            continue;
        const TerrainPost& post = posts[static_cast<size_t>(columns[x])];
        pixels[x] =
            view.ShowHeights
                ? PixelOf(GetHeightColor(repaint.Sources.Settings, post.Elevation))
                : means.Of(post.TileOffset);
        if (view.ApplyMAP) {
            const MapPaletteEntry& over =
                repaint.Sources.MapFileRecord.Palette[post.Palette];
            pixels[x] = MixedPixel(pixels[x],
                                   static_cast<uint32_t>(over.Red) << 16 |
                                       static_cast<uint32_t>(over.Green) << 8 | over.Blue,
                                   view.MapAlpha);
        }
    }
}

int32_t InsideTerrain(const Repaint& repaint, int32_t post) {
    return post >= 0 && post < repaint.Sources.Terrain.MapWidth ? post : -1;
}

} // namespace

uint32_t MixedPixel(uint32_t below, uint32_t above, uint32_t alpha) {
    uint32_t mixed = Opaque;
    for (const uint32_t shift : {0U, 8U, 16U}) {
        const uint32_t sum =
            (below >> shift & 255) * (255 - alpha) + (above >> shift & 255) * alpha;
        mixed |= (sum + 127) / 255 << shift;
    }
    return mixed;
}

OverviewPlaces::OverviewPlaces(Repaint& repaint)
    : Target(repaint.Surface.Pixels()), repaint_(repaint) {
    const MapView& view = repaint.View;
    Columns.reserve(static_cast<size_t>(std::max(Target.Width, 0)));
    for (int32_t x = 0; x < Target.Width; ++x)
        Columns.push_back(InsideTerrain(
            repaint, view.MapLeftX + ClampToInt32(std::floor((x + repaint.Left + 0.5) /
                                                             view.CellSize()))));
}

int32_t OverviewPlaces::RowAt(int32_t y) const {
    const MapView& view = repaint_.View;
    const double up = view.PictureHeight() - (y + repaint_.Top) - 0.5;
    return InsideTerrain(repaint_, view.MapBottomY +
                                       ClampToInt32(std::floor(up / view.CellSize())));
}

void PaintOverview(Repaint& repaint) {
    const Terrain& terrain = repaint.Sources.Terrain;
    const MeanColors means(repaint);
    const OverviewPlaces places(repaint);
    const RasterView target = places.Target;
    const auto height = static_cast<size_t>(std::max(target.Height, 0));
    ForEachInParallel((height + RowsAtOnce - 1) / RowsAtOnce, [&](size_t band) {
        const size_t end = std::min(height, (band + 1) * RowsAtOnce);
        int32_t before = -1;
        for (size_t i = band * RowsAtOnce; i < end; ++i) {
            const auto y = static_cast<int32_t>(i);
            const int32_t row = places.RowAt(y);
            if (row >= 0 && row == before)
                std::copy_n(target.Row(y - 1), target.Width, target.Row(y));
            else if (row >= 0)
                PaintRow(
                    repaint, means,
                    terrain.LxArr.Values().subspan(static_cast<size_t>(row) *
                                                   static_cast<size_t>(terrain.MapWidth)),
                    places.Columns, target.Row(y));
            before = row;
        }
    });
}

} // namespace vardenix
