#include "make_sample_theater/Layers.h"
#include "make_sample_theater/Noise.h"

#include <array>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr int FieldsAcross = 5;
constexpr std::array<Colour, 9> Crops = {{{160, 150, 92},
                                          {118, 134, 66},
                                          {96, 117, 56},
                                          {139, 120, 82},
                                          {176, 164, 108},
                                          {86, 108, 54},
                                          {128, 142, 76},
                                          {146, 146, 84},
                                          {108, 124, 62}}};
constexpr Colour Hedge = {72, 88, 46};

struct Field {
    Place Site;
    uint32_t Seed = 0;
    bool Planted = false;
};

// Fields along an edge follow that edge's style, fields at a corner are the same
// everywhere.
Field FieldOf(const Scene& scene, int column, int row) {
    constexpr int last = FieldsAcross - 1;
    const auto wrap = [](int i) {
        return static_cast<uint32_t>((i + FieldsAcross) % FieldsAcross);
    };
    const bool besideColumn = column <= 0 || column >= last;
    const bool besideRow = row <= 0 || row >= last;
    uint32_t seed = 500;
    if (besideColumn != besideRow) {
        const uint8_t edge =
            besideColumn ? (column <= 0 ? West : East) : (row <= 0 ? South : North);
        seed = scene.Look().EdgeStyles & edge ? 502U : 501U;
    } else if (!besideColumn) {
        seed = Hash(503, scene.Seed());
    }
    Field field;
    field.Seed = Hash(wrap(column), wrap(row), seed);
    field.Site = {(column + 0.2 + 0.6 * Chance(field.Seed, 1)) / FieldsAcross,
                  (row + 0.2 + 0.6 * Chance(field.Seed, 2)) / FieldsAcross};
    const Place seen = OntoEdge(field.Site, 1.0 / FieldsAcross);
    const bool whole = scene.Look().Low == Ground::Farm;
    field.Planted = whole || scene.Share(seen) > 0.5;
    return field;
}

// Measured along the field's own directions, so that the parcels have straight sides.
double Span(Place a, Place b) {
    const double du = (a.U - b.U) * 0.94 + (a.V - b.V) * 0.34;
    const double dv = (a.V - b.V) * 0.94 - (a.U - b.U) * 0.34;
    return std::max(std::abs(du), std::abs(dv) * 1.15) +
           0.2 * std::min(std::abs(du), std::abs(dv));
}

Colour CropColour(const Field& field, Place place) {
    const Colour crop = Crops[field.Seed % Crops.size()];
    const double turn =
        (field.Seed >> 8 & 1) != 0 ? 0.35 : 1.92; // along or across the parcels
    const double along = place.U * std::cos(turn) + place.V * std::sin(turn);
    const double rows = std::sin(along * 150) * (field.Seed >> 9 & 1 ? 0.05 : 0.015);
    const double tone = 0.94 + 0.12 * Chance(field.Seed, 5);
    return Scale(crop, tone + rows);
}

} // namespace

void DrawFields(Picture& picture, const Scene& scene) {
    if (scene.Look().High != Ground::Farm)
        return;
    std::array<std::array<Field, FieldsAcross + 4>, FieldsAcross + 4> fields;
    for (int row = -2; row < FieldsAcross + 2; ++row) {
        for (int column = -2; column < FieldsAcross + 2; ++column)
            fields[static_cast<std::size_t>(row + 2)]
                  [static_cast<std::size_t>(column + 2)] = FieldOf(scene, column, row);
    }
    for (int y = 0; y < picture.Side(); ++y) {
        for (int x = 0; x < picture.Side(); ++x) {
            const Place place = PlaceOf(x, y, picture.Side());
            const auto column = static_cast<std::size_t>(place.U * FieldsAcross) + 2;
            const auto row = static_cast<std::size_t>(place.V * FieldsAcross) + 2;
            const Field* nearest = nullptr;
            double first = 9;
            double second = 9;
            for (std::size_t r = row - 2; r <= row + 2; ++r) {
                for (std::size_t c = column - 2; c <= column + 2; ++c) {
                    const double span = Span(fields[r][c].Site, place);
                    if (span < first) {
                        second = first;
                        first = span;
                        nearest = &fields[r][c];
                    } else if (span < second) {
                        second = span;
                    }
                }
            }
            if (nearest == nullptr || !nearest->Planted)
                continue;
            Colour& pixel = picture.At(x, y);
            const double edge = second - first;
            const Colour crop = Mix(CropColour(*nearest, place), pixel, 0.18);
            pixel = Mix(Mix(pixel, Hedge, 0.7), crop, SmoothStep(0.008, 0.02, edge));
        }
    }
}

} // namespace vardenix::sample
