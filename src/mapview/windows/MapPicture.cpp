#include "mapview/windows/MapPicture.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

constexpr double GhostOpacity = 0.7;

} // namespace

MapPicture::MapPicture(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void MapPicture::Show(const QtDrawingSurface& surface) { surface_ = &surface; }

void MapPicture::SetBand(std::optional<Band> band) {
    if (!band && !band_)
        return;
    band_ = std::move(band);
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
    if (!band_->Ghost.isNull()) {
        painter.setOpacity(GhostOpacity);
        painter.drawImage(band_->GhostAt, band_->Ghost);
        painter.setOpacity(1);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(band_->Color, 1));
    painter.drawRect(band_->Frame);
    if (!band_->Words.isEmpty())
        PaintWords(painter);
}

// Outside the frame where there is room above it, on a ground of their own.
void MapPicture::PaintWords(QPainter& painter) const {
    QRect ground = fontMetrics().boundingRect(band_->Words).adjusted(-4, -1, 4, 1);
    ground.moveBottomLeft(band_->Frame.topLeft() - QPoint(0, 2));
    const QRect room = visibleRegion().boundingRect();
    ground.moveLeft(std::clamp(ground.left(), room.left(),
                               std::max(room.left(), room.right() - ground.width())));
    ground.moveTop(std::max(ground.top(), room.top()));
    painter.fillRect(ground, QColor(0, 0, 0, 190));
    painter.setPen(Qt::white);
    painter.drawText(ground, Qt::AlignCenter, band_->Words);
}

} // namespace vardenix

#include "moc_MapPicture.cpp"
