#include "grounds/WayStroke.h"

#include "grounds/BrushPart.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <limits>

namespace vardenix {

namespace {

constexpr float CostOfOtherTile = 0.02F;
constexpr float CostOfOtherGrounds = 0.6F;

struct SideStep {
    Side Over;
    int32_t X;
    int32_t Y;
};
constexpr std::array<SideStep, SideCount> Steps{
    {{North, 0, 1}, {East, 1, 0}, {South, 0, -1}, {West, -1, 0}}};

constexpr Side Opposite(Side side) { return static_cast<Side>((side + 2) % SideCount); }
constexpr uint8_t BitOf(Side side) { return static_cast<uint8_t>(1 << side); }

uint8_t& SidesOfWay(TileWays& ways, WayKind kind) {
    return kind == WayKind::River  ? ways.Rivers
           : kind == WayKind::Road ? ways.Roads
                                   : ways.Rails;
}

TileWays WaysOfTile(const LearnedLand& land, int32_t index) {
    return index < 0 ? TileWays() : land.Tiles().Ways[static_cast<size_t>(index)];
}

// What two neighbours cost side by side; nothing beyond the grid or what is known.
float SeamCost(const LearnedLand& land, int32_t tile, int32_t other, Side towards) {
    if (tile < 0 || other < 0)
        return 0;
    const auto one = static_cast<size_t>(tile);
    const auto two = static_cast<size_t>(other);
    switch (towards) {
    case North:
        return land.Fits(Meeting::Northward).Cost(one, two);
    case South:
        return land.Fits(Meeting::Northward).Cost(two, one);
    case East:
        return land.Fits(Meeting::Eastward).Cost(one, two);
    default:
        return land.Fits(Meeting::Eastward).Cost(two, one);
    }
}

class WayChain {
public:
    WayChain(const LearnedLand& land, const LandGrid& posts, WayKind kind)
        : land_(land), posts_(posts), kind_(kind), node_(posts.Tiles.size(), -1) {}

    void Add(PostPlace place) {
        if (!posts_.Has(place.X, place.Y)) {
            last_ = -1; // the way goes on elsewhere
            return;
        }
        int32_t& node = node_[posts_.At(place.X, place.Y)];
        if (node < 0) {
            node = static_cast<int32_t>(nodes_.size());
            nodes_.push_back({place, 0, {}, {}, {}});
        }
        if (last_ >= 0 && last_ != node)
            Link(last_, node);
        last_ = node;
    }

    // The chain with its new tiles; gives the posts that no tile was found for.
    int64_t Solve(LandGrid& result) {
        int64_t unfilled = 0;
        for (Node& node : nodes_) {
            JoinRound(node);
            Offer(node);
        }
        for (Node& node : nodes_)
            if (node.Tiles.empty()) {
                ++unfilled;
                node.Tiles = {posts_(node.At.X, node.At.Y)};
                node.Costs = {0};
            }
        for (size_t i = 0; i < nodes_.size(); ++i)
            Extend(i);
        if (nodes_.empty())
            return 0;
        // Back along the cheapest way.
        size_t chosen = static_cast<size_t>(
            std::ranges::min_element(nodes_.back().Costs) - nodes_.back().Costs.begin());
        for (size_t i = nodes_.size(); i-- > 0;) {
            const Node& node = nodes_[i];
            result(node.At.X, node.At.Y) = node.Tiles[chosen];
            if (i > 0)
                chosen = node.Before[chosen];
        }
        return unfilled;
    }

private:
    struct Node {
        PostPlace At;
        uint8_t Sides = 0;          // that the way leads over
        std::vector<int32_t> Tiles; // to choose from
        std::vector<float> Costs;   // of the chain as far as here
        std::vector<size_t> Before; // the choice of the node before that led there
    };

    void Link(int32_t from, int32_t to) {
        Node& a = nodes_[static_cast<size_t>(from)];
        Node& b = nodes_[static_cast<size_t>(to)];
        for (const auto& [side, x, y] : Steps)
            if (a.At.X + x == b.At.X && a.At.Y + y == b.At.Y) {
                a.Sides |= BitOf(side);
                b.Sides |= BitOf(Opposite(side));
            }
    }

    int32_t NodeAt(PostPlace place) const {
        return posts_.Has(place.X, place.Y) ? node_[posts_.At(place.X, place.Y)] : -1;
    }

    // Ways that come from posts beside the chain go on into it.
    void JoinRound(Node& node) {
        for (const auto& [side, x, y] : Steps) {
            const PostPlace next{node.At.X + x, node.At.Y + y};
            if (!posts_.Has(next.X, next.Y) || NodeAt(next) >= 0)
                continue;
            TileWays ways = WaysOfTile(land_, posts_(next.X, next.Y));
            if ((SidesOfWay(ways, kind_) & BitOf(Opposite(side))) != 0)
                node.Sides |= BitOf(side);
        }
    }

    void Offer(Node& node) {
        const int32_t now = posts_(node.At.X, node.At.Y);
        TileWays wanted = WaysOfTile(land_, now);
        SidesOfWay(wanted, kind_) = node.Sides;
        for (size_t i = 0; i < land_.Tiles().Count(); ++i) {
            const auto tile = static_cast<int32_t>(i);
            if (!(land_.Tiles().Ways[i] == wanted))
                continue;
            float cost = land_.CostOf(tile) + (tile == now ? 0 : CostOfOtherTile);
            if (now >= 0 && land_.GroundsOf(tile) != land_.GroundsOf(now))
                cost += CostOfOtherGrounds;
            for (const auto& [side, x, y] : Steps) {
                const PostPlace next{node.At.X + x, node.At.Y + y};
                if (posts_.Has(next.X, next.Y) && NodeAt(next) < 0)
                    cost += SeamCost(land_, tile, posts_(next.X, next.Y), side);
            }
            node.Tiles.push_back(tile);
            node.Costs.push_back(cost);
        }
    }

    void Extend(size_t index) {
        Node& node = nodes_[index];
        node.Before.assign(node.Tiles.size(), 0);
        if (index == 0)
            return;
        const Node& former = nodes_[index - 1];
        const auto step = std::ranges::find_if(Steps, [&](const SideStep& to) {
            return former.At.X + to.X == node.At.X && former.At.Y + to.Y == node.At.Y;
        });
        for (size_t i = 0; i < node.Tiles.size(); ++i) {
            float best = std::numeric_limits<float>::max();
            for (size_t j = 0; j < former.Tiles.size(); ++j) {
                const float cost =
                    former.Costs[j] +
                    (step == Steps.end()
                         ? 0
                         : SeamCost(land_, former.Tiles[j], node.Tiles[i], step->Over));
                if (cost < best) {
                    best = cost;
                    node.Before[i] = j;
                }
            }
            node.Costs[i] += best;
        }
    }

    const LearnedLand& land_;
    const LandGrid& posts_;
    WayKind kind_;
    std::vector<int32_t> node_; // by post; -1 beside the chain
    std::vector<Node> nodes_;
    int32_t last_ = -1;
};

} // namespace

std::optional<WayKind> WayOf(const LearnedLand& land, int32_t tile) {
    TileWays ways = WaysOfTile(land, land.Tiles().IndexOf(tile));
    for (const WayKind kind : {WayKind::River, WayKind::Road, WayKind::Rail})
        if (SidesOfWay(ways, kind) != 0)
            return kind;
    return std::nullopt;
}

BrushResult PaintWay(const LearnedLand& land, const Terrain& terrain,
                     std::span<const PostPlace> chain, int32_t sample) {
    RequireLearned(land);
    const auto kind = WayOf(land, sample);
    if (!kind)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "tile " + std::to_string(sample) +
                               " has no river, road or railroad");
    std::vector<RowSpan> spans;
    for (const PostPlace& place : chain)
        if (LiesOnGrid({place.X, place.Y, place.X, place.Y}, terrain.MapWidth))
            spans.push_back({place.Y, place.X, place.X});
    if (spans.empty())
        return {};
    const BrushPart part = PartRound(land, terrain, spans, 1);
    WayChain way(land, part.Posts, *kind);
    for (const PostPlace& place : chain)
        way.Add({place.X - part.Origin.X, place.Y - part.Origin.Y});
    LandGrid posts = part.Posts;
    const int64_t unfilled = way.Solve(posts);
    return ResultOf(land, terrain, part, posts, unfilled);
}

} // namespace vardenix
