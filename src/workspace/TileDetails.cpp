#include "workspace/TileDetails.h"

#include "texts/KeyFilters.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

namespace vardenix {

namespace {

constexpr double MostElevation = 32768;
constexpr double MostByte = 255;

// One box as a number of its field.
template <typename Value>
Value Read(const std::string& text, Value (*narrow)(double), const std::string& label,
           const std::string& range) {
    try {
        return narrow(Val(text));
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.Number(),
                           label + " " + text + ": the field takes " + range + ".");
    }
}

} // namespace

bool KeepsDetailKey(DetailField field, char32_t key) {
    return KeepsDigitKey(key) || (field == DetailField::Elevation && key == U'-');
}

std::string AfterDetailChange(DetailField field, const std::string& text) {
    if (field == DetailField::TileOffset)
        return text;
    const double most = field == DetailField::Elevation ? MostElevation : MostByte;
    return Val(text) > most ? "0" : text;
}

DetailTexts TextsOf(const TerrainPost& post) {
    const int32_t tile = post.TileOffset;
    const int16_t elevation = post.Elevation;
    return {std::to_string(tile), std::to_string(elevation), std::to_string(post.Palette),
            std::to_string(post.X1), std::to_string(post.X2)};
}

DetailTexts TextsOf(int16_t elevation) {
    return {"0", std::to_string(elevation), "0", "0", "0"};
}

void ReadDetails(const DetailTexts& texts, TileDetails& details) {
    const std::string byteRange = "0 to 255";
    details.DetailsUpdated = true;
    details.Reading = DetailField::TileOffset;
    TerrainPost& post = details.Entered;
    post.TileOffset = Read(texts.TileOffset, ToInt32, "Tile Offset", "0 to 2147483647");
    details.Reading = DetailField::Elevation;
    post.Elevation = Read(texts.Elevation, ToInt16, "Elevation", "-32768 to 32767");
    details.Reading = DetailField::Palette;
    post.Palette = Read(texts.Palette, ToByte, "Palette", byteRange);
    details.Reading = DetailField::X1;
    post.X1 = Read(texts.X1, ToByte, "X1", byteRange);
    details.Reading = DetailField::X2;
    post.X2 = Read(texts.X2, ToByte, "X2", byteRange);
}

} // namespace vardenix
