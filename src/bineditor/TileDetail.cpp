#include "bineditor/TileDetail.h"

#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace vardenix {

namespace {

constexpr float NewPathWidth = 50; // feet

template <typename Record>
void Erase(std::vector<Record>& records, int32_t& count, int32_t row) {
    if (row < 1 || row > count)
        return;
    records.erase(records.begin() + row);
    --count;
}

int IndexOf(int32_t type, int entries, int (*codeAt)(int)) {
    for (int index = 0; index < entries; ++index)
        if (codeAt(index) == type)
            return index;
    return -1;
}

} // namespace

float TileScale::ScreenToFeet(double value) const {
    return static_cast<float>(value * TileFeet / width_);
}

double TileScale::FeetToScreen(float feet) const { return feet * width_ / TileFeet; }

float TileScale::ScreenToFeetFlipped(double value) const {
    return static_cast<float>((height_ - value) * TileFeet / height_);
}

double TileScale::FeetToScreenFlipped(float feet) const {
    return height_ - feet * height_ / TileFeet;
}

int AreaTypeIndex(int32_t type) { return IndexOf(type, 2, AreaTypeFromIndex); }
int PathTypeIndex(int32_t type) { return IndexOf(type, 4, PathTypeFromIndex); }

double ZoomedIn(double zoom) { return zoom < MostZoom ? zoom * 2 : zoom; }
double ZoomedOut(double zoom) { return zoom > LeastZoom ? zoom / 2 : zoom; }

int PenWidth(const TileScale& scale, float width) {
    const double pixels = RoundHalfEven(scale.FeetToScreen(width));
    // A width that is no number, or wider than any picture, must not reach a pen.
    return pixels >= 1 ? static_cast<int>(std::min(pixels, 32767.0)) : 1;
}

double RubberBand::DragRadius() const {
    return std::hypot(DragEndX - DragStartX, DragEndY - DragStartY);
}

TileArea AreaOf(const RubberBand& band, const TileScale& scale, int typeIndex) {
    return {.Type = AreaTypeFromIndex(typeIndex),
            .Radius = scale.ScreenToFeet(band.DragRadius()),
            .CenterX = scale.ScreenToFeetFlipped(band.DragStartY),
            .CenterY = scale.ScreenToFeet(band.DragStartX)};
}

TilePath PathOf(const RubberBand& band, const TileScale& scale, int typeIndex) {
    return {.Type = PathTypeFromIndex(typeIndex),
            .Width = NewPathWidth,
            .StartX = scale.ScreenToFeetFlipped(band.DragStartY),
            .StartY = scale.ScreenToFeet(band.DragStartX),
            .EndX = scale.ScreenToFeetFlipped(band.DragEndY),
            .EndY = scale.ScreenToFeet(band.DragEndX)};
}

void WorkingTile::Add(const TileArea& area) {
    tile_.Areas.push_back(area);
    ++tile_.NumAreas;
}

void WorkingTile::Add(const TilePath& path) {
    tile_.Paths.push_back(path);
    ++tile_.NumPaths;
}

void WorkingTile::DeleteArea(int32_t row) { Erase(tile_.Areas, tile_.NumAreas, row); }
void WorkingTile::DeletePath(int32_t row) { Erase(tile_.Paths, tile_.NumPaths, row); }

std::vector<std::string> AreaColumns(const TileArea& area) {
    return {AreaTypeName(area.Type), FieldText(area.Radius), FieldText(area.CenterX),
            FieldText(area.CenterY)};
}

std::vector<std::string> PathColumns(const TilePath& path) {
    return {PathTypeName(path.Type), FieldText(path.Width), FieldText(path.StartX),
            FieldText(path.StartY),  FieldText(path.EndX),  FieldText(path.EndY)};
}

std::optional<float> FloatOfText(const std::string& text) {
    const std::string_view trimmed = TrimBlanks(text);
    float value = 0;
    const auto [end, error] =
        std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), value);
    if (error != std::errc() || end != trimmed.data() + trimmed.size() ||
        !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::vector<float*> AreaFields(TileArea& area) {
    return {&area.CenterX, &area.CenterY, &area.Radius};
}

std::vector<float*> PathFields(TilePath& path) {
    return {&path.StartX, &path.StartY, &path.EndX, &path.EndY, &path.Width};
}

std::optional<size_t> WriteFields(const std::vector<float*>& fields,
                                  const std::vector<std::string>& texts) {
    for (size_t i = 0; i < fields.size(); ++i) {
        const auto value = FloatOfText(texts.at(i));
        if (!value)
            return i;
        *fields[i] = *value;
    }
    return std::nullopt;
}

std::string FieldText(float value) { return FormatFixed(value, 5); }

std::string TileDetailCaption(const Catalogue& catalogue, int32_t number, int32_t width,
                              int32_t height) {
    return "Tile #: " + std::to_string(number) + " - Size: " + std::to_string(width) +
           "x" + std::to_string(height) + " - " + InfoAt(catalogue, number).Name;
}

std::string AreasPathsText(const TileRecord& tile) {
    return std::to_string(tile.NumAreas) + " Areas and " + std::to_string(tile.NumPaths) +
           " Paths";
}

} // namespace vardenix
