#include "grounds/CornerPlan.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <limits>
#include <tuple>

namespace vardenix {

namespace {

constexpr int MostMoves = 1500;
constexpr size_t TabuLength = 25;
constexpr size_t MostLookedAt = 24; // posts without a tile, in one move

} // namespace

CornerPlan::CornerPlan(const LearnedLand& land, const LandGrid& posts)
    : land_(land), posts_(posts), old_(VotedGrounds(land, posts)), new_(old_),
      freedom_(old_.size(), Freedom::Kept), filled_(posts.Tiles.size()) {}

void CornerPlan::PaintOutward(const PostMarks& painted, int16_t ground) {
    filled_ = painted;
    constexpr int32_t Far = std::numeric_limits<int32_t>::max();
    std::vector<int32_t> distance(old_.size(), Far);
    std::deque<std::pair<int32_t, int32_t>> wave;
    for (int32_t y = 0; y < posts_.Height; ++y)
        for (int32_t x = 0; x < posts_.Width; ++x)
            for (int32_t i = 0; i < 4 && painted[posts_.At(x, y)] != 0; ++i) {
                int32_t& here = distance[At(x + (i & 1), y + (i >> 1))];
                if (here == Far)
                    wave.emplace_back(x + (i & 1), y + (i >> 1));
                here = 0;
            }
    for (; !wave.empty(); wave.pop_front()) {
        const auto [x, y] = wave.front();
        const int32_t next = distance[At(x, y)] + 1;
        if (next > land_.Steps().Longest())
            continue;
        for (int32_t nextY = std::max(y - 1, 0); nextY <= std::min(y + 1, posts_.Height);
             ++nextY)
            for (int32_t nextX = std::max(x - 1, 0);
                 nextX <= std::min(x + 1, posts_.Width); ++nextX)
                if (distance[At(nextX, nextY)] == Far) {
                    distance[At(nextX, nextY)] = next;
                    wave.emplace_back(nextX, nextY);
                }
    }
    for (size_t i = 0; i < old_.size(); ++i) {
        freedom_[i] = distance[i] == 0 ? Freedom::Kept : Freedom::Movable;
        if (distance[i] == 0)
            new_[i] = ground;
        while (new_[i] >= 0 && distance[i] != Far &&
               land_.Steps().Distance(new_[i], ground) > distance[i] &&
               land_.Steps().Next(new_[i], ground) != new_[i])
            new_[i] = land_.Steps().Next(new_[i], ground);
    }
    Repair();
}

bool CornerPlan::IsInside(const PostMarks& marked, int32_t x, int32_t y) const {
    bool any = false;
    for (int32_t dy = -1; dy <= 0; ++dy)
        for (int32_t dx = -1; dx <= 0; ++dx) {
            if (!posts_.Has(x + dx, y + dy))
                continue;
            any = true;
            if (marked[posts_.At(x + dx, y + dy)] == 0)
                return false;
        }
    return any;
}

CornerPlan::Violation CornerPlan::WorstViolation(int32_t x, int32_t y,
                                                 int16_t ground) const {
    const int32_t reach = land_.Steps().Longest();
    Violation worst;
    for (int32_t otherY = std::max(y - reach, 0);
         otherY <= std::min(y + reach, posts_.Height); ++otherY)
        for (int32_t otherX = std::max(x - reach, 0);
             otherX <= std::min(x + reach, posts_.Width); ++otherX) {
            const size_t at = At(otherX, otherY);
            if (freedom_[at] != Freedom::Kept || new_[at] < 0)
                continue;
            const int32_t distance = std::max(std::abs(otherX - x), std::abs(otherY - y));
            const int32_t steps = land_.Steps().Distance(ground, new_[at]) - distance;
            if (steps > worst.Steps)
                worst = {steps, new_[at]};
        }
    return worst;
}

void CornerPlan::PaintInward(const PostMarks& painted, int16_t ground) {
    filled_ = painted;
    for (int32_t y = 0; y <= posts_.Height; ++y)
        for (int32_t x = 0; x <= posts_.Width; ++x)
            if (IsInside(painted, x, y))
                freedom_[At(x, y)] = Freedom::Movable;
    for (int32_t y = 0; y <= posts_.Height; ++y)
        for (int32_t x = 0; x <= posts_.Width; ++x) {
            if (freedom_[At(x, y)] == Freedom::Kept)
                continue;
            new_[At(x, y)] = ground;
            StepTowardsKept(x, y);
        }
    Repair();
}

void CornerPlan::StepTowardsKept(int32_t x, int32_t y) {
    int16_t& now = new_[At(x, y)];
    for (int32_t step = 0; step < land_.GroundCount(); ++step) {
        const Violation worst = WorstViolation(x, y, now);
        if (worst.Steps <= 0)
            break;
        now = land_.Steps().Next(now, worst.Towards);
    }
}

void CornerPlan::SpreadUnknown() {
    for (bool changed = true; changed;) {
        changed = false;
        const std::vector<int16_t> before = new_;
        for (int32_t y = 0; y <= posts_.Height; ++y)
            for (int32_t x = 0; x <= posts_.Width; ++x) {
                if (before[At(x, y)] >= 0)
                    continue;
                for (const auto& [dx, dy] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
                    const int32_t nextX = x + dx;
                    const int32_t nextY = y + dy;
                    if (nextX < 0 || nextY < 0 || nextX > posts_.Width ||
                        nextY > posts_.Height || before[At(nextX, nextY)] < 0)
                        continue;
                    new_[At(x, y)] = before[At(nextX, nextY)];
                    changed = true;
                    break;
                }
            }
    }
}

void CornerPlan::FindInside(const PostMarks& marked) {
    filled_ = marked;
    LandGrid others = posts_;
    for (size_t i = 0; i < marked.size(); ++i)
        if (marked[i] != 0)
            others.Tiles[i] = -1;
    // What lies at the edge is as the posts beyond it have it.
    const std::vector<int16_t> round = VotedGrounds(land_, others);
    for (int32_t y = 0; y <= posts_.Height; ++y)
        for (int32_t x = 0; x <= posts_.Width; ++x) {
            const size_t at = At(x, y);
            if (IsInside(marked, x, y))
                freedom_[at] = Freedom::Movable;
            else if (round[at] >= 0)
                new_[at] = round[at];
        }
    SpreadUnknown();
    for (int32_t y = 0; y <= posts_.Height; ++y)
        for (int32_t x = 0; x <= posts_.Width; ++x) {
            if (freedom_[At(x, y)] != Freedom::Kept && new_[At(x, y)] >= 0)
                StepTowardsKept(x, y);
        }
    Repair();
}

GroundsOfTile CornerPlan::GroundsAt(int32_t x, int32_t y) const {
    return {new_[At(x, y)], new_[At(x + 1, y)], new_[At(x, y + 1)],
            new_[At(x + 1, y + 1)]};
}

bool CornerPlan::Changes(int32_t x, int32_t y) const {
    for (int32_t i = 0; i < 4; ++i) {
        const size_t at = At(x + (i & 1), y + (i >> 1));
        if (new_[at] != old_[at])
            return true;
    }
    return false;
}

bool CornerPlan::IsBad(int32_t x, int32_t y) const {
    if (!posts_.Has(x, y) || (filled_[posts_.At(x, y)] == 0 && !Changes(x, y)))
        return false;
    return land_.TilesWith(GroundsAt(x, y)).empty();
}

int CornerPlan::BadRound(int32_t x, int32_t y) const {
    return IsBad(x - 1, y - 1) + IsBad(x, y - 1) + IsBad(x - 1, y) + IsBad(x, y);
}

void CornerPlan::Repair() {
    std::vector<std::pair<int32_t, int32_t>> bad;
    for (int32_t y = 0; y < posts_.Height; ++y)
        for (int32_t x = 0; x < posts_.Width; ++x)
            if (IsBad(x, y))
                bad.emplace_back(y, x);
    std::deque<size_t> tabu;
    std::vector<int16_t> best = new_;
    size_t fewest = bad.size();
    for (int move = 0; move < MostMoves && !bad.empty(); ++move) {
        // Bad posts more, steps from the old ground, row, column, ground.
        using Rank = std::tuple<int, int, int32_t, int32_t, int16_t>;
        Rank first{std::numeric_limits<int>::max(), 0, 0, 0, 0};
        for (size_t i = 0; i < std::min(bad.size(), MostLookedAt); ++i)
            for (int32_t corner = 0; corner < 4; ++corner) {
                const int32_t x = bad[i].second + (corner & 1);
                const int32_t y = bad[i].first + (corner >> 1);
                const size_t at = At(x, y);
                if (freedom_[at] == Freedom::Kept || new_[at] < 0 ||
                    std::ranges::find(tabu, at) != tabu.end())
                    continue;
                const int16_t now = new_[at];
                const int before = BadRound(x, y);
                for (int16_t ground = 0; ground < land_.GroundCount(); ++ground) {
                    if (ground == now)
                        continue;
                    new_[at] = ground;
                    const int more = BadRound(x, y) - before;
                    const int steps =
                        old_[at] < 0 ? 0 : land_.Steps().Distance(ground, old_[at]);
                    first = std::min(first, Rank{more, steps, y, x, ground});
                }
                new_[at] = now;
            }
        const auto [more, steps, y, x, ground] = first;
        if (more == std::numeric_limits<int>::max()) {
            if (tabu.empty())
                break;
            tabu.pop_front();
            continue;
        }
        new_[At(x, y)] = ground;
        tabu.push_back(At(x, y));
        if (tabu.size() > TabuLength)
            tabu.pop_front();
        for (int32_t postY = y - 1; postY <= y; ++postY)
            for (int32_t postX = x - 1; postX <= x; ++postX) {
                const std::pair post{postY, postX};
                const auto place = std::ranges::lower_bound(bad, post);
                const bool listed = place != bad.end() && *place == post;
                const bool isBad = IsBad(postX, postY);
                if (listed && !isBad)
                    bad.erase(place);
                else if (!listed && isBad)
                    bad.insert(place, post);
            }
        if (bad.size() < fewest) {
            fewest = bad.size();
            best = new_;
        }
    }
    new_ = std::move(best);
}

} // namespace vardenix
