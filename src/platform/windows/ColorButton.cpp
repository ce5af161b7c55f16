#include "platform/windows/ColorButton.h"

#include "platform/windows/ColorImage.h"

#include <QPainter>

namespace vardenix {

namespace {

constexpr int Inset = 5; // of the swatch in the button; pixels

} // namespace

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColorButton::SetColor(uint32_t color) { SetColors({color}); }

void ColorButton::SetColors(const std::vector<uint32_t>& colors) {
    if (colors.empty())
        return;
    colors_ = colors;
    update();
}

QSize ColorButton::sizeHint() const {
    const int height = fontMetrics().height() + 2 * Inset;
    return {height * 2, height};
}

void ColorButton::paintEvent(QPaintEvent* event) {
    QPushButton::paintEvent(event);
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.35);
    const QRect swatch = rect().adjusted(Inset, Inset, -Inset, -Inset);
    const int count = static_cast<int>(colors_.size());
    for (int i = 0; i < count; ++i) {
        const int left = swatch.width() * i / count;
        const int right = swatch.width() * (i + 1) / count;
        painter.fillRect(swatch.left() + left, swatch.top(), right - left,
                         swatch.height(), ColorOf(colors_[static_cast<size_t>(i)]));
    }
    painter.setPen(QColor(0, 0, 0, 110));
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}

} // namespace vardenix

#include "moc_ColorButton.cpp"
