#include "make_sample_theater/Landscape.h"
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
    uint32_t Seed = 0;
    bool Planted = false;
};

// Fields lie in a grid that is shifted by half a field, so that no hedge follows the
// tile's edge. Those across an edge follow the edge's style, those across a corner are
// the same everywhere; the others are the tile's own and may be joined to their
// neighbour.
Field FieldOf(const Scene& scene, int column, int row) {
    const bool onColumn = column <= 0 || column >= FieldsAcross;
    const bool onRow = row <= 0 || row >= FieldsAcross;
    uint32_t seed = 500;
    if (onColumn != onRow) {
        const uint8_t edge =
            onColumn ? (column <= 0 ? West : East) : (row <= 0 ? South : North);
        seed = scene.Look().EdgeStyles & edge ? 502U : 501U;
    } else if (!onColumn) {
        seed = Hash(503, scene.Seed());
        const uint32_t joint = Hash(seed, static_cast<uint32_t>(column / 2),
                                    static_cast<uint32_t>(row / 2)) %
                               3;
        if (joint == 1)
            column &= ~1;
        else if (joint == 2)
            row &= ~1;
    }
    const auto wrap = [](int i) {
        return static_cast<uint32_t>((i + FieldsAcross) % FieldsAcross);
    };
    Field field;
    field.Seed = Hash(wrap(column), wrap(row), seed);
    const Place middle = {static_cast<double>(column) / FieldsAcross,
                          static_cast<double>(row) / FieldsAcross};
    field.Planted =
        scene.Look().Low == Ground::Farm || scene.Share(OntoEdge(middle, 0.05)) > 0.5;
    return field;
}

struct Parcel {
    Field Whole;
    uint32_t Seed = 0; // of the part of the field
};

// Hedges sway a little; many fields are cut into two or three strips.
Parcel ParcelAt(const Scene& scene, Place place) {
    const double u = place.U + 0.030 * scene.Noise(place, 3, 51);
    const double v = place.V + 0.030 * scene.Noise(place, 3, 52);
    const double column = u * FieldsAcross + 0.5;
    const double row = v * FieldsAcross + 0.5;
    const Field field = FieldOf(scene, static_cast<int>(std::floor(column)),
                                static_cast<int>(std::floor(row)));
    const double across =
        (field.Seed >> 8 & 1) != 0 ? column - std::floor(column) : row - std::floor(row);
    const auto strips = static_cast<double>(1 + (field.Seed >> 10) % 3);
    return {field, Hash(field.Seed, static_cast<uint32_t>(across * strips))};
}

Colour CropColour(const Parcel& parcel, Place place) {
    const Colour crop = Crops[parcel.Seed % Crops.size()];
    const bool upright = (parcel.Whole.Seed >> 8 & 1) != 0;
    const double rows = std::sin((upright ? place.U : place.V) * 190) *
                        (parcel.Seed >> 9 & 1 ? 0.045 : 0.012);
    return Scale(crop, 0.94 + 0.12 * Chance(parcel.Seed, 5) + rows);
}

} // namespace

void DrawFields(Picture& picture, const Scene& scene) {
    if (scene.Look().High != Ground::Farm)
        return;
    // One column and row more than the picture has, for the hedges at its edges.
    const int side = picture.Side();
    Grid<Parcel> parcels(side + 1);
    for (int y = 0; y <= side; ++y) {
        for (int x = 0; x <= side; ++x)
            parcels.At(x, y) = ParcelAt(scene, PlaceOf(x, y - 1, side));
    }
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const Parcel& parcel = parcels.At(x, y + 1);
            if (!parcel.Whole.Planted)
                continue;
            const Parcel& east = parcels.At(x + 1, y + 1);
            const Parcel& north = parcels.At(x, y);
            Colour& pixel = picture.At(x, y);
            Colour colour = Mix(CropColour(parcel, PlaceOf(x, y, side)), pixel, 0.30);
            if (east.Whole.Seed != parcel.Whole.Seed ||
                north.Whole.Seed != parcel.Whole.Seed)
                colour = Mix(colour, Hedge, 0.8);
            else if (east.Seed != parcel.Seed || north.Seed != parcel.Seed)
                colour = Scale(colour, 0.88);
            pixel = colour;
        }
    }
}

} // namespace vardenix::sample
