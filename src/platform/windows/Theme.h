#pragma once

#include <QColor>

class QString;

namespace vardenix {

// The ground of every window and the colour of a mode that is off, 15264490 as
// 0x00BBGGRR.
QColor OffColor();

// The one look on every desktop: Fusion with a light palette of its own, whatever the
// desktop wears, and the icon "DEF" for all windows. Needs the QApplication; also makes
// the program's pictures and sounds known, so it comes before the first window.
void ApplyTheme();

// Window units: 1440 twips to the inch, 15 to the pixel at 96 dots per inch.
constexpr int PixelsOfTwips(int twips) { return twips / 15; }
constexpr int TwipsOfPixels(int pixels) { return pixels * 15; }

} // namespace vardenix
