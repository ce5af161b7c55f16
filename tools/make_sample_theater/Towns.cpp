#include "make_sample_theater/Names.h"
#include "make_sample_theater/Noise.h"
#include "make_sample_theater/World.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

// Clear, dry land around the corners of a town, with room for ways around it.
bool HasRoom(const World& world, const Town& town) {
    constexpr int margin = 3;
    float lowest = 1e6F;
    float highest = -1e6F;
    for (int y = town.Bottom - margin; y < town.Bottom + town.Upward + margin; ++y) {
        for (int x = town.Left - margin; x < town.Left + town.Across + margin; ++x) {
            if (!world.Rivers.Has(x, y) || TouchesWater(world.Land.Corners, x, y) ||
                world.Rivers.At(x, y))
                return false;
            lowest = std::min(lowest, world.Land.Height.At(x, y));
            highest = std::max(highest, world.Land.Height.At(x, y));
        }
    }
    return highest < 1100 && highest - lowest < 520;
}

double DistanceToWater(const World& world, int x, int y, int reach) {
    double nearest = reach + 1;
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) {
            if (world.Rivers.Has(x + dx, y + dy) &&
                (world.Rivers.At(x + dx, y + dy) ||
                 IsWater(world.Land.Corners.At(x + dx, y + dy))))
                nearest = std::min(nearest, std::hypot(dx, dy));
        }
    }
    return nearest;
}

void Build(World& world, const Town& town, uint32_t seed) {
    for (int y = 0; y < town.Upward; ++y) {
        for (int x = 0; x < town.Across; ++x) {
            // Round, with a ragged border; the corners at the gates always stand.
            const double u = (x + 0.5) / town.Across * 2 - 1;
            const double v = (y + 0.5) / town.Upward * 2 - 1;
            const bool gate = x == (town.Across - 1) / 2 || x == (town.Across + 1) / 2 ||
                              y == (town.Upward - 1) / 2 || y == (town.Upward + 1) / 2;
            const double ragged =
                0.25 * Chance(seed, static_cast<uint32_t>(x + 16 * y), 310);
            if (!gate && town.Across > 3 && std::hypot(u, v) > 0.85 + ragged)
                continue;
            world.Land.Corners.At(town.Left + x, town.Bottom + y) = Ground::Town;
        }
    }
}

// Fields around the town, on even ground.
void TillAround(World& world, const Town& town, uint32_t seed) {
    const int reach = 7 + town.Across;
    for (int y = town.MiddleY() - reach; y <= town.MiddleY() + reach; ++y) {
        for (int x = town.MiddleX() - reach; x <= town.MiddleX() + reach; ++x) {
            if (!world.Land.Corners.Has(x, y))
                continue;
            Ground& corner = world.Land.Corners.At(x, y);
            if (IsWater(corner) || corner == Ground::Town || corner == Ground::Rock ||
                world.Land.Height.At(x, y) > 1100)
                continue;
            const double away =
                std::hypot(x - town.MiddleX(), y - town.MiddleY()) / reach;
            if (away + 0.55 * Fractal(x / 6.0, y / 6.0, 3, Hash(seed, 320)) < 0.72)
                corner = Ground::Farm;
        }
    }
}

} // namespace

PostPlace Town::Gate(uint8_t edge) const {
    const int x = Left + (Across - 1) / 2;
    const int y = Bottom + (Upward - 1) / 2;
    switch (edge) {
    case North:
        return {x, Bottom + Upward - 1};
    case South:
        return {x, Bottom - 1};
    case East:
        return {Left + Across - 1, y};
    default:
        return {Left - 1, y};
    }
}

void FoundTowns(World& world, uint32_t seed) {
    const int posts = world.Posts();
    const int wanted = std::clamp(posts * posts / 6000, 4, 60);
    const double apart = std::clamp(posts / 11.0, 11.0, 40.0);
    for (int number = 0; number < wanted; ++number) {
        Town best;
        double bestScore = -1e9;
        for (uint32_t attempt = 0; attempt < 1500; ++attempt) {
            const uint32_t chance =
                Hash(seed, attempt, static_cast<uint32_t>(number), 301);
            Town town;
            const int rank = posts < 200 ? number + 3 : number; // small maps, small towns
            const int size = rank < 1 ? 6 : rank < 3 ? 4 : rank < 7 ? 3 : 2;
            town.Across = size + static_cast<int>(chance >> 4 & 1);
            town.Upward = size + static_cast<int>(chance >> 5 & 1);
            town.Left = static_cast<int>(Hash(chance, 1) % static_cast<uint32_t>(posts));
            town.Bottom =
                static_cast<int>(Hash(chance, 2) % static_cast<uint32_t>(posts));
            if (!HasRoom(world, town))
                continue;
            double score = 3 * Chance(chance, 3) -
                           DistanceToWater(world, town.MiddleX(), town.MiddleY(), 9);
            for (const Town& other : world.Towns) {
                const double away = std::hypot(town.MiddleX() - other.MiddleX(),
                                               town.MiddleY() - other.MiddleY());
                if (away < apart)
                    score -= 1000;
            }
            if (score > bestScore) {
                bestScore = score;
                best = town;
            }
        }
        if (bestScore < -500)
            continue;
        best.Name = TownNames[static_cast<std::size_t>(number) % TownNames.size()];
        if (static_cast<std::size_t>(number) >= TownNames.size())
            best.Name = "New " + best.Name;
        world.Towns.push_back(best);
    }
    for (const Town& town : world.Towns)
        TillAround(world, town, seed);
    for (const Town& town : world.Towns)
        Build(world, town, Hash(seed, static_cast<uint32_t>(town.Left)));
}

} // namespace vardenix::sample
