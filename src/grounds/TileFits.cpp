#include "grounds/TileFits.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vardenix {

namespace {

constexpr int Rounds = 6;
constexpr double LeastRate = 0.003;
constexpr double MostCountUsed = 8;
constexpr double MostEvidence = 6; // against, of pictures and of ways
constexpr double MostLikeness = 4; // for, of pictures
constexpr double MostJoined = 2;   // for, of ways
// Doubtful pairs are not complained of.
constexpr double LeastOdds = -1;
constexpr size_t Bins = 63;
constexpr uint8_t NoBin = 63; // a tile has no picture
constexpr float BinWidth = 2; // of DifferenceOf
constexpr size_t WayStates = 27;

// Of ways over two sides that meet: for each of the three kinds none, both or one side.
size_t WayState(uint8_t first, uint8_t second) {
    size_t state = 0;
    for (unsigned kind = 0; kind < 3; ++kind) {
        const unsigned a = first >> kind & 1U;
        const unsigned b = second >> kind & 1U;
        state = state * 3 + (a != b ? 2 : a);
    }
    return state;
}

double Logit(double p) { return std::log(p / (1 - p)); }

// Non-increasing, by the mean of neighbours that are not, each counted by its weight.
void MakeNonIncreasing(std::array<double, Bins>& values,
                       const std::array<double, Bins>& weights) {
    struct Block {
        double Mean;
        double Weight;
        size_t Count;
    };
    std::vector<Block> blocks;
    for (size_t i = 0; i < Bins; ++i) {
        blocks.push_back({values[i], weights[i], 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].Mean < blocks.back().Mean) {
            const Block last = blocks.back();
            blocks.pop_back();
            Block& before = blocks.back();
            const double weight = before.Weight + last.Weight;
            before.Mean =
                (before.Mean * before.Weight + last.Mean * last.Weight) / weight;
            before.Weight = weight;
            before.Count += last.Count;
        }
    }
    size_t i = 0;
    for (const Block& block : blocks)
        for (size_t k = 0; k < block.Count; ++k)
            values[i++] = block.Mean;
}

std::array<double, Bins> Smoothed(const std::array<double, Bins>& values) {
    std::array<double, Bins> smooth{};
    for (size_t i = 0; i < Bins; ++i)
        smooth[i] = values[i == 0 ? 0 : i - 1] / 4 + values[i] / 2 +
                    values[std::min(i + 1, Bins - 1)] / 4;
    return smooth;
}

// The sums over all pairs that one round of learning goes on with.
struct PairSums {
    double P = 0; // of the probability that a pair fits
    double Pairs = 0;
    double CP = 0;
    double C = 0;
    double EP = 0;
    double E = 0;
    std::array<double, Bins + 1> FitByBin{};
    std::array<double, Bins + 1> AllByBin{};
    std::array<double, WayStates> CountByWay{};
    std::array<double, WayStates> ExpectedByWay{};
};

// Log odds that a pair fits, as a round takes them from the sums of the last one.
struct Odds {
    double Prior = 0;
    double LogRate = 0; // log of F / h
    double RateGap = 0; // F - h
    std::array<double, Bins + 1> Picture{};
    std::array<double, WayStates> Way{};

    explicit Odds(const PairSums& sums) {
        const double p = std::clamp(sums.P / sums.Pairs, 1e-6, 1 - 1e-6);
        Prior = Logit(p);
        const double fitting = sums.EP > 0 ? sums.CP / sums.EP : 1;
        const double others = std::max(
            sums.E > sums.EP ? (sums.C - sums.CP) / (sums.E - sums.EP) : 0, LeastRate);
        LogRate = std::log(std::max(fitting, LeastRate) / others);
        RateGap = fitting - others;
        TakePictures(sums);
        // Of ways the map alone tells: they are too thin for the pictures of sides, and
        // pairs that look alike but for a way would vouch for one another.
        for (size_t way = 0; way < WayStates; ++way)
            Way[way] = std::clamp(
                std::log((sums.CountByWay[way] + 0.5) / (sums.ExpectedByWay[way] + 0.5)),
                -MostEvidence, MostJoined);
    }

    double Of(double count, double expected, size_t bin, size_t way) const {
        return Prior + std::min(count, MostCountUsed) * LogRate -
               std::min(expected * RateGap, MostCountUsed) + Picture[bin] + Way[way];
    }

private:
    static double LogRatio(double fit, double allFit, double other, double allOther) {
        // Half a pair more in each, so that what was never seen says nothing.
        const double a = (fit + 0.5) / (allFit + 1);
        const double b = (other + 0.5) / (allOther + 1);
        return std::clamp(std::log(a / b), -MostEvidence, MostLikeness);
    }

    void TakePictures(const PairSums& sums) {
        std::array<double, Bins> fit{};
        std::array<double, Bins> other{};
        double allFit = 0;
        double allOther = 0;
        for (size_t bin = 0; bin < Bins; ++bin) {
            fit[bin] = sums.FitByBin[bin];
            other[bin] = sums.AllByBin[bin] - fit[bin];
            allFit += fit[bin];
            allOther += other[bin];
        }
        fit = Smoothed(fit);
        other = Smoothed(other);
        std::array<double, Bins> ratio{};
        std::array<double, Bins> weights{};
        for (size_t bin = 0; bin < Bins; ++bin) {
            ratio[bin] = LogRatio(fit[bin], allFit, other[bin], allOther);
            weights[bin] = fit[bin] + other[bin] + 0.01;
        }
        MakeNonIncreasing(ratio, weights);
        std::copy(ratio.begin(), ratio.end(), Picture.begin());
    }
};

// What is known of every pair, beside the counts.
class Pairs {
public:
    Pairs(const LearnedTiles& tiles, const MeetingCounts& counts, Meeting meeting)
        : counts_(counts), count_(tiles.Count()), first_(FirstSide(meeting)),
          second_(SecondSide(meeting)), tiles_(tiles), bins_(count_ * count_),
          rows_(count_), columns_(count_) {
        for (size_t a = 0; a < count_; ++a)
            for (size_t b = 0; b < count_; ++b) {
                bins_[a * count_ + b] = BinOf(a, b);
                rows_[a] += counts(a, b);
                columns_[b] += counts(a, b);
                total_ += counts(a, b);
            }
    }

    double Expected(size_t a, size_t b) const {
        return total_ > 0 ? rows_[a] * columns_[b] / total_ : 0;
    }
    uint8_t Bin(size_t a, size_t b) const { return bins_[a * count_ + b]; }
    size_t Way(size_t a, size_t b) const {
        return WayState(tiles_.Ways[a].Over(first_), tiles_.Ways[b].Over(second_));
    }

    // probability(a, b, expected, bin, way) of each pair, summed up.
    template <typename Probability>
    PairSums Sum(Probability probability) const {
        std::array<std::array<uint8_t, 8>, 8> states{};
        for (uint8_t a = 0; a < 8; ++a)
            for (uint8_t b = 0; b < 8; ++b)
                states[a][b] = static_cast<uint8_t>(WayState(a, b));
        PairSums sums;
        sums.Pairs = static_cast<double>(count_) * static_cast<double>(count_);
        for (size_t a = 0; a < count_; ++a) {
            const auto& statesOfA = states[tiles_.Ways[a].Over(first_)];
            for (size_t b = 0; b < count_; ++b) {
                const double count = counts_(a, b);
                const double expected = Expected(a, b);
                const uint8_t bin = Bin(a, b);
                const uint8_t way = statesOfA[tiles_.Ways[b].Over(second_)];
                const double p = probability(count, expected, bin, way);
                sums.P += p;
                sums.CP += count * p;
                sums.C += count;
                sums.EP += expected * p;
                sums.E += expected;
                sums.FitByBin[bin] += p;
                sums.AllByBin[bin] += 1;
                sums.CountByWay[way] += count;
                sums.ExpectedByWay[way] += expected;
            }
        }
        return sums;
    }

private:
    uint8_t BinOf(size_t a, size_t b) const {
        const TileSides& one = tiles_.Sides[a];
        const TileSides& other = tiles_.Sides[b];
        if (!one.Known || !other.Known)
            return NoBin;
        const float bin =
            DifferenceOf(one.Colors[first_], other.Colors[second_]) / BinWidth;
        return static_cast<uint8_t>(std::min<float>(bin, Bins - 1));
    }

    const MeetingCounts& counts_;
    size_t count_;
    Side first_;
    Side second_;
    const LearnedTiles& tiles_;
    std::vector<uint8_t> bins_;
    std::vector<double> rows_;
    std::vector<double> columns_;
    double total_ = 0;
};

double Sigmoid(double odds) { return 1 / (1 + std::exp(-odds)); }

PairSums Learned(const Pairs& pairs) {
    PairSums sums = pairs.Sum([](double count, double expected, uint8_t, uint8_t) {
        return count > std::max(1.5 * expected, 0.5) ? 0.95 : 0.02;
    });
    for (int round = 1; round < Rounds; ++round) {
        const Odds odds(sums);
        sums = pairs.Sum([&](double count, double expected, uint8_t bin, uint8_t way) {
            return Sigmoid(odds.Of(count, expected, bin, way));
        });
    }
    return sums;
}

} // namespace

MeetingCounts::MeetingCounts(const LandGrid& map, size_t tiles, Meeting meeting)
    : tiles_(tiles), counts_(tiles * tiles) {
    const int32_t dx = meeting == Meeting::Eastward ? 1 : 0;
    const int32_t dy = 1 - dx;
    for (int32_t y = 0; y + dy < map.Height; ++y)
        for (int32_t x = 0; x + dx < map.Width; ++x) {
            const int32_t first = map(x, y);
            const int32_t second = map(x + dx, y + dy);
            if (first < 0 || second < 0)
                continue;
            uint8_t& count =
                counts_[static_cast<size_t>(first) * tiles + static_cast<size_t>(second)];
            count = static_cast<uint8_t>(std::min<int>(count + 1, Most));
        }
}

MeetingFits::MeetingFits(const LearnedTiles& tiles, const MeetingCounts& counts,
                         Meeting meeting)
    : tiles_(tiles.Count()), costs_(tiles_ * tiles_) {
    if (tiles_ == 0)
        return;
    const Pairs pairs(tiles, counts, meeting);
    const PairSums sums = Learned(pairs);
    const Odds odds(sums);
    prior_ = sums.P / sums.Pairs;
    std::array<double, Bins> fitting{};
    double allFitting = 0;
    for (size_t a = 0; a < tiles_; ++a)
        for (size_t b = 0; b < tiles_; ++b) {
            const uint8_t bin = pairs.Bin(a, b);
            const double likely =
                odds.Of(counts(a, b), pairs.Expected(a, b), bin, pairs.Way(a, b));
            const double doubt = std::min(std::log1p(std::exp(-likely)), 6.0) / 6;
            const double unlike =
                bin == NoBin ? 1 : std::min((bin + 0.5) * BinWidth / 20.0, 1.0);
            const double cost = doubt + 0.02 * unlike;
            costs_[a * tiles_ + b] =
                static_cast<uint16_t>(static_cast<unsigned>(cost * CostScale) << 1 |
                                      (likely >= LeastOdds ? 1U : 0U));
            if (likely >= 0 && bin != NoBin) {
                fitting[bin] += 1;
                allFitting += 1;
            }
        }
    double below = 0;
    for (size_t bin = 0; bin < Bins && below < 0.75 * allFitting; ++bin) {
        below += fitting[bin];
        usualDifference_ = static_cast<float>(bin + 1) * BinWidth;
    }
}

} // namespace vardenix
