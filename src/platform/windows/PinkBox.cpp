#include "platform/windows/PinkBox.h"

#include "platform/windows/ColorImage.h"
#include "platform/windows/Theme.h"

#include <QLineEdit>

namespace vardenix {

namespace {

constexpr uint32_t PinkColor = 0xC0C0FF;

} // namespace

void SetPink(QLineEdit& box, bool pink) {
    QPalette colors;
    if (pink) {
        colors = PaletteOn(ColorOf(PinkColor));
        colors.setColor(QPalette::Base, ColorOf(PinkColor));
    }
    box.setPalette(colors);
}

bool IsPink(const QLineEdit& box) {
    return box.palette().color(QPalette::Base) == ColorOf(PinkColor);
}

} // namespace vardenix
