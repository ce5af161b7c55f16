#include "make_sample_theater/Noise.h"
#include "make_sample_theater/World.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

std::array<Ground, 4> CornersOfPost(const Grid<Ground>& corners, int x, int y) {
    return {corners.At(x, y), corners.At(x + 1, y), corners.At(x, y + 1),
            corners.At(x + 1, y + 1)};
}

TileLook LookOfPost(const World& world, int x, int y) {
    TileLook look = LookOfCorners(CornersOfPost(world.Land.Corners, x, y));
    look.Rivers = world.Rivers.At(x, y);
    look.Roads = world.Roads.At(x, y);
    look.Rails = world.Rails.At(x, y);
    look.Special = world.Special.At(x, y);
    return look;
}

bool IsPlainFarm(const World& world, int x, int y) {
    return world.Rivers.Has(x, y) && !world.HasWay(x, y) &&
           CornersOfPost(world.Land.Corners, x, y) ==
               std::array{Ground::Farm, Ground::Farm, Ground::Farm, Ground::Farm};
}

// A post with ways whose grounds have no such tile lies on plains. Towns stay towns.
bool ClearForWays(World& world, int x, int y) {
    bool changed = false;
    for (int i = 0; i < 4; ++i) {
        Ground& corner = world.Land.Corners.At(x + (i & 1), y + (i >> 1));
        if (!IsWater(corner) && corner != Ground::Town && corner != Ground::Plains) {
            corner = Ground::Plains;
            changed = true;
        }
    }
    return changed;
}

bool TameWildest(World& world, int x, int y) {
    Ground* wildest = nullptr;
    for (int i = 0; i < 4; ++i) {
        Ground& corner = world.Land.Corners.At(x + (i & 1), y + (i >> 1));
        if (corner != Ground::Town &&
            (wildest == nullptr || Wildness(corner) > Wildness(*wildest)))
            wildest = &corner;
    }
    if (wildest == nullptr || Tamer(*wildest) == *wildest)
        return false;
    *wildest = Tamer(*wildest);
    return true;
}

// Every change brings a corner nearer to plains or shallows, so this ends.
void MakeGroundsFit(World& world, const Catalogue& catalogue) {
    bool changed = true;
    while (changed) {
        changed = false;
        for (int y = 0; y < world.Posts(); ++y) {
            for (int x = 0; x < world.Posts(); ++x) {
                const auto corners = CornersOfPost(world.Land.Corners, x, y);
                const bool ways = world.HasWay(x, y);
                if (!ways && corners[0] == corners[1] && corners[0] == corners[2] &&
                    corners[0] == corners[3])
                    continue;
                if (catalogue.Has(LookOfPost(world, x, y)))
                    continue;
                changed |= ways ? ClearForWays(world, x, y) : TameWildest(world, x, y);
            }
        }
    }
}

// Whether the fields along an edge follow the second pattern: by chance, where both posts
// at the edge are nothing but farmland.
bool HasSecondStyle(const World& world, int x, int y, uint8_t edge, uint32_t seed) {
    if (!IsPlainFarm(world, x + StepX(edge), y + StepY(edge)))
        return false;
    // The same number from both sides: an edge belongs to the post south or west of it.
    const int ownerX = edge == West ? x - 1 : x;
    const int ownerY = edge == South ? y - 1 : y;
    const bool upright = edge == West || edge == East;
    return Hash(static_cast<uint32_t>(ownerX), static_cast<uint32_t>(ownerY),
                upright ? 1 : 2, seed) &
           1;
}

void SettleHamlets(World& world, const Catalogue& catalogue, uint32_t seed) {
    for (int y = 0; y < world.Posts(); ++y) {
        for (int x = 0; x < world.Posts(); ++x) {
            if (!IsStraight(world.Roads.At(x, y)) ||
                Chance(static_cast<uint32_t>(x), static_cast<uint32_t>(y), seed, 401) >
                    0.13)
                continue;
            world.Special.At(x, y) = Extra::Hamlet;
            if (!catalogue.Has(LookOfPost(world, x, y)))
                world.Special.At(x, y) = Extra::None;
        }
    }
}

} // namespace

void BuildAirfields(World& world) {
    const std::size_t wanted = std::min<std::size_t>(3, world.Towns.size());
    for (std::size_t i = 0; i < wanted; ++i) {
        const Town& town = world.Towns[i];
        PostPlace best;
        double nearest = 1e9;
        for (int y = town.Bottom - 7; y < town.Bottom + town.Upward + 7; ++y) {
            for (int x = town.Left - 7; x < town.Left + town.Across + 7; ++x) {
                bool free = true;
                for (int dy = -1; dy <= 1 && free; ++dy) {
                    for (int dx = -1; dx <= 1 && free; ++dx)
                        free = world.Rivers.Has(x + dx, y + dy) &&
                               !world.HasWay(x + dx, y + dy) &&
                               !TouchesWater(world.Land.Corners, x + dx, y + dy);
                }
                for (int k = 0; k < 4 && free; ++k)
                    free =
                        world.Land.Corners.At(x + (k & 1), y + (k >> 1)) != Ground::Town;
                const double away = std::hypot(x - town.MiddleX(), y - town.MiddleY());
                if (free && away < nearest) {
                    nearest = away;
                    best = {x, y};
                }
            }
        }
        if (nearest > 1e8)
            continue;
        world.Special.At(best.X, best.Y) = Extra::Airfield;
        world.Airfields.push_back({best, town.Name + " Field"});
    }
}

Grid<int32_t> ChooseTiles(World& world, const Catalogue& catalogue, uint32_t seed) {
    MakeGroundsFit(world, catalogue);
    SettleHamlets(world, catalogue, seed);
    Grid<int32_t> tiles(world.Posts());
    for (int y = 0; y < world.Posts(); ++y) {
        for (int x = 0; x < world.Posts(); ++x) {
            TileLook look = LookOfPost(world, x, y);
            if (IsPlainFarm(world, x, y)) {
                for (const uint8_t edge : {North, East, South, West}) {
                    if (HasSecondStyle(world, x, y, edge, Hash(seed, 410)))
                        look.EdgeStyles |= edge;
                }
            }
            const std::vector<int32_t>& numbers = catalogue.NumbersOf(look);
            const uint32_t chance =
                Hash(static_cast<uint32_t>(x), static_cast<uint32_t>(y), seed, 411);
            tiles.At(x, y) = numbers[chance % numbers.size()];
        }
    }
    return tiles;
}

} // namespace vardenix::sample
