#include "pictures/fast/SquareShrinking.h"

#include "pictures/fast/WeightedSums.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace vardenix {
namespace {

constexpr size_t Colours = 3;
// Samples are kept less this, so that they fit a signed number of 16 bits with the
// smallest error.
constexpr int32_t Middle = 128;
// Beyond it a sum, with its bias, could leave 32 bits.
constexpr int LargestShift = 22;

// Adds a half and cuts, whatever the sign.
int32_t RoundedAsTheLibraryDoes(double value) {
    const double raised = value + 0.5;
    return static_cast<int32_t>(raised);
}

// The library's bicubic filter (B and C a third each), term by term.
double Bicubic(double value) {
    constexpr double B = 1 / 3.0;
    constexpr double C = 1 / 3.0;
    constexpr double P0 = (6 - 2 * B) / 6;
    constexpr double P2 = (-18 + 12 * B + 6 * C) / 6;
    constexpr double P3 = (12 - 9 * B - 6 * C) / 6;
    constexpr double Q0 = (8 * B + 24 * C) / 6;
    constexpr double Q1 = (-12 * B - 48 * C) / 6;
    constexpr double Q2 = (6 * B + 30 * C) / 6;
    constexpr double Q3 = (-B - 6 * C) / 6;
    const double v = std::fabs(value);
    if (v < 1)
        return P0 + v * v * (P2 + v * P3);
    if (v < 2)
        return Q0 + v * (Q1 + v * (Q2 + v * Q3));
    return 0;
}

// Samples of one colour, less Middle: Rows rows of Length, each with room behind it for
// a whole vector more.
struct Plane {
    Plane(size_t rows, size_t length)
        : Rows(rows), Stride(length + SamplesAtOnce),
          Samples(rows * Stride + SamplesAtOnce) {}

    size_t Rows;
    size_t Stride;
    std::vector<int16_t> Samples;
};

// The library's own sum and rounding of one sample.
int32_t ExactSample(const ShrinkWeights& weights, const ShrinkWeights::Window& window,
                    const int16_t* row) {
    double sum = 0;
    for (size_t i = 0; i < window.Count; ++i)
        sum += weights.Exact[window.First + i] *
               static_cast<double>(row[window.Left + i] + Middle);
    return std::clamp(RoundedAsTheLibraryDoes(sum), 0, 255);
}

int32_t Sample(const ShrinkWeights& weights, const ShrinkWeights::Window& window,
               const int16_t* row, int32_t sum) {
    const int32_t middle = sum + window.Bias;
    const int32_t low = std::clamp((middle - window.Doubt) >> weights.Shift, 0, 255);
    const int32_t high = std::clamp((middle + window.Doubt) >> weights.Shift, 0, 255);
    return low == high ? low : ExactSample(weights, window, row);
}

// Shrinks every row of `source`; what comes of row y becomes column y of the result, so
// that a second pass shrinks the columns.
Plane ShrinkRows(const ShrinkWeights& weights, const Plane& source) {
    Plane target(weights.Windows.size(), source.Rows);
    for (size_t y = 0; y < source.Rows; y += RowsAtOnce) {
        const size_t rows = std::min(RowsAtOnce, source.Rows - y);
        std::array<const int16_t*, RowsAtOnce> row{};
        for (size_t i = 0; i < RowsAtOnce; ++i)
            row[i] = &source.Samples[(y + std::min(i, rows - 1)) * source.Stride];
        for (size_t x = 0; x < weights.Windows.size(); ++x) {
            const ShrinkWeights::Window& window = weights.Windows[x];
            const size_t padded = PaddedCount(window.Count);
            const auto sums =
                WeightedSums(row, window.Left, &weights.Scaled[window.Parts], padded);
            for (size_t i = 0; i < rows; ++i)
                target.Samples[x * target.Stride + y + i] = static_cast<int16_t>(
                    Sample(weights, window, row[i], sums[i]) - Middle);
        }
    }
    return target;
}

// One colour (0 blue to 2 red) of a square, rows in the library's order, from the bottom:
// sums are made in that order.
Plane PlaneOf(const PixelSquare& square, size_t colour) {
    const auto side = static_cast<size_t>(square.Side);
    Plane plane(side, side);
    for (size_t y = 0; y < side; ++y) {
        const uint8_t* row =
            square.Top + static_cast<std::ptrdiff_t>(side - 1 - y) * square.Stride;
        int16_t* to = &plane.Samples[y * plane.Stride];
        if (square.BytesPerPixel == 4)
            TakeColour<4>(row + colour, side, to);
        else
            TakeColour<3>(row + colour, side, to);
    }
    return plane;
}

// The plane's rows are from the bottom, the picture's from the top.
void PutColour(const Plane& plane, size_t colour, RgbaPicture& picture) {
    const auto side = static_cast<size_t>(picture.Side);
    for (size_t y = 0; y < side; ++y)
        for (size_t x = 0; x < side; ++x)
            picture.Pixels[((side - 1 - y) * side + x) * 4 + (Colours - 1 - colour)] =
                static_cast<uint8_t>(plane.Samples[y * plane.Stride + x] + Middle);
}

} // namespace

// Windows and weights as the library works them out, in its order of operations: the
// last bit of a weight decides samples.
ShrinkWeights::ShrinkWeights(int32_t from, int32_t to) : From(from), To(to) {
    const double scale = static_cast<double>(to) / static_cast<double>(from);
    const double width = 2.0 / scale;
    const double offset = 0.5 / scale;
    double largest = 0;
    for (int32_t u = 0; u < to; ++u) {
        const double center = static_cast<double>(u) / scale + offset;
        const int32_t left = std::max(0, RoundedAsTheLibraryDoes(center - width));
        const int32_t right = std::min(RoundedAsTheLibraryDoes(center + width), from);
        Window window;
        window.Left = static_cast<size_t>(left);
        window.First = Exact.size();
        double total = 0;
        for (int32_t i = left; i < right; ++i) {
            const double weight =
                scale * Bicubic(scale * (static_cast<double>(i) + 0.5 - center));
            Exact.push_back(weight);
            total += weight;
        }
        if (total > 0 && total != 1)
            for (size_t i = window.First; i < Exact.size(); ++i)
                Exact[i] /= total;
        while (Exact.size() > window.First && Exact.back() == 0)
            Exact.pop_back();
        window.Count = Exact.size() - window.First;
        for (size_t i = window.First; i < Exact.size(); ++i)
            largest = std::max(largest, std::fabs(Exact[i]));
        Windows.push_back(window);
    }
    while (Shift < LargestShift && std::ldexp(largest, Shift + 1) < 32767)
        ++Shift;
    for (Window& window : Windows)
        Scale(window);
}

// The sum over Scaled differs from two to the Shift times the exact one, less Middle
// times the weights, by no more than what each weight lost by rounding times the largest
// sample, 128. Bias brings the Middle and the half of the rounding back; it is off by
// half at most. The library's doubles are off by less than 8192 * 2^-53 * 300, which is
// far below the one that is added for it and for the rounding of the bound itself.
void ShrinkWeights::Scale(Window& window) {
    window.Parts = Scaled.size();
    double lost = 0;
    double total = 0;
    for (size_t i = 0; i < window.Count; ++i) {
        const double exact = Exact[window.First + i];
        const double scaled = std::nearbyint(std::ldexp(exact, Shift));
        lost += std::fabs(scaled - std::ldexp(exact, Shift));
        total += exact;
        Scaled.push_back(static_cast<int16_t>(scaled));
    }
    Scaled.resize(window.Parts + PaddedCount(window.Count));
    window.Bias =
        static_cast<int32_t>(std::nearbyint(std::ldexp(Middle * total + 0.5, Shift)));
    window.Doubt = static_cast<int32_t>(std::ceil(lost * Middle)) + 2;
}

SquareShrinker::SquareShrinker(int32_t from, const std::vector<int32_t>& to)
    : from_(from) {
    weights_.reserve(to.size());
    for (const int32_t side : to) {
        if (side < 1 || side >= from || from > SquareLargestSide)
            throw RuntimeError(ErrorNumber::InvalidCall,
                               "no shrinking from " + std::to_string(from) + " to " +
                                   std::to_string(side) + " pixels");
        weights_.emplace_back(from, side);
    }
}

std::vector<RgbaPicture> SquareShrinker::Shrink(const PixelSquare& square) const {
    if (square.Side != from_)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a picture of another size than " + std::to_string(from_));
    std::vector<RgbaPicture> pictures;
    for (const ShrinkWeights& weights : weights_) {
        const auto side = static_cast<size_t>(weights.To);
        pictures.push_back({weights.To, std::vector<uint8_t>(side * side * 4, 255)});
    }
    for (size_t colour = 0; colour < Colours; ++colour) {
        const Plane plane = PlaneOf(square, colour);
        for (size_t i = 0; i < weights_.size(); ++i)
            PutColour(ShrinkRows(weights_[i], ShrinkRows(weights_[i], plane)), colour,
                      pictures[i]);
    }
    return pictures;
}

} // namespace vardenix
