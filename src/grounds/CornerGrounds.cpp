#include "grounds/CornerGrounds.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <span>
#include <utility>

namespace vardenix {

namespace {

constexpr double MostLinked = 30;
constexpr double LeastVariance = 50;
constexpr double WorthMerging = 0.1;
constexpr int LabelRounds = 100;
constexpr int LastVotes = 3;
constexpr int LeastPatterns = 10; // of the 14 that two grounds can share four corners in

struct CornerLink {
    uint32_t First = 0; // 4 * tile + corner
    uint32_t Second = 0;
    float Weight = 0;
};

// The sample of a side that lies nearest a corner, and the one beside it.
std::array<std::array<uint8_t, 3>, 2> ColorsAt(const SideColors& side, bool atEnd) {
    return atEnd ? std::array{side[SideSamples - 1], side[SideSamples - 2]}
                 : std::array{side[0], side[1]};
}

double SquaredDifference(const SideColors& a, const SideColors& b, bool atEnd) {
    const auto one = ColorsAt(a, atEnd);
    const auto other = ColorsAt(b, atEnd);
    double sum = 0;
    for (size_t i = 0; i < one.size(); ++i)
        for (size_t part = 0; part < 3; ++part) {
            const double difference = double{one[i][part] * 1.0} - other[i][part];
            sum += difference * difference;
        }
    return sum;
}

// Where two tiles meet they share two corners: at the beginning of the side and at its
// end.
struct SharedCorner {
    Corner First;
    Corner Second;
    bool AtEnd;
};
constexpr std::array<SharedCorner, 2> EastwardCorners{
    {{SouthEast, SouthWest, false}, {NorthEast, NorthWest, true}}};
constexpr std::array<SharedCorner, 2> NorthwardCorners{
    {{NorthWest, SouthWest, false}, {NorthEast, SouthEast, true}}};

uint32_t CornerId(size_t tile, Corner corner) {
    return static_cast<uint32_t>(tile * CornerCount + corner);
}

// Links as seen, their weight being the squared difference at first.
void AddLinks(const LearnedTiles& tiles, const MeetingCounts& counts, Meeting meeting,
              std::vector<CornerLink>& links, std::vector<float>& times) {
    const auto& corners =
        meeting == Meeting::Eastward ? EastwardCorners : NorthwardCorners;
    for (size_t a = 0; a < tiles.Count(); ++a)
        for (size_t b = 0; b < tiles.Count(); ++b) {
            if (counts(a, b) == 0)
                continue;
            const bool known = tiles.Sides[a].Known && tiles.Sides[b].Known;
            for (const SharedCorner& corner : corners) {
                const double square =
                    known ? SquaredDifference(tiles.Sides[a].Colors[FirstSide(meeting)],
                                              tiles.Sides[b].Colors[SecondSide(meeting)],
                                              corner.AtEnd)
                          : 0;
                links.push_back({CornerId(a, corner.First), CornerId(b, corner.Second),
                                 static_cast<float>(square)});
                times.push_back(counts(a, b));
            }
        }
}

std::vector<CornerLink> LinksOf(const LearnedTiles& tiles, const MeetingCounts& eastward,
                                const MeetingCounts& northward) {
    std::vector<CornerLink> links;
    std::vector<float> times;
    AddLinks(tiles, eastward, Meeting::Eastward, links, times);
    AddLinks(tiles, northward, Meeting::Northward, links, times);
    if (links.empty())
        return links;
    std::vector<float> squares;
    squares.reserve(links.size());
    for (const CornerLink& link : links)
        squares.push_back(link.Weight);
    const size_t ninetieth = squares.size() * 9 / 10;
    std::nth_element(squares.begin(), squares.begin() + static_cast<ptrdiff_t>(ninetieth),
                     squares.end());
    const double variance = std::max<double>(squares[ninetieth], LeastVariance);
    for (size_t i = 0; i < links.size(); ++i)
        links[i].Weight = static_cast<float>(std::min(times[i] - 0.5, MostLinked) *
                                             std::exp(-links[i].Weight / (2 * variance)));
    return links;
}

// The links of each corner, one list behind the other.
class LinkTable {
public:
    struct Entry {
        uint32_t Other;
        float Weight;
    };

    LinkTable(const std::vector<CornerLink>& links, size_t corners)
        : first_(corners + 1), totals_(corners) {
        for (const CornerLink& link : links) {
            ++first_[link.First + 1];
            ++first_[link.Second + 1];
            totals_[link.First] += link.Weight;
            totals_[link.Second] += link.Weight;
        }
        std::partial_sum(first_.begin(), first_.end(), first_.begin());
        entries_.resize(links.size() * 2);
        std::vector<size_t> at(first_.begin(), first_.end() - 1);
        for (const CornerLink& link : links) {
            entries_[at[link.First]++] = {link.Second, link.Weight};
            entries_[at[link.Second]++] = {link.First, link.Weight};
        }
    }

    std::span<const Entry> Of(size_t corner) const {
        return std::span(entries_).subspan(first_[corner],
                                           first_[corner + 1] - first_[corner]);
    }
    double Total(size_t corner) const { return totals_[corner]; }
    size_t Corners() const { return totals_.size(); }

private:
    std::vector<size_t> first_;
    std::vector<double> totals_;
    std::vector<Entry> entries_;
};

using Labels = std::vector<uint32_t>; // by corner

// The label that most of a corner's links lead to, its own where that is as good, else
// the lowest.
uint32_t VotedLabel(const LinkTable& links, size_t corner, const Labels& labels,
                    std::vector<double>& votes, std::vector<uint32_t>& touched) {
    touched.clear();
    for (const auto& [other, weight] : links.Of(corner)) {
        const uint32_t label = labels[other];
        if (votes[label] == 0)
            touched.push_back(label);
        votes[label] += weight;
    }
    uint32_t best = labels[corner];
    double most = votes[best];
    for (const uint32_t label : touched)
        if (votes[label] > most * (1 + 1e-9) + 1e-12 ||
            (votes[label] >= most * (1 - 1e-9) && best != labels[corner] &&
             label < best)) {
            best = label;
            most = votes[label];
        }
    for (const uint32_t label : touched)
        votes[label] = 0;
    return best;
}

// In the order given, each corner at once; false when nothing changed.
bool VoteOnce(const LinkTable& links, const std::vector<uint32_t>& order,
              Labels& labels) {
    std::vector<double> votes(links.Corners());
    std::vector<uint32_t> touched;
    bool changed = false;
    for (const uint32_t corner : order) {
        const uint32_t label = VotedLabel(links, corner, labels, votes, touched);
        changed = changed || label != labels[corner];
        labels[corner] = label;
    }
    return changed;
}

// Corners with links, those with most first.
std::vector<uint32_t> MostLinkedFirst(const LinkTable& links) {
    std::vector<uint32_t> order;
    for (size_t corner = 0; corner < links.Corners(); ++corner)
        if (links.Total(corner) > 0)
            order.push_back(static_cast<uint32_t>(corner));
    std::ranges::stable_sort(
        order, [&](uint32_t a, uint32_t b) { return links.Total(a) > links.Total(b); });
    return order;
}

// Groups that hang together by a tenth of the links of the smaller one become one, the
// most tightly bound first.
void MergeGroups(const LinkTable& links, Labels& labels) {
    std::map<uint32_t, double> totals;
    std::map<std::pair<uint32_t, uint32_t>, double> between; // the lower label first
    for (size_t corner = 0; corner < links.Corners(); ++corner)
        for (const auto& [other, weight] : links.Of(corner)) {
            const uint32_t a = labels[corner];
            const uint32_t b = labels[other];
            totals[a] += weight;
            if (a < b)
                between[{a, b}] += weight;
        }
    for (;;) {
        std::pair<uint32_t, uint32_t> best;
        double tightest = 0;
        for (const auto& [pair, weight] : between) {
            const double bound =
                weight /
                std::max(std::min(totals[pair.first], totals[pair.second]), 1e-9);
            if (bound > tightest) {
                tightest = bound;
                best = pair;
            }
        }
        if (tightest < WorthMerging)
            return;
        const auto [kept, gone] = best;
        std::ranges::replace(labels, gone, kept);
        totals[kept] += totals[gone];
        std::map<std::pair<uint32_t, uint32_t>, double> merged;
        for (const auto& [pair, weight] : between) {
            const uint32_t a = pair.first == gone ? kept : pair.first;
            const uint32_t b = pair.second == gone ? kept : pair.second;
            if (a != b)
                merged[std::minmax(a, b)] += weight;
        }
        between = std::move(merged);
    }
}

// The two sides of a tile that end at a corner, and whether they end there.
struct CornerSides {
    Side One;
    bool OneAtEnd;
    Side Other;
    bool OtherAtEnd;
};
constexpr std::array<CornerSides, CornerCount> SidesAtCorner{{{South, false, West, false},
                                                              {South, true, East, false},
                                                              {North, false, West, true},
                                                              {North, true, East, true}}};

std::array<double, 12> LookOf(const LearnedTiles& tiles, size_t corner) {
    const TileSides& sides = tiles.Sides[corner / CornerCount];
    const CornerSides& at = SidesAtCorner[corner % CornerCount];
    std::array<double, 12> look{};
    size_t i = 0;
    for (const auto& colors : {ColorsAt(sides.Colors[at.One], at.OneAtEnd),
                               ColorsAt(sides.Colors[at.Other], at.OtherAtEnd)})
        for (const auto& color : colors)
            for (const uint8_t part : color)
                look[i++] = part;
    return look;
}

// Tiles that the map does not use: each corner is of the ground of the one that looks
// most like it.
void LabelUnlinked(const LearnedTiles& tiles, const LinkTable& links, Labels& labels) {
    std::vector<std::array<double, 12>> looks(links.Corners());
    for (size_t corner = 0; corner < links.Corners(); ++corner)
        looks[corner] = LookOf(tiles, corner);
    for (size_t corner = 0; corner < links.Corners(); ++corner) {
        if (links.Total(corner) > 0)
            continue;
        double nearest = -1;
        for (size_t other = 0; other < links.Corners(); ++other) {
            if (links.Total(other) == 0 || !tiles.Sides[other / CornerCount].Known)
                continue;
            double distance = 0;
            for (size_t i = 0; i < 12; ++i)
                distance += (looks[corner][i] - looks[other][i]) *
                            (looks[corner][i] - looks[other][i]);
            if (nearest < 0 || distance < nearest) {
                nearest = distance;
                labels[corner] = labels[other];
            }
        }
    }
}

CornerGrounds Numbered(const Labels& labels) {
    // Grounds get their numbers by the first tile that has them.
    std::map<uint32_t, int16_t> numbers;
    CornerGrounds grounds;
    grounds.Tiles.resize(labels.size() / CornerCount);
    for (size_t corner = 0; corner < labels.size(); ++corner) {
        const auto [at, isNew] =
            numbers.emplace(labels[corner], static_cast<int16_t>(numbers.size()));
        grounds.Tiles[corner / CornerCount][corner % CornerCount] = at->second;
    }
    grounds.Count = static_cast<int16_t>(numbers.size());
    return grounds;
}

// Of some grounds the neighbour of another that stands beside it most often, the lowest
// of several; -1 for none. Land that leads one way shall not be led another.
template <typename Neighbours>
int16_t MostTogether(const std::vector<int16_t>& some, int16_t other,
                     Neighbours neighbours, const std::vector<int64_t>& together) {
    const auto count = static_cast<size_t>(
        std::llround(std::sqrt(static_cast<double>(together.size()))));
    int16_t best = -1;
    int64_t most = -1;
    for (const int16_t ground : some) {
        const int64_t posts =
            together[static_cast<size_t>(other) * count + static_cast<size_t>(ground)];
        if (neighbours(other, ground) && posts > most) {
            most = posts;
            best = ground;
        }
    }
    return best;
}

} // namespace

CornerGrounds GroundsFrom(const LearnedTiles& tiles, const MeetingCounts& eastward,
                          const MeetingCounts& northward) {
    const LinkTable links(LinksOf(tiles, eastward, northward),
                          tiles.Count() * CornerCount);
    Labels labels(links.Corners());
    std::iota(labels.begin(), labels.end(), 0U);
    const std::vector<uint32_t> order = MostLinkedFirst(links);
    for (int round = 0; round < LabelRounds && VoteOnce(links, order, labels); ++round) {
    }
    MergeGroups(links, labels);
    for (int round = 0; round < LastVotes; ++round)
        VoteOnce(links, order, labels);
    LabelUnlinked(tiles, links, labels);
    return Numbered(labels);
}

GroundSteps::GroundSteps(const CornerGrounds& grounds, const std::vector<int32_t>& uses)
    : count_(static_cast<size_t>(grounds.Count)), distances_(count_ * count_, NoWay),
      next_(count_ * count_) {
    // The patterns that tiles of two grounds show, a bit each, by which corners are the
    // higher one's.
    std::vector<uint16_t> patterns(count_ * count_, 0);
    std::vector<int64_t> together(count_ * count_, 0); // posts of both
    for (size_t i = 0; i < grounds.Tiles.size(); ++i) {
        const GroundsOfTile& tile = grounds.Tiles[i];
        const auto [low, high] = std::ranges::minmax(tile);
        if (low == high || std::ranges::any_of(tile, [low = low, high = high](int16_t g) {
                return g != low && g != high;
            }))
            continue;
        unsigned pattern = 0;
        for (size_t corner = 0; corner < CornerCount; ++corner)
            pattern |= (tile[corner] == high ? 1U : 0U) << corner;
        patterns[At(low, high)] =
            static_cast<uint16_t>(patterns[At(low, high)] | 1U << pattern);
        together[At(low, high)] += uses[i];
        together[At(high, low)] += uses[i];
    }
    const auto neighbours = [&](int16_t a, int16_t b) {
        return __builtin_popcount(patterns[At(std::min(a, b), std::max(a, b))]) >=
               LeastPatterns;
    };
    for (int16_t to = 0; to < grounds.Count; ++to) {
        std::vector<int16_t> wave{to};
        distances_[At(to, to)] = 0;
        next_[At(to, to)] = to;
        for (int16_t steps = 1; !wave.empty(); ++steps) {
            std::vector<int16_t> reached;
            for (int16_t from = 0; from < grounds.Count; ++from) {
                if (distances_[At(from, to)] != NoWay)
                    continue;
                const int16_t over = MostTogether(wave, from, neighbours, together);
                if (over < 0)
                    continue;
                next_[At(from, to)] = over;
                reached.push_back(from);
            }
            for (const int16_t from : reached)
                distances_[At(from, to)] = steps;
            if (!reached.empty())
                longest_ = std::max(longest_, steps);
            wave = std::move(reached); // rising, as they were looked at
        }
        for (int16_t from = 0; from < grounds.Count; ++from)
            if (distances_[At(from, to)] == NoWay)
                next_[At(from, to)] = from;
    }
}

} // namespace vardenix
