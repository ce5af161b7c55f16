#pragma once

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

// One text in one font, drawn: every pixel with ink and how much of it, so that laying it
// over a picture touches nothing else. Kept small, since thousands take turns. Places
// count from the corner of the text's rectangle; italics reach out of it.
struct DrawnText {
    struct Dot {
        uint8_t X; // from the stretch's
        uint8_t Alpha;
    };
    // The next dots, of one row.
    struct Stretch {
        int16_t X, Y;
        uint16_t Count;
    };

    TextSize Size;
    PixelRect Ink; // what all dots lie in
    std::vector<Stretch> Stretches;
    std::vector<Dot> Dots;

    // In one colour 0x00BBGGRR, cut at the picture's edges.
    void LayOver(const RasterView& picture, int32_t left, int32_t top,
                 uint32_t color) const;
};

// The texts of one font, each drawn at its first use and kept.
class DrawnTexts {
public:
    explicit DrawnTexts(const FontChoice& font);

    // UTF-8, one line. Good until the next call.
    const DrawnText& Of(std::string_view text);

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
