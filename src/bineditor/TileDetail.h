#pragma once

#include "catalogue/TextureBin.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// The rules of FrmBINTileDet. The first coordinate of areas and paths, X, runs up the
// picture; the second, Y, to the right. Both are feet.

constexpr double TileFeet = 3280.84;

// Between feet and a picture of `width` by `height` of any unit.
class TileScale {
public:
    TileScale(double width, double height) : width_(width), height_(height) {}

    float ScreenToFeet(double value) const;
    double FeetToScreen(float feet) const;
    float ScreenToFeetFlipped(double value) const;
    double FeetToScreenFlipped(float feet) const;

private:
    double width_;
    double height_;
};

// Positions in the list of path and area types; -1 for a code that is in none of them.
int AreaTypeIndex(int32_t type);
int PathTypeIndex(int32_t type);

constexpr double MostZoom = 8;
constexpr double LeastZoom = 0.125;
// Doubled while below the most, halved while above the least.
double ZoomedIn(double zoom);
double ZoomedOut(double zoom);

// Of a line drawn for a path `width` feet wide; at least 1.
int PenWidth(const TileScale& scale, float width);

// What a drag on the picture has drawn, in the picture's units.
struct RubberBand {
    double DragStartX = 0;
    double DragStartY = 0;
    double DragEndX = 0;
    double DragEndY = 0;

    double DragRadius() const;
};
TileArea AreaOf(const RubberBand& band, const TileScale& scale, int typeIndex);
TilePath PathOf(const RubberBand& band, const TileScale& scale, int typeIndex);

// A tile's record being edited: rows count from 1, and 0 is no row. Nothing of the
// catalogue changes until it is written back.
class WorkingTile {
public:
    explicit WorkingTile(TileRecord tile) : tile_(std::move(tile)) {}

    const TileRecord& Tile() const { return tile_; }
    bool Dirty() const { return dirty_; }
    void SetDirty(bool dirty) { dirty_ = dirty; }

    void Add(const TileArea& area);
    void Add(const TilePath& path);
    // Nothing for a row that is not there.
    void DeleteArea(int32_t row);
    void DeletePath(int32_t row);
    TileArea& Area(int32_t row) { return tile_.Areas.at(static_cast<size_t>(row)); }
    TilePath& Path(int32_t row) { return tile_.Paths.at(static_cast<size_t>(row)); }
    const TileArea& Area(int32_t row) const {
        return tile_.Areas.at(static_cast<size_t>(row));
    }
    const TilePath& Path(int32_t row) const {
        return tile_.Paths.at(static_cast<size_t>(row));
    }

private:
    TileRecord tile_;
    bool dirty_ = false;
};

// The columns of a row of ListAreas and of ListPaths.
std::vector<std::string> AreaColumns(const TileArea& area);
std::vector<std::string> PathColumns(const TilePath& path);

// A text as a 32-bit float; nothing for one that is no number as a whole or does not fit.
std::optional<float> FloatOfText(const std::string& text);

// The boxes of the two dialogs, in the order in which OK takes them.
std::vector<float*> AreaFields(TileArea& area); // centre X, centre Y, radius
std::vector<float*> PathFields(TilePath& path); // start X, Y, end X, Y, width

// Writes the texts into the fields, one after the other, until one does not convert;
// gives the place of that one, or nothing when all are written.
std::optional<size_t> WriteFields(const std::vector<float*>& fields,
                                  const std::vector<std::string>& texts);
// Format "0.00000".
std::string FieldText(float value);

// "Tile #: 17 - Size: 512x512 - H0101.PCX"; bytes as the catalogue has them.
std::string TileDetailCaption(const Catalogue& catalogue, int32_t number, int32_t width,
                              int32_t height);
// "2 Areas and 1 Paths".
std::string AreasPathsText(const TileRecord& tile);

} // namespace vardenix
