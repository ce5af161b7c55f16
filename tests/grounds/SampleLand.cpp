#include "grounds/SampleLand.h"

#include "make_sample_theater/Layers.h"
#include "make_sample_theater/TileMarks.h"

#include <algorithm>
#include <random>
#include <stdexcept>
#include <utility>

namespace vardenix::tests {

namespace {

TileWays WaysOfSample(const sample::Tile& tile) {
    TileRecord record;
    for (const sample::PathMark& mark : sample::MarksOf(tile).Paths)
        record.Paths.push_back({mark.Type, mark.Width, mark.StartUp, mark.StartRight,
                                mark.EndUp, mark.EndRight});
    return WaysOf(record);
}

// `from` gives where a pixel is taken from, `spoilt` what becomes of a part of a color.
template <typename From, typename Spoilt>
TileSides SidesOfSample(const sample::Tile& tile, int side, From from, Spoilt spoilt) {
    const sample::Picture picture = sample::PaintTile(tile, side).Day;
    const std::vector<uint8_t> bytes = picture.Rgba();
    Raster raster(side, side);
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            const auto [fromX, fromY] = from(x, y);
            const uint8_t* const pixel =
                &bytes[static_cast<size_t>(fromY * side + fromX) * 4];
            const uint32_t red = spoilt(pixel[0]);
            const uint32_t green = spoilt(pixel[1]);
            raster.Row(y)[x] = OpaqueBlack | red << 16 | green << 8 | spoilt(pixel[2]);
        }
    return SidesOf(raster.View());
}

uint8_t Mask(Side side) {
    constexpr uint8_t masks[] = {sample::North, sample::East, sample::South,
                                 sample::West};
    return masks[side];
}

} // namespace

SampleLand::SampleLand(int posts, uint32_t seed, int side, Spoiling spoiling) {
    std::mt19937 random(seed);
    const auto between = [&random](int most) { // -most to most
        return most == 0
                   ? 0
                   : static_cast<int>(random() % static_cast<unsigned>(2 * most + 1)) -
                         most;
    };
    const sample::Catalogue catalogue;
    sample::World world(sample::MakeLandscape(posts, seed));
    sample::DigRivers(world, seed);
    sample::FoundTowns(world, seed);
    sample::LayRoads(world, seed);
    sample::BuildAirfields(world);
    const sample::Grid<int32_t> numbers = sample::ChooseTiles(world, catalogue, seed);
    for (size_t set = 0; set < catalogue.Sets().size(); ++set)
        for (size_t slot = 0; slot < size_t{16}; ++slot) {
            const auto& tiles = catalogue.Sets()[set].Tiles;
            Tiles.Indices.push_back(
                slot < tiles.size() ? static_cast<int32_t>(Tiles.Count()) : -1);
            if (slot >= tiles.size())
                continue;
            Tiles.Numbers.push_back(static_cast<int32_t>(set * 16 + slot));
            const double gain =
                1 + spoiling.Gain * between(spoiling.Gain > 0 ? 100 : 0) / 100;
            const int dx = between(spoiling.Shift);
            const int dy = between(spoiling.Shift);
            Tiles.Sides.push_back(SidesOfSample(
                tiles[slot], side,
                [&](int x, int y) {
                    return std::pair{std::clamp(x + dx, 0, side - 1),
                                     std::clamp(y + dy, 0, side - 1)};
                },
                [&](uint8_t part) {
                    return static_cast<uint32_t>(
                        std::clamp(part * gain + between(spoiling.Noise), 0.0, 255.0));
                }));
            Tiles.Ways.push_back(WaysOfSample(tiles[slot]));
            looks_.push_back(tiles[slot].Look);
        }
    Map.Width = Map.Height = posts;
    for (int y = 0; y < posts; ++y)
        for (int x = 0; x < posts; ++x)
            Map.Tiles.push_back(Tiles.IndexOf(numbers.At(x, y)));
}

void SampleLand::SwapPosts(double share) {
    std::mt19937 random(17);
    const size_t posts = Map.Tiles.size();
    for (size_t i = 0; i < static_cast<size_t>(share * static_cast<double>(posts)); ++i)
        Map.Tiles[random() % posts] = Map.Tiles[random() % posts];
}

sample::Ground SampleLand::Truth(int32_t tile, size_t corner) const {
    const sample::TileLook& look = LookOf(tile);
    return (look.HighCorners >> corner & 1) != 0 ? look.High : look.Low;
}

bool SampleLand::Fit(Meeting meeting, int32_t first, int32_t second) const {
    const bool east = meeting == Meeting::Eastward;
    const size_t begin = east ? SouthEast : NorthWest;
    const size_t beginOfSecond = SouthWest;
    const size_t end = NorthEast;
    const size_t endOfSecond = east ? NorthWest : SouthEast;
    if (Truth(first, begin) != Truth(second, beginOfSecond) ||
        Truth(first, end) != Truth(second, endOfSecond))
        return false;
    const uint8_t one = Mask(FirstSide(meeting));
    const uint8_t other = Mask(SecondSide(meeting));
    const auto alike = [&](uint8_t sample::TileLook::*edges) {
        return ((LookOf(first).*edges & one) != 0) ==
               ((LookOf(second).*edges & other) != 0);
    };
    return alike(&sample::TileLook::Roads) && alike(&sample::TileLook::Rivers) &&
           alike(&sample::TileLook::Rails) && alike(&sample::TileLook::EdgeStyles);
}

int SampleLand::BadSeams(const LandGrid& map, int x1, int y1, int x2, int y2) const {
    int bad = 0;
    for (int y = y1; y <= y2; ++y)
        for (int x = x1 - 1; x <= x2; ++x)
            bad += map.Has(x, y) && map.Has(x + 1, y) &&
                   !Fit(Meeting::Eastward, map(x, y), map(x + 1, y));
    for (int y = y1 - 1; y <= y2; ++y)
        for (int x = x1; x <= x2; ++x)
            bad += map.Has(x, y) && map.Has(x, y + 1) &&
                   !Fit(Meeting::Northward, map(x, y), map(x, y + 1));
    return bad;
}

int SampleLand::SeamsOf(const LandGrid& map, int x1, int y1, int x2, int y2) {
    int seams = 0;
    for (int y = y1; y <= y2; ++y)
        for (int x = x1 - 1; x <= x2; ++x)
            seams += map.Has(x, y) && map.Has(x + 1, y);
    for (int y = y1 - 1; y <= y2; ++y)
        for (int x = x1; x <= x2; ++x)
            seams += map.Has(x, y) && map.Has(x, y + 1);
    return seams;
}

int32_t SampleLand::PlainTile(sample::Ground ground) const {
    for (size_t tile = 0; tile < looks_.size(); ++tile) {
        sample::TileLook plain;
        plain.Low = plain.High = ground;
        if (looks_[tile] == plain)
            return static_cast<int32_t>(tile);
    }
    throw std::out_of_range("no plain tile");
}

} // namespace vardenix::tests
