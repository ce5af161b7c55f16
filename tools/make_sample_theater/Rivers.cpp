#include "make_sample_theater/Ground.h"
#include "make_sample_theater/Noise.h"
#include "make_sample_theater/World.h"

#include <queue>

#include <algorithm>
#include <bit>
#include <tuple>

namespace vardenix::sample {
namespace {

// The edge through which water leaves each post; 0 on posts that touch water. Land is
// flooded from the sea upward, always at its lowest free post, so that every post drains.
Grid<uint8_t> FindDrains(const World& world, uint32_t seed) {
    const int posts = world.Posts();
    Grid<uint8_t> drains(posts);
    Grid<uint8_t> seen(posts);
    using Entry = std::tuple<float, int, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> shore;
    for (int y = 0; y < posts; ++y) {
        for (int x = 0; x < posts; ++x) {
            if (TouchesWater(world.Land.Corners, x, y)) {
                seen.At(x, y) = 1;
                shore.emplace(0.0F, x, y);
            }
        }
    }
    while (!shore.empty()) {
        const auto [level, x, y] = shore.top();
        shore.pop();
        for (const uint8_t edge : Edges) {
            const int nextX = x + StepX(edge);
            const int nextY = y + StepY(edge);
            if (!seen.Has(nextX, nextY) || seen.At(nextX, nextY))
                continue;
            seen.At(nextX, nextY) = 1;
            drains.At(nextX, nextY) = Opposite(edge);
            // Chance in the heights keeps rivers from running straight; on flooded flats,
            // where all heights are the same, it is chance alone that leads them.
            const auto wander = static_cast<float>(
                Chance(static_cast<uint32_t>(nextX), static_cast<uint32_t>(nextY), seed));
            shore.emplace(std::max(level + 120 * wander,
                                   HeightOfPost(world.Land, nextX, nextY) + 420 * wander),
                          nextX, nextY);
        }
    }
    return drains;
}

// A mouth needs a straight shore: the corners seaward of the post in water, the others on
// land. It is dug so unless that would wet another river.
bool DigMouth(World& world, PostPlace at, uint8_t landEdge) {
    Grid<Ground>& corners = world.Land.Corners;
    const uint8_t land = CornersOf(landEdge);
    for (int i = 0; i < 4; ++i) {
        if (land >> i & 1)
            continue;
        const int x = at.X + (i & 1);
        const int y = at.Y + (i >> 1);
        for (int py = y - 1; py <= y; ++py) {
            for (int px = x - 1; px <= x; ++px) {
                if (!world.Rivers.Has(px, py) || world.Rivers.At(px, py))
                    return false;
            }
        }
    }
    for (int i = 0; i < 4; ++i) {
        Ground& corner = corners.At(at.X + (i & 1), at.Y + (i >> 1));
        corner = land >> i & 1 ? Ground::Plains : Ground::Shallow;
    }
    return true;
}

bool NearRiver(const World& world, int x, int y, int reach) {
    for (int py = y - reach; py <= y + reach; ++py) {
        for (int px = x - reach; px <= x + reach; ++px) {
            if (world.Rivers.Has(px, py) && world.Rivers.At(px, py))
                return true;
        }
    }
    return false;
}

// Follows the drains from a spring; false, and nothing dug, where no good river comes of
// it.
bool DigRiver(World& world, const Grid<uint8_t>& drains, PostPlace spring) {
    constexpr std::size_t shortest = 9;
    std::vector<PostPlace> course = {spring};
    while (true) {
        const PostPlace at = course.back();
        if (course.size() > 1 && world.Rivers.At(at.X, at.Y)) {
            const uint8_t entered =
                Opposite(drains.At((course.end() - 2)->X, (course.end() - 2)->Y));
            const int arms = std::popcount(world.Rivers.At(at.X, at.Y));
            if (arms != 2 || TouchesWater(world.Land.Corners, at.X, at.Y) ||
                world.Rivers.At(at.X, at.Y) & entered)
                return false;
            break;
        }
        const uint8_t drain = drains.At(at.X, at.Y);
        if (drain == 0)
            break;
        course.push_back({at.X + StepX(drain), at.Y + StepY(drain)});
    }
    if (course.size() < shortest)
        return false;
    const PostPlace end = course.back();
    if (!world.Rivers.At(end.X, end.Y)) {
        const PostPlace before = *(course.end() - 2);
        if (!DigMouth(world, end, Opposite(drains.At(before.X, before.Y))))
            return false;
    }
    for (std::size_t i = 0; i + 1 < course.size(); ++i) {
        const uint8_t drain = drains.At(course[i].X, course[i].Y);
        world.Rivers.At(course[i].X, course[i].Y) |= drain;
        world.Rivers.At(course[i + 1].X, course[i + 1].Y) |= Opposite(drain);
    }
    world.RiverCourses.push_back(std::move(course));
    return true;
}

// Whether a mouth that was dug later left the course dry: on posts that touch water only
// the last may lie.
bool StaysOnLand(const World& world, const Grid<uint8_t>& drains, PostPlace at) {
    while (drains.At(at.X, at.Y)) {
        if (TouchesWater(world.Land.Corners, at.X, at.Y))
            return false;
        const uint8_t drain = drains.At(at.X, at.Y);
        at = {at.X + StepX(drain), at.Y + StepY(drain)};
    }
    return TouchesWater(world.Land.Corners, at.X, at.Y);
}

} // namespace

void DigRivers(World& world, uint32_t seed) {
    const int posts = world.Posts();
    const Grid<uint8_t> drains = FindDrains(world, Hash(seed, 201));
    const int wanted = std::max(2, posts * posts / 3300);
    const int apart = 7;
    int dug = 0;
    for (uint32_t attempt = 0;
         attempt < 400U * static_cast<uint32_t>(wanted) && dug < wanted; ++attempt) {
        const auto side = static_cast<uint32_t>(posts);
        const PostPlace spring = {static_cast<int>(Hash(seed, attempt, 202) % side),
                                  static_cast<int>(Hash(seed, attempt, 203) % side)};
        const float height = HeightOfPost(world.Land, spring.X, spring.Y);
        if (height < 700 || height > 3400 || !drains.At(spring.X, spring.Y) ||
            NearRiver(world, spring.X, spring.Y, apart) ||
            !StaysOnLand(world, drains, spring))
            continue;
        dug += DigRiver(world, drains, spring);
    }
}

} // namespace vardenix::sample
