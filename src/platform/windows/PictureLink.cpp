#include "platform/windows/PictureLink.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>

namespace vardenix {

PictureLink::PictureLink(QWidget* parent) : QAbstractButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PictureLink::SetPicture(const QString& resource, QSize size) {
    picture_ = QIcon(resource);
    size_ = size;
    updateGeometry();
    update();
}

QSize PictureLink::sizeHint() const { return size_ * logicalDpiY() / 96; }

QSize PictureLink::minimumSizeHint() const { return {0, sizeHint().height()}; }

void PictureLink::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // The larger of the two pictures is scaled down where neither fits.
    const QPixmap picture = picture_.pixmap(size_, 2.0);
    const QSize shown = sizeHint();
    painter.drawPixmap(QRect({0, 0}, shown), picture);
    if (width() > shown.width()) {
        const QRect edge(picture.width() - 1, 0, 1, picture.height());
        painter.drawPixmap(rect().adjusted(shown.width(), 0, 0, 0), picture, edge);
    }
    if (hasFocus()) {
        // Seen on light and dark pictures alike.
        const QRect ring = rect().adjusted(3, 3, -4, -4);
        painter.setPen(QPen(Qt::black, 2));
        painter.drawRect(ring);
        painter.setPen(QPen(Qt::white, 2, Qt::DashLine));
        painter.drawRect(ring);
    }
}

} // namespace vardenix

#include "moc_PictureLink.cpp"
