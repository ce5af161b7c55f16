#include "make_sample_theater/Ground.h"
#include "make_sample_theater/Noise.h"
#include "make_sample_theater/World.h"

#include <queue>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <tuple>

namespace vardenix::sample {
namespace {

// The cheapest way between two towns for roads or rails, found in a window around both.
class WayFinder {
public:
    WayFinder(const World& world, bool rails, uint32_t seed)
        : world_(world), rails_(rails), seed_(seed) {}

    // Posts from the gate of one town to the gate of the other; empty where there is no
    // way.
    std::vector<PostPlace> Find(const Town& from, const Town& to);

private:
    // A state is a post and the direction in which it was entered.
    std::size_t StateOf(PostPlace at, std::size_t direction) const {
        return (static_cast<std::size_t>(at.Y - bottom_) *
                    static_cast<std::size_t>(across_) +
                static_cast<std::size_t>(at.X - left_)) *
                   4 +
               direction;
    }
    bool InWindow(PostPlace at) const {
        return at.X >= left_ && at.Y >= bottom_ && at.X < left_ + across_ &&
               at.Y < bottom_ + upward_;
    }
    bool IsTown(PostPlace at) const;
    bool MustGoStraight(PostPlace at) const {
        return world_.Rivers.At(at.X, at.Y) || OtherWay(at);
    }
    uint8_t OtherWay(PostPlace at) const {
        return rails_ ? world_.Roads.At(at.X, at.Y) : world_.Rails.At(at.X, at.Y);
    }
    uint8_t OwnWay(PostPlace at) const {
        return rails_ ? world_.Rails.At(at.X, at.Y) : world_.Roads.At(at.X, at.Y);
    }
    bool MayEnter(PostPlace at, uint8_t edge) const;
    double CostOf(PostPlace from, PostPlace to, uint8_t edge) const;

    const World& world_;
    bool rails_;
    uint32_t seed_;
    int left_ = 0;
    int bottom_ = 0;
    int across_ = 0;
    int upward_ = 0;
};

bool WayFinder::IsTown(PostPlace at) const {
    const Grid<Ground>& corners = world_.Land.Corners;
    for (int i = 0; i < 4; ++i) {
        if (corners.At(at.X + (i & 1), at.Y + (i >> 1)) == Ground::Town)
            return true;
    }
    return false;
}

// Rivers and the other kind of way are crossed at a right angle where they run straight.
bool WayFinder::MayEnter(PostPlace at, uint8_t edge) const {
    if (IsTown(at) || TouchesWater(world_.Land.Corners, at.X, at.Y))
        return false;
    const uint8_t river = world_.Rivers.At(at.X, at.Y);
    const uint8_t other = OtherWay(at);
    const uint8_t own = OwnWay(at);
    const auto axis = static_cast<uint8_t>(edge | Opposite(edge));
    if (rails_ && own)
        return false;
    for (const uint8_t crossed : {river, other}) {
        if (crossed && (!IsStraight(crossed) || crossed & axis))
            return false;
    }
    if (river && other)
        return false;
    return !(MustGoStraight(at) && own && own != axis);
}

double WayFinder::CostOf(PostPlace from, PostPlace to, uint8_t edge) const {
    if (OwnWay(from) & edge)
        return 0.35; // along a road that is there
    const auto climb =
        static_cast<double>(std::abs(HeightOfPost(world_.Land, to.X, to.Y) -
                                     HeightOfPost(world_.Land, from.X, from.Y)));
    double cost =
        1 + climb / 120 +
        1.2 * Chance(static_cast<uint32_t>(to.X), static_cast<uint32_t>(to.Y), seed_);
    const Ground ground = world_.Land.Corners.At(to.X, to.Y);
    if (ground == Ground::Rock || ground == Ground::RockShade || ground == Ground::Snow)
        cost += 6;
    if (ground == Ground::ThickForest || ground == Ground::Swamp)
        cost += 0.8;
    if (world_.Rivers.At(to.X, to.Y))
        cost += 2;
    if (rails_ && OtherWay(to))
        cost += 3;
    return cost;
}

std::vector<PostPlace> WayFinder::Find(const Town& from, const Town& to) {
    const int margin = 30;
    left_ = std::max(0, std::min(from.Left, to.Left) - margin);
    bottom_ = std::max(0, std::min(from.Bottom, to.Bottom) - margin);
    across_ = std::min(world_.Posts(), std::max(from.Left, to.Left) + margin) - left_;
    upward_ =
        std::min(world_.Posts(), std::max(from.Bottom, to.Bottom) + margin) - bottom_;
    const std::size_t states =
        static_cast<std::size_t>(across_) * static_cast<std::size_t>(upward_) * 4;
    constexpr auto nowhere = std::numeric_limits<std::size_t>::max();
    std::vector<double> best(states, 1e18);
    std::vector<std::size_t> cameFrom(states, nowhere);
    using Entry = std::tuple<double, int, int, std::size_t>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;

    const auto gateFree = [&](const Town& town, uint8_t edge) {
        const PostPlace gate = town.Gate(edge);
        const uint8_t other = OtherWay(gate);
        return !other && !(rails_ && OwnWay(gate));
    };
    for (std::size_t d = 0; d < 4; ++d) {
        const PostPlace gate = from.Gate(Edges[d]);
        if (!InWindow(gate) || !gateFree(from, Edges[d]))
            continue;
        best[StateOf(gate, d)] = 0;
        open.emplace(0.0, gate.X, gate.Y, d);
    }
    while (!open.empty()) {
        const auto [cost, x, y, direction] = open.top();
        open.pop();
        const PostPlace at = {x, y};
        const std::size_t state = StateOf(at, direction);
        if (cost > best[state])
            continue;
        for (std::size_t d = 0; d < 4; ++d) {
            const PostPlace gate = to.Gate(Edges[d]);
            if (gate.X == x && gate.Y == y) {
                std::vector<PostPlace> path;
                for (std::size_t s = state; s != nowhere; s = cameFrom[s]) {
                    const auto index = static_cast<int>(s / 4);
                    path.push_back({left_ + index % across_, bottom_ + index / across_});
                }
                std::reverse(path.begin(), path.end());
                return path;
            }
        }
        for (std::size_t d = 0; d < 4; ++d) {
            const bool starting = cost <= 0;
            if (Edges[d] == Opposite(Edges[direction]) ||
                ((starting || MustGoStraight(at)) && d != direction))
                continue;
            const PostPlace next = {x + StepX(Edges[d]), y + StepY(Edges[d])};
            if (!InWindow(next))
                continue;
            const PostPlace gate = to.Gate(Opposite(Edges[d]));
            const bool arrives =
                gate.X == next.X && gate.Y == next.Y && gateFree(to, Opposite(Edges[d]));
            if (!arrives && !MayEnter(next, Edges[d]))
                continue;
            const double sum =
                cost + CostOf(at, next, Edges[d]) + (d == direction ? 0 : 0.3);
            const std::size_t nextState = StateOf(next, d);
            if (sum < best[nextState]) {
                best[nextState] = sum;
                cameFrom[nextState] = state;
                open.emplace(sum, next.X, next.Y, d);
            }
        }
    }
    return {};
}

void Mark(Grid<uint8_t>& ways, const std::vector<PostPlace>& path) {
    for (std::size_t i = 1; i < path.size(); ++i) {
        for (const uint8_t edge : Edges) {
            if (path[i - 1].X + StepX(edge) == path[i].X &&
                path[i - 1].Y + StepY(edge) == path[i].Y) {
                ways.At(path[i - 1].X, path[i - 1].Y) |= edge;
                ways.At(path[i].X, path[i].Y) |= Opposite(edge);
            }
        }
    }
}

double Away(const Town& a, const Town& b) {
    return std::hypot(a.MiddleX() - b.MiddleX(), a.MiddleY() - b.MiddleY());
}

} // namespace

void LayRoads(World& world, uint32_t seed) {
    // Each town is joined to the nearest that has a road already, and to one more.
    for (std::size_t i = 1; i < world.Towns.size(); ++i) {
        std::vector<std::size_t> others(i);
        for (std::size_t k = 0; k < i; ++k)
            others[k] = k;
        std::sort(others.begin(), others.end(), [&](std::size_t a, std::size_t b) {
            return std::tuple(Away(world.Towns[i], world.Towns[a]), a) <
                   std::tuple(Away(world.Towns[i], world.Towns[b]), b);
        });
        std::size_t joined = 0;
        for (const std::size_t other : others) {
            WayFinder finder(world, false, seed);
            std::vector<PostPlace> path = finder.Find(world.Towns[i], world.Towns[other]);
            if (path.size() < 3)
                continue;
            Mark(world.Roads, path);
            world.RoadCourses.push_back(std::move(path));
            if (++joined == 2)
                break;
        }
    }
    for (std::size_t i = 1; i < std::min<std::size_t>(world.Towns.size(), 4); ++i) {
        WayFinder finder(world, true, Hash(seed, 5));
        std::vector<PostPlace> path = finder.Find(world.Towns[0], world.Towns[i]);
        if (path.size() < 3)
            continue;
        Mark(world.Rails, path);
        world.RailCourses.push_back(std::move(path));
        break;
    }
}

} // namespace vardenix::sample
