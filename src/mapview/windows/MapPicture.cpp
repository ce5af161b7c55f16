#include "mapview/windows/MapPicture.h"

#include <QPaintEvent>
#include <QPainter>

namespace vardenix {

MapPicture::MapPicture(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void MapPicture::Show(const QtDrawingSurface& surface) { surface_ = &surface; }

void MapPicture::SetBand(const std::optional<QRect>& band, const QColor& color) {
    if (band == band_ && color == bandColor_)
        return;
    band_ = band;
    bandColor_ = color;
    update();
}

void MapPicture::paintEvent(QPaintEvent* event) {
    if (surface_ == nullptr)
        return;
    QPainter painter(this);
    for (const QRect& part : event->region())
        painter.drawImage(part, surface_->Image(), part);
    if (overlay_ != nullptr)
        overlay_->PaintOver(painter);
    if (!band_)
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(bandColor_, 1));
    painter.drawRect(*band_);
}

} // namespace vardenix
