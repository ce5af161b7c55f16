#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

namespace vardenix {

// The two looks of the program, and the desktop's own choice between them.
enum class Scheme { Desktop, Light, Dark };

// The one look on every desktop: Fusion with palettes of its own, whatever the desktop
// wears, and the icon "DEF" for all windows. Needs the QApplication; also makes the
// program's pictures and sounds known, so it comes before the first window.
void ApplyTheme();

// All windows, those that are up too.
void UseScheme(Scheme scheme);
bool IsDark();

// The ground of every window and the colour of a mode that is off; in the light look
// 15264490 as 0x00BBGGRR.
QColor OffColor();
// Neutral and dark in both looks, round pictures of the terrain.
QColor PictureGround();
// The colours of controls on a told ground, a pale one in both looks: dark ink.
QPalette PaletteOn(const QColor& ground);
// Text of what may lose something, on the ground of buttons.
QColor DangerColor();
// The control looks so, in whichever look.
void MarkDanger(QWidget& control);

// Window units: 1440 twips to the inch, 15 to the pixel at 96 dots per inch.
constexpr int PixelsOfTwips(int twips) { return twips / 15; }
constexpr int TwipsOfPixels(int pixels) { return pixels * 15; }

} // namespace vardenix
