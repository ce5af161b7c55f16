#include "grounds/TerrainBrush.h"

#include "grounds/BrushPart.h"
#include "grounds/CornerPlan.h"
#include "grounds/SeamSolver.h"
#include "levels/PostHash.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstdlib>

namespace vardenix {

namespace {

constexpr float CostOfChange = 0.02F;
constexpr float CostOfMending = 0.12F;
constexpr float CostOffGrounds = 0.6F;
constexpr double AsGood = 0.05;
constexpr float MuchAlike = 1.5F;
constexpr int32_t WayReach = 4;

// The ground that most corners of a tile have, the lowest of several.
int16_t GroundOf(const LearnedLand& land, int32_t tile) {
    const GroundsOfTile& grounds = land.GroundsOf(tile);
    return *std::ranges::max_element(grounds, [&](int16_t a, int16_t b) {
        const auto ofA = std::ranges::count(grounds, a);
        const auto ofB = std::ranges::count(grounds, b);
        return ofA != ofB ? ofA < ofB : a > b;
    });
}

bool IsPlain(const GroundsOfTile& grounds) {
    return std::ranges::count(grounds, grounds[0]) == CornerCount;
}

// Tiles that can stand side by side all over a field of the sample.
std::vector<int32_t> PlainTiles(const LearnedLand& land, int32_t sample) {
    const LearnedTiles& tiles = land.Tiles();
    const int16_t ground = GroundOf(land, sample);
    const bool isPlain = IsPlain(land.GroundsOf(sample));
    const TileWays ways = isPlain ? tiles.Ways[static_cast<size_t>(sample)] : TileWays();
    std::vector<int32_t> plain;
    for (const int32_t tile : land.TilesWith({ground, ground, ground, ground})) {
        const auto at = static_cast<size_t>(tile);
        const auto like = static_cast<size_t>(sample);
        const auto goes = [&](Meeting meeting) {
            const float most = MuchAlike * land.Fits(meeting).UsualDifference();
            const Side first = FirstSide(meeting);
            const Side second = SecondSide(meeting);
            const TileSides& one = tiles.Sides[at];
            const TileSides& other = tiles.Sides[like];
            return DifferenceOf(one.Colors[first], other.Colors[second]) <= most &&
                   DifferenceOf(other.Colors[first], one.Colors[second]) <= most;
        };
        if (tile == sample ||
            (tiles.Ways[at] == ways &&
             (!isPlain || (goes(Meeting::Eastward) && goes(Meeting::Northward)))))
            plain.push_back(tile);
    }
    return plain;
}

// One of some tiles, each as likely as its use.
int32_t DrawByUse(const LearnedLand& land, const std::vector<int32_t>& tiles, int32_t x,
                  int32_t y, uint32_t seed) {
    uint32_t all = 0;
    for (const int32_t tile : tiles)
        all += static_cast<uint32_t>(land.UseOf(tile)) + 1;
    uint32_t drawn = DrawAtPost(x, y, seed, all);
    for (const int32_t tile : tiles) {
        const uint32_t share = static_cast<uint32_t>(land.UseOf(tile)) + 1;
        if (drawn < share)
            return tile;
        drawn -= share;
    }
    return tiles.back();
}

TileWays WaysAt(const LearnedLand& land, int32_t tile) {
    return tile < 0 ? TileWays() : land.Tiles().Ways[static_cast<size_t>(tile)];
}

// A part of the terrain that a brush works on.
class BrushWork {
public:
    BrushWork(const LearnedLand& land, const LandGrid& posts, PostPlace origin,
              uint32_t seed)
        : land_(land), before_(posts), problem_{posts, {}}, origin_(origin), seed_(seed),
          changed_(posts.Tiles.size()) {
        problem_.Choices.resize(posts.Tiles.size());
    }

    int64_t Unfilled() const { return unfilled_; }

    // Tiles with the planned grounds; where there are none, what stands stays.
    void OfferByPlan(const CornerPlan& plan, int32_t x, int32_t y) {
        const size_t at = before_.At(x, y);
        for (const int32_t tile : land_.TilesWith(plan.GroundsAt(x, y)))
            problem_.Choices[at].push_back(
                {tile, land_.CostOf(tile) + (tile == before_(x, y) ? 0 : CostOfChange)});
        if (problem_.Choices[at].empty())
            ++unfilled_;
        else
            changed_[at] = 1;
    }
    // Every tile, those with other grounds than planned dearer.
    void OfferAll(const CornerPlan& plan, int32_t x, int32_t y) {
        const size_t at = before_.At(x, y);
        const GroundsOfTile planned = plan.GroundsAt(x, y);
        for (size_t i = 0; i < land_.Tiles().Count(); ++i) {
            const auto tile = static_cast<int32_t>(i);
            problem_.Choices[at].push_back(
                {tile, land_.CostOf(tile) + (tile == before_(x, y) ? 0 : CostOfChange) +
                           (land_.GroundsOf(tile) == planned ? 0 : CostOffGrounds)});
        }
        changed_[at] = 1;
    }
    void Put(int32_t x, int32_t y, int32_t tile) {
        problem_.Posts(x, y) = tile;
        changed_[before_.At(x, y)] = 1;
    }

    void Solve() {
        SolveSeams(land_, problem_);
        Vary();
    }

    // Posts round what has changed, those beside it and those with a way in reach, may
    // take another tile of their own grounds where a seam does not fit.
    void MendRound() {
        bool any = false;
        for (int32_t y = 0; y < before_.Height; ++y)
            for (int32_t x = 0; x < before_.Width; ++x) {
                const size_t at = before_.At(x, y);
                const int32_t now = problem_.Posts(x, y);
                const int32_t distance = now < 0 ? 0 : ReachOf(x, y);
                if (distance == 0 || (distance > 1 && WaysAt(land_, now).None()))
                    continue;
                for (const int32_t tile : land_.TilesWith(land_.GroundsOf(now)))
                    problem_.Choices[at].push_back(
                        {tile, land_.CostOf(tile) + (tile == now ? 0 : CostOfMending)});
                any = any || OpenSeamsOf(x, y) > 0;
            }
        if (any)
            SolveSeams(land_, problem_);
    }

    // Seams of a post as found so far that do not fit.
    int64_t OpenSeamsOf(int32_t x, int32_t y) const {
        const LandGrid& posts = problem_.Posts;
        return SeamsThatDoNotFit(land_, posts, x, y, Meeting::Eastward) +
               SeamsThatDoNotFit(land_, posts, x - 1, y, Meeting::Eastward) +
               SeamsThatDoNotFit(land_, posts, x, y, Meeting::Northward) +
               SeamsThatDoNotFit(land_, posts, x, y - 1, Meeting::Northward);
    }

    const LandGrid& Posts() const { return problem_.Posts; }

private:
    PostPlace Place(int32_t x, int32_t y) const { return {origin_.X + x, origin_.Y + y}; }

    // Among tiles of the same grounds and ways that are as good as what was found one is
    // drawn, so that no pattern shows.
    void Vary() {
        for (int32_t y = 0; y < before_.Height; ++y)
            for (int32_t x = 0; x < before_.Width; ++x) {
                const auto& choices = problem_.Choices[before_.At(x, y)];
                if (choices.empty())
                    continue;
                const int32_t now = problem_.Posts(x, y);
                if (now == before_(x, y))
                    continue;
                const auto cost = [&](int32_t tile) {
                    return static_cast<double>(land_.CostOf(tile)) +
                           SeamCosts(land_, problem_.Posts, x, y, tile);
                };
                const double most = cost(now) + AsGood;
                std::vector<int32_t> asGood;
                for (const TileChoice& choice : choices)
                    if (land_.GroundsOf(choice.Tile) == land_.GroundsOf(now) &&
                        WaysAt(land_, choice.Tile) == WaysAt(land_, now) &&
                        cost(choice.Tile) <= most)
                        asGood.push_back(choice.Tile);
                const PostPlace place = Place(x, y);
                problem_.Posts(x, y) = DrawByUse(land_, asGood, place.X, place.Y, seed_);
            }
    }

    // How far a post that stays is from the nearest one that changes; 0 for one that
    // changes and for one out of reach.
    int32_t ReachOf(int32_t x, int32_t y) const {
        if (changed_[before_.At(x, y)] != 0)
            return 0;
        int32_t nearest = WayReach + 1;
        for (int32_t otherY = std::max(y - WayReach, 0);
             otherY <= std::min(y + WayReach, before_.Height - 1); ++otherY)
            for (int32_t otherX = std::max(x - WayReach, 0);
                 otherX <= std::min(x + WayReach, before_.Width - 1); ++otherX)
                if (changed_[before_.At(otherX, otherY)] != 0)
                    nearest = std::min(
                        nearest, std::max(std::abs(otherX - x), std::abs(otherY - y)));
        return nearest > WayReach ? 0 : nearest;
    }

    const LearnedLand& land_;
    const LandGrid before_;
    SeamProblem problem_;
    PostPlace origin_;
    uint32_t seed_;
    PostMarks changed_;
    int64_t unfilled_ = 0;
};

} // namespace

int32_t ReachOfBrush(const LearnedLand& land) {
    return land.Steps().Longest() + WayReach + 2;
}

int64_t PaintGrid(const LearnedLand& land, LandGrid& posts, const PostMarks& marked,
                  int32_t tileIndex, PostPlace origin, const BrushOptions& options) {
    const int16_t ground = GroundOf(land, tileIndex);
    PostMarks painted = marked;
    if (options.KeepWays)
        for (size_t i = 0; i < painted.size(); ++i)
            if (!WaysAt(land, posts.Tiles[i]).None())
                painted[i] = 0;
    CornerPlan plan(land, posts);
    options.Inside ? plan.PaintInward(painted, ground)
                   : plan.PaintOutward(painted, ground);
    const std::vector<int32_t> plain = PlainTiles(land, tileIndex);
    const GroundsOfTile allOfIt{ground, ground, ground, ground};
    BrushWork work(land, posts, origin, options.Seed);
    for (int32_t y = 0; y < posts.Height; ++y)
        for (int32_t x = 0; x < posts.Width; ++x) {
            const bool isPainted = painted[posts.At(x, y)] != 0;
            if (isPainted && !plain.empty() && plan.GroundsAt(x, y) == allOfIt)
                work.Put(
                    x, y,
                    DrawByUse(land, plain, origin.X + x, origin.Y + y, options.Seed));
            else if (isPainted || plan.Changes(x, y))
                work.OfferByPlan(plan, x, y);
        }
    work.Solve();
    if (!options.Inside)
        work.MendRound();
    posts = work.Posts();
    return work.Unfilled();
}

int64_t MendGrid(const LearnedLand& land, LandGrid& posts, const PostMarks& marked,
                 PostPlace origin, const BrushOptions& options) {
    CornerPlan plan(land, posts);
    plan.FindInside(marked);
    BrushWork work(land, posts, origin, options.Seed);
    for (int32_t y = 0; y < posts.Height; ++y)
        for (int32_t x = 0; x < posts.Width; ++x)
            if (marked[posts.At(x, y)] != 0)
                work.OfferAll(plan, x, y);
    work.Solve();
    posts = work.Posts();
    return work.Unfilled();
}

BrushResult PaintGround(const LearnedLand& land, const Terrain& terrain,
                        std::span<const RowSpan> spans, int32_t tile,
                        const BrushOptions& options) {
    RequireLearned(land);
    const int32_t index = land.Tiles().IndexOf(tile);
    if (index < 0)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "the catalogue has no tile " + std::to_string(tile));
    if (spans.empty())
        return {};
    const BrushPart part = PartRound(land, terrain, spans, ReachOfBrush(land));
    LandGrid posts = part.Posts;
    const int64_t unfilled =
        PaintGrid(land, posts, part.Marked, index, part.Origin, options);
    return ResultOf(land, terrain, part, posts, unfilled);
}

BrushResult MendSeams(const LearnedLand& land, const Terrain& terrain,
                      std::span<const RowSpan> spans, const BrushOptions& options) {
    RequireLearned(land);
    if (spans.empty())
        return {};
    const BrushPart part = PartRound(land, terrain, spans, ReachOfBrush(land));
    LandGrid posts = part.Posts;
    const int64_t unfilled = MendGrid(land, posts, part.Marked, part.Origin, options);
    return ResultOf(land, terrain, part, posts, unfilled);
}

std::vector<Seam> BadSeams(const LearnedLand& land, const Terrain& terrain,
                           const PostBox& box) {
    const PostBox cut = CutToGrid(box, terrain.MapWidth);
    if (cut.X2 < cut.X1 || cut.Y2 < cut.Y1)
        return {};
    // With the neighbours round it.
    const auto [origin, posts] =
        PostsOf(land, terrain, {cut.X1 - 1, cut.Y1 - 1, cut.X2 + 1, cut.Y2 + 1});
    std::vector<Seam> seams;
    for (int32_t y = std::max(cut.Y1 - 1, 0); y <= cut.Y2; ++y)
        for (int32_t x = std::max(cut.X1 - 1, 0); x <= cut.X2; ++x)
            for (const Meeting meeting : {Meeting::Eastward, Meeting::Northward}) {
                // One of the two posts lies in the box.
                const PostPlace next = meeting == Meeting::Eastward ? PostPlace{x + 1, y}
                                                                    : PostPlace{x, y + 1};
                if ((Contains(cut, {x, y}) || Contains(cut, next)) &&
                    SeamsThatDoNotFit(land, posts, x - origin.X, y - origin.Y, meeting) !=
                        0)
                    seams.push_back({{x, y}, meeting});
            }
    return seams;
}

} // namespace vardenix
