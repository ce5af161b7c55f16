#include "mapview/windows/StretchedPicture.h"

#include "mapview/DrawingSurface.h"
#include "platform/windows/ColorImage.h"

#include <QMouseEvent>
#include <QPainter>

namespace vardenix {

void StretchedPicture::SetPicture(const QImage& picture) {
    picture_ = picture;
    update();
}

void StretchedPicture::SetBoxes(std::vector<PreviewBox> boxes) {
    boxes_ = std::move(boxes);
    update();
}

void StretchedPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(rect(), picture_);
    for (const PreviewBox& box : boxes_) {
        painter.setPen(ColorOf(box.Color));
        const QPoint corner(PixelAt(box.Left), PixelAt(box.Top));
        const QPoint opposite(PixelAt(box.Right), PixelAt(box.Bottom));
        painter.drawRect(corner.x(), corner.y(), opposite.x() - corner.x(),
                         opposite.y() - corner.y());
    }
}

void StretchedPicture::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit Pressed(event->position().toPoint());
}

void StretchedPicture::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton))
        emit Dragged(event->position().toPoint());
}

} // namespace vardenix

#include "moc_StretchedPicture.cpp"
