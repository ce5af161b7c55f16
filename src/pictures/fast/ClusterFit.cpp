#include "pictures/fast/ClusterFit.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace vardenix {
namespace {

constexpr size_t Pixels = 16;
constexpr size_t Lanes = 4;
using Four = float __attribute__((vector_size(Lanes * sizeof(float))));
using FourInts = int32_t __attribute__((vector_size(Lanes * sizeof(int32_t))));

// Red, green and blue from 0 to 1.
using Colour = std::array<float, 3>;

// The different colours of a block.
struct Colours {
    explicit Colours(std::span<const uint8_t, 64> rgba);

    size_t Count = 0;
    std::array<Colour, Pixels> Points{};
    std::array<float, Pixels> Weights{};  // square roots of how many pixels have it
    std::array<size_t, Pixels> ByPixel{}; // the colour of each pixel
};

Colours::Colours(std::span<const uint8_t, 64> rgba) {
    const auto same = [&](size_t a, size_t b) {
        return std::equal(&rgba[a * 4], &rgba[a * 4] + 3, &rgba[b * 4]);
    };
    for (size_t i = 0; i < Pixels; ++i) {
        size_t j = 0;
        while (j < i && !same(i, j))
            ++j;
        if (j == i) {
            for (size_t c = 0; c < 3; ++c)
                Points[Count][c] = static_cast<float>(rgba[i * 4 + c]) / 255.0F;
            ByPixel[i] = Count++;
        } else {
            ByPixel[i] = ByPixel[j];
        }
        Weights[ByPixel[i]] += 1;
    }
    for (size_t i = 0; i < Count; ++i)
        Weights[i] = std::sqrt(Weights[i]);
}

// The direction in which the colours differ most, by a few steps of the power method.
Colour MainAxis(const Colours& colours) {
    float total = 0;
    Colour middle{};
    for (size_t i = 0; i < colours.Count; ++i) {
        total += colours.Weights[i];
        for (size_t c = 0; c < 3; ++c)
            middle[c] += colours.Weights[i] * colours.Points[i][c];
    }
    const float share = 1.0F / total;
    for (float& value : middle)
        value *= share;
    std::array<std::array<float, 3>, 3> covariance{};
    for (size_t i = 0; i < colours.Count; ++i) {
        Colour a{};
        for (size_t c = 0; c < 3; ++c)
            a[c] = colours.Points[i][c] - middle[c];
        for (size_t row = 0; row < 3; ++row)
            for (size_t column = row; column < 3; ++column)
                covariance[row][column] += a[row] * (colours.Weights[i] * a[column]);
    }
    for (size_t row = 0; row < 3; ++row)
        for (size_t column = 0; column < row; ++column)
            covariance[row][column] = covariance[column][row];
    Colour axis{1, 1, 1};
    constexpr int Steps = 8;
    for (int step = 0; step < Steps; ++step) {
        Colour next{};
        for (size_t c = 0; c < 3; ++c)
            next[c] = covariance[2][c] * axis[2] +
                      (covariance[1][c] * axis[1] + covariance[0][c] * axis[0]);
        const float factor = 1.0F / std::max(next[0], std::max(next[1], next[2]));
        for (size_t c = 0; c < 3; ++c)
            axis[c] = next[c] * factor;
    }
    return axis;
}

// A cut of the sorted colours: those before First belong to the start, those from Third
// on to the end; between them lie one or two colours of a mixture.
struct Cut {
    size_t First = 0;
    size_t Second = 0;
    size_t Third = 0;
    Colour Start{};
    Colour End{};
};

// Tries cuts of the colours of one block. A sum is one of red, green, blue and weight.
class Fit {
public:
    explicit Fit(const Colours& colours) : colours_(colours), count_(colours.Count) {
        Sort(MainAxis(colours));
        SumUp();
    }

    void Compress(std::span<uint8_t, 8> block) {
        const auto three = BestOfThree();
        const auto four = BestOfFour();
        if (four.second)
            Write(four.first, true, block);
        else
            Write(three.first, false, block);
    }

private:
    static constexpr size_t Room = Pixels + 1 + Lanes;

    void Sort(const Colour& axis) {
        std::array<float, Pixels> along{};
        for (size_t i = 0; i < count_; ++i) {
            const Colour& p = colours_.Points[i];
            along[i] = p[0] * axis[0] + p[1] * axis[1] + p[2] * axis[2];
            order_[i] = i;
        }
        for (size_t i = 0; i < count_; ++i)
            for (size_t j = i; j > 0 && along[j] < along[j - 1]; --j) {
                std::swap(along[j], along[j - 1]);
                std::swap(order_[j], order_[j - 1]);
            }
    }

    void SumUp() {
        std::array<std::array<float, 4>, Pixels> points{};
        for (size_t i = 0; i < count_; ++i) {
            const float weight = colours_.Weights[order_[i]];
            for (size_t c = 0; c < 3; ++c)
                points[i][c] = colours_.Points[order_[i]][c] * weight;
            points[i][3] = weight;
        }
        for (size_t c = 0; c < 4; ++c)
            for (size_t from = 0; from <= count_; ++from) {
                float sum = 0;
                sums_[c][from][from] = 0;
                for (size_t to = from; to < count_; ++to) {
                    sum += points[to][c];
                    sums_[c][from][to + 1] = sum;
                }
            }
    }

    // The sum of the sorted colours from `from` to before `to`.
    float Sum(size_t channel, size_t from, size_t to) const {
        return sums_[channel][from][to];
    }
    Four Sums(size_t channel, size_t from, size_t to) const {
        Four sums;
        std::memcpy(&sums, &sums_[channel][from][to], sizeof sums);
        return sums;
    }

    // What the least squares of one cut are worked out of, in each lane another cut.
    struct Terms {
        std::array<Four, 4> Alpha; // red, green, blue, weight
        std::array<Four, 4> Beta;
        Four AlphaBeta;
    };

    // End colours for the terms, on the grid that a block can hold, and their error.
    struct Ends {
        std::array<Four, 3> Start;
        std::array<Four, 3> End;
        Four Error;
    };

    static bool AnyOf(FourInts such) {
        std::array<uint64_t, 2> bits;
        std::memcpy(bits.data(), &such, sizeof bits);
        return (bits[0] | bits[1]) != 0;
    }

    static Four OnGrid(Four value, float steps) {
        const Four zero{};
        const Four one = zero + 1;
        value = value > zero ? value : zero;
        value = value < one ? value : one;
        const Four whole = __builtin_convertvector(
            __builtin_convertvector(steps * value + 0.5F, FourInts), Four);
        return whole * (1.0F / steps);
    }

    static void Solve(const Terms& t, Ends& ends) {
        const Four alpha2 = t.Alpha[3];
        const Four beta2 = t.Beta[3];
        const Four factor = 1.0F / (alpha2 * beta2 - t.AlphaBeta * t.AlphaBeta);
        std::array<Four, 3> errors;
        for (size_t c = 0; c < 3; ++c) {
            const float steps = c == 1 ? 63 : 31;
            const Four a =
                OnGrid((t.Alpha[c] * beta2 - t.Beta[c] * t.AlphaBeta) * factor, steps);
            const Four b =
                OnGrid((t.Beta[c] * alpha2 - t.Alpha[c] * t.AlphaBeta) * factor, steps);
            const Four e1 = a * a * alpha2 + b * b * beta2;
            const Four e2 = a * b * t.AlphaBeta - a * t.Alpha[c];
            const Four e3 = e2 - b * t.Beta[c];
            errors[c] = 2.0F * e3 + e1;
            ends.Start[c] = a;
            ends.End[c] = b;
        }
        ends.Error = errors[0] + errors[1] + errors[2];
    }

    // Takes the best of the lanes whose last cut lies at `last` and behind, up to the
    // count, when it is better than all before; true then.
    bool Keep(const Ends& ends, size_t last, Cut& best, size_t& lane) {
        if (!AnyOf(ends.Error < bestError_))
            return false;
        bool better = false;
        for (size_t i = 0; i < Lanes && last + i <= count_; ++i)
            if (ends.Error[i] < bestError_) {
                bestError_ = ends.Error[i];
                for (size_t c = 0; c < 3; ++c) {
                    best.Start[c] = ends.Start[c][i];
                    best.End[c] = ends.End[c][i];
                }
                lane = i;
                better = true;
            }
        return better;
    }

    std::pair<Cut, bool> BestOfThree() {
        Cut best;
        bool found = false;
        for (size_t i = 0; i < count_; ++i)
            for (size_t j = i == 0 ? 1 : i; j <= count_; j += Lanes) {
                Terms t;
                for (size_t c = 0; c < 4; ++c) {
                    const float half = c == 3 ? 0.25F : 0.5F;
                    const Four part0 = Four{} + Sum(c, 0, i);
                    const Four part1 = Sums(c, i, j);
                    const Four part2 = Sum(c, 0, count_) - part1 - part0;
                    t.Alpha[c] = part1 * half + part0;
                    t.Beta[c] = part1 * half + part2;
                    if (c == 3)
                        t.AlphaBeta = part1 * half;
                }
                Ends ends;
                Solve(t, ends);
                size_t lane = 0;
                if (Keep(ends, j, best, lane)) {
                    best.First = i;
                    best.Second = best.Third = j + lane;
                    found = true;
                }
            }
        return {best, found};
    }

    std::pair<Cut, bool> BestOfFour() {
        Cut best;
        bool found = false;
        for (size_t i = 0; i < count_; ++i)
            for (size_t j = i; j <= count_; ++j)
                for (size_t k = j == 0 ? 1 : j; k <= count_; k += Lanes) {
                    Terms t;
                    for (size_t c = 0; c < 4; ++c) {
                        const float third = c == 3 ? 1.0F / 9 : 1.0F / 3;
                        const float twoThirds = c == 3 ? 4.0F / 9 : 2.0F / 3;
                        const Four part0 = Four{} + Sum(c, 0, i);
                        const Four part1 = Four{} + Sum(c, i, j);
                        const Four part2 = Sums(c, j, k);
                        const Four part3 = Sum(c, 0, count_) - part2 - part1 - part0;
                        t.Alpha[c] = part2 * third + (part1 * twoThirds + part0);
                        t.Beta[c] = part1 * third + (part2 * twoThirds + part3);
                        if (c == 3)
                            t.AlphaBeta = (2.0F / 9) * (part1 + part2);
                    }
                    Ends ends;
                    Solve(t, ends);
                    size_t lane = 0;
                    if (Keep(ends, k, best, lane)) {
                        best.First = i;
                        best.Second = j;
                        best.Third = k + lane;
                        found = true;
                    }
                }
        return {best, found};
    }

    static int To565(const Colour& colour) {
        const auto whole = [](float value, int most) {
            const float raised = value * static_cast<float>(most) + 0.5F;
            return std::clamp(static_cast<int>(raised), 0, most);
        };
        return whole(colour[0], 31) << 11 | whole(colour[1], 63) << 5 |
               whole(colour[2], 31);
    }

    // The order of the end colours tells a reader which kind of block it is.
    void Write(const Cut& cut, bool four, std::span<uint8_t, 8> block) const {
        std::array<int, Pixels> indices{};
        for (size_t m = 0; m < count_; ++m)
            indices[order_[m]] = m < cut.First    ? 0
                                 : m < cut.Second ? 2
                                 : m < cut.Third  ? 3
                                                  : 1;
        int start = To565(cut.Start);
        int end = To565(cut.End);
        const bool swapped = four ? start < end : start > end;
        if (swapped)
            std::swap(start, end);
        block[0] = static_cast<uint8_t>(start);
        block[1] = static_cast<uint8_t>(start >> 8);
        block[2] = static_cast<uint8_t>(end);
        block[3] = static_cast<uint8_t>(end >> 8);
        for (size_t row = 0; row < 4; ++row) {
            int bits = 0;
            for (size_t column = 0; column < 4; ++column) {
                int index = indices[colours_.ByPixel[row * 4 + column]];
                if (swapped && (four || index < 2))
                    index ^= 1;
                if (four && start == end)
                    index = 0;
                bits |= index << (2 * column);
            }
            block[4 + row] = static_cast<uint8_t>(bits);
        }
    }

    const Colours& colours_;
    size_t count_;
    std::array<size_t, Pixels> order_{}; // of the colours, along the main axis
    // By channel (red, green, blue, weight), from, to. Behind the last there is room to
    // read all lanes.
    std::array<std::array<std::array<float, Room>, Room>, 4> sums_{};
    float bestError_ = FLT_MAX;
};

} // namespace

bool ClusterFit(std::span<const uint8_t, 64> rgba, std::span<uint8_t, 8> block) {
    const Colours colours(rgba);
    if (colours.Count == 1)
        return false;
    Fit(colours).Compress(block);
    return true;
}

} // namespace vardenix
