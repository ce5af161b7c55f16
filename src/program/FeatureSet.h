#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// The kinds of features, in the numbers of their files.
enum class FeatureKind : int16_t {
    Airport = 1,
    City = 2,
    Coast = 3,
    Label = 4,
    River = 5,
    Road = 6
};

// In the order in which they are exported.
constexpr std::array FeatureKinds{FeatureKind::Airport, FeatureKind::City,
                                  FeatureKind::Coast,   FeatureKind::Label,
                                  FeatureKind::River,   FeatureKind::Road};

// A place in posts of level 2, counted from 0, with fractions.
struct FeaturePoint {
    double X = 0;
    double Y = 0;

    bool operator==(const FeaturePoint&) const = default;
};

// One line of a feature file.
struct Feature {
    // As the line tells it, -32768 to 32767. Points that it does not have, or that could
    // not be read, lie at 0,0 and are not kept.
    int32_t PointCount = 0;
    std::vector<FeaturePoint> Points; // as many as were read, PointCount at most
    int32_t Value = 0;                // kept and written back, nothing else
    std::string Text;                 // of airports and labels, Windows-1252

    bool operator==(const Feature&) const = default;
};

// Every list has a placeholder that is never used as element 0.
using FeatureList = std::vector<Feature>;

// All features that were loaded, from one file or several, as long as the program lives.
// Opening another theater leaves them alone.
struct FeatureSet {
    FeatureList Airports = FeatureList(1);
    FeatureList Cities = FeatureList(1);
    FeatureList Coasts = FeatureList(1);
    FeatureList Labels = FeatureList(1);
    FeatureList Rivers = FeatureList(1);
    FeatureList Roads = FeatureList(1);

    FeatureList& Of(FeatureKind kind);
    const FeatureList& Of(FeatureKind kind) const;
    // Without the placeholders.
    size_t Count() const;

    bool operator==(const FeatureSet&) const = default;
};

// What the map shows of the features; not stored with the settings.
struct FeatureSwitches {
    bool ShowFeatures = false; // of all kinds
    std::array<bool, FeatureKinds.size()> Shown{};

    bool& Of(FeatureKind kind) { return Shown[static_cast<size_t>(kind) - 1]; }
    bool Of(FeatureKind kind) const { return Shown[static_cast<size_t>(kind) - 1]; }
};

} // namespace vardenix
