#include "grounds/SeamSolver.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vardenix {

namespace {

constexpr size_t MostChoices = 64;
constexpr int MostSweeps = 20;
constexpr double WorthAnotherSweep = 1e-6;

struct Neighbour {
    int32_t DX;
    int32_t DY;
    Meeting How;
    bool PostIsFirst;
};
constexpr Neighbour Neighbours[] = {{0, 1, Meeting::Northward, true},
                                    {1, 0, Meeting::Eastward, true},
                                    {0, -1, Meeting::Northward, false},
                                    {-1, 0, Meeting::Eastward, false}};

float SeamCost(const LearnedLand& land, const Neighbour& side, int32_t tile,
               int32_t other) {
    const auto a = static_cast<size_t>(side.PostIsFirst ? tile : other);
    const auto b = static_cast<size_t>(side.PostIsFirst ? other : tile);
    return land.Fits(side.How).Cost(a, b);
}

class Solver {
public:
    Solver(const LearnedLand& land, SeamProblem& problem)
        : land_(land), posts_(problem.Posts), choices_(problem.Choices) {
        for (int32_t y = 0; y < posts_.Height; ++y)
            for (int32_t x = 0; x < posts_.Width; ++x)
                if (IsFree(x, y))
                    free_.emplace_back(x, y);
        Prune();
    }

    void Run() {
        const LandGrid asItStands = posts_;
        LandGrid best;
        double least = std::numeric_limits<double>::max();
        for (int start = 0; start < Starts; ++start) {
            posts_ = asItStands;
            Begin(start);
            const double cost = Improve();
            if (cost < least - WorthAnotherSweep) {
                least = cost;
                best = posts_;
            }
        }
        if (!best.Tiles.empty())
            posts_ = std::move(best);
    }

private:
    static constexpr int Starts = 4;

    bool IsFree(int32_t x, int32_t y) const { return !choices_[posts_.At(x, y)].empty(); }
    // Seams to neighbours that stand, those to free ones apart.
    double FixedSeams(int32_t x, int32_t y, int32_t tile) const {
        double cost = 0;
        for (const Neighbour& side : Neighbours) {
            const int32_t nextX = x + side.DX;
            const int32_t nextY = y + side.DY;
            if (posts_.Has(nextX, nextY) && !IsFree(nextX, nextY) &&
                posts_(nextX, nextY) >= 0)
                cost += static_cast<double>(
                    SeamCost(land_, side, tile, posts_(nextX, nextY)));
        }
        return cost;
    }

    void Prune() {
        for (const auto& [x, y] : free_) {
            auto& choices = choices_[posts_.At(x, y)];
            if (choices.size() <= MostChoices)
                continue;
            std::vector<std::pair<double, TileChoice>> ranked;
            for (const TileChoice& choice : choices)
                ranked.emplace_back(static_cast<double>(choice.Cost) +
                                        FixedSeams(x, y, choice.Tile),
                                    choice);
            std::ranges::stable_sort(ranked, {},
                                     [](const auto& each) { return each.first; });
            choices.clear();
            for (size_t i = 0; i < MostChoices; ++i)
                choices.push_back(ranked[i].second);
            std::ranges::sort(choices, {}, &TileChoice::Tile);
        }
    }

    // As it stands where that is allowed; or post by post the best beside what is there
    // already, from the south west, from the north east, or by columns.
    void Begin(int start) {
        std::vector<std::pair<int32_t, int32_t>> order = free_;
        if (start == 1)
            std::ranges::reverse(order);
        if (start == 2)
            std::ranges::sort(order);
        if (start < 3)
            for (const auto& [x, y] : order)
                posts_(x, y) = -1;
        for (const auto& [x, y] : order) {
            const auto& choices = choices_[posts_.At(x, y)];
            const bool stands =
                start == 3 &&
                std::ranges::any_of(choices, [&, x = x, y = y](const auto& c) {
                    return c.Tile == posts_(x, y);
                });
            if (!stands)
                posts_(x, y) = BestAlone(x, y);
        }
    }

    int32_t BestAlone(int32_t x, int32_t y) const {
        const auto& choices = choices_[posts_.At(x, y)];
        const auto cost = [&](const TileChoice& choice) {
            return static_cast<double>(choice.Cost) +
                   SeamCosts(land_, posts_, x, y, choice.Tile);
        };
        return std::ranges::min_element(choices, {}, cost)->Tile;
    }

    double Improve() {
        double cost = TotalCost();
        for (int sweep = 0; sweep < MostSweeps; ++sweep) {
            SweepLines(false);
            SweepLines(true);
            const double now = TotalCost();
            if (now > cost - WorthAnotherSweep)
                return std::min(now, cost);
            cost = now;
        }
        return cost;
    }

    double TotalCost() const {
        double total = 0;
        for (const auto& [x, y] : free_) {
            for (const TileChoice& choice : choices_[posts_.At(x, y)])
                if (choice.Tile == posts_(x, y))
                    total += static_cast<double>(choice.Cost);
            for (const Neighbour& side : Neighbours) {
                const int32_t nextX = x + side.DX;
                const int32_t nextY = y + side.DY;
                // A seam between two free posts belongs to one of them.
                if (posts_.Has(nextX, nextY) && posts_(nextX, nextY) >= 0 &&
                    (side.PostIsFirst || !IsFree(nextX, nextY)))
                    total += static_cast<double>(
                        SeamCost(land_, side, posts_(x, y), posts_(nextX, nextY)));
            }
        }
        return total;
    }

    void SweepLines(bool columns) {
        const int32_t lines = columns ? posts_.Width : posts_.Height;
        const int32_t length = columns ? posts_.Height : posts_.Width;
        for (int32_t line = 0; line < lines; ++line)
            for (int32_t from = 0; from < length; ++from) {
                int32_t to = from;
                while (to < length && IsFree(columns ? line : to, columns ? to : line))
                    ++to;
                if (to > from)
                    SolveRun(columns, line, from, to);
                from = to;
            }
    }

    // The cheapest tiles of the posts `from` to `to` - 1 of a line, exactly, while all
    // round it stays.
    void SolveRun(bool columns, int32_t line, int32_t from, int32_t to) {
        const Neighbour& onward = Neighbours[columns ? 0 : 1];
        const auto count = static_cast<size_t>(to - from);
        std::vector<std::vector<double>> costs(count);
        std::vector<std::vector<size_t>> before(count);
        for (size_t i = 0; i < count; ++i) {
            const int32_t at = from + static_cast<int32_t>(i);
            const int32_t x = columns ? line : at;
            const int32_t y = columns ? at : line;
            const auto& choices = choices_[posts_.At(x, y)];
            costs[i].resize(choices.size());
            before[i].resize(choices.size());
            for (size_t k = 0; k < choices.size(); ++k) {
                costs[i][k] =
                    static_cast<double>(choices[k].Cost) +
                    SeamsBeside(columns, x, y, choices[k].Tile, i == 0, i + 1 == count);
                if (i == 0)
                    continue;
                const auto& last =
                    choices_[columns ? posts_.At(x, y - 1) : posts_.At(x - 1, y)];
                double least = std::numeric_limits<double>::max();
                for (size_t j = 0; j < last.size(); ++j) {
                    const double cost =
                        costs[i - 1][j] +
                        static_cast<double>(
                            SeamCost(land_, onward, last[j].Tile, choices[k].Tile));
                    if (cost < least) {
                        least = cost;
                        before[i][k] = j;
                    }
                }
                costs[i][k] += least;
            }
        }
        auto chosen = static_cast<size_t>(std::ranges::min_element(costs.back()) -
                                          costs.back().begin());
        for (size_t i = count; i-- > 0;) {
            const int32_t at = from + static_cast<int32_t>(i);
            const int32_t x = columns ? line : at;
            const int32_t y = columns ? at : line;
            posts_(x, y) = choices_[posts_.At(x, y)][chosen].Tile;
            chosen = before[i][chosen];
        }
    }

    // Seams of a post of a run to what is not in the run.
    double SeamsBeside(bool columns, int32_t x, int32_t y, int32_t tile, bool first,
                       bool last) const {
        double cost = 0;
        for (const Neighbour& side : Neighbours) {
            const bool along = columns ? side.DX == 0 : side.DY == 0;
            const bool ends = side.PostIsFirst ? last : first;
            const int32_t nextX = x + side.DX;
            const int32_t nextY = y + side.DY;
            if ((along && !ends) || !posts_.Has(nextX, nextY) || posts_(nextX, nextY) < 0)
                continue;
            cost +=
                static_cast<double>(SeamCost(land_, side, tile, posts_(nextX, nextY)));
        }
        return cost;
    }

    const LearnedLand& land_;
    LandGrid& posts_;
    std::vector<std::vector<TileChoice>>& choices_;
    std::vector<std::pair<int32_t, int32_t>> free_; // row by row
};

} // namespace

double SeamCosts(const LearnedLand& land, const LandGrid& posts, int32_t x, int32_t y,
                 int32_t tile) {
    double cost = 0;
    for (const Neighbour& side : Neighbours) {
        const int32_t nextX = x + side.DX;
        const int32_t nextY = y + side.DY;
        if (posts.Has(nextX, nextY) && posts(nextX, nextY) >= 0)
            cost += static_cast<double>(SeamCost(land, side, tile, posts(nextX, nextY)));
    }
    return cost;
}

void SolveSeams(const LearnedLand& land, SeamProblem& problem) {
    Solver(land, problem).Run();
}

} // namespace vardenix
