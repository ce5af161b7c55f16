#pragma once

#include "mapview/DrawingSteps.h"
#include "mapview/DrawingSurface.h"
#include "platform/Dialogs.h"

#include <QFont>
#include <QImage>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vardenix {

// One text in one font, drawn: how much ink each pixel has, row by row, from the first
// one with ink to the last. Kept small, since thousands take turns. Places count from the
// corner of the text's rectangle; italics reach out of it.
class DrawnText : public Stamp {
public:
    struct Row {
        int16_t X, Y;
        uint16_t
            Count; // a multiple of PixelsAtOnce; those added to make it one are empty
    };

    TextSize Size;
    PixelRect Ink; // what all rows lie in
    std::vector<Row> Rows;
    std::vector<uint8_t> Alphas; // of all rows, one after the other

    void LayOver(const RasterView& picture, int32_t left, int32_t top, uint32_t color,
                 uint32_t other) const override;
};

// The texts of one font, each drawn at its first use and kept.
class DrawnTexts {
public:
    explicit DrawnTexts(const FontChoice& font);

    // UTF-8, one line. Good until the next call, and as long as IsFull says no.
    const DrawnText& Of(std::string_view text);
    // A text that comes new now makes room for itself by all others' going.
    bool IsFull() const;

private:
    struct TextHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    DrawnText Draw(std::string_view text) const;

    QFont font_;
    QImage sheet_; // gives the metrics their dots per inch
    std::unordered_map<std::string, DrawnText, TextHash, std::equal_to<>> texts_;
};

} // namespace vardenix
