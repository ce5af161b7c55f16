#include "workspace/windows/StretchedPicture.h"

#include <QPainter>

namespace vardenix {

void StretchedPicture::SetPicture(const QImage& picture) {
    picture_ = picture;
    update();
}

void StretchedPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(rect(), picture_);
}

} // namespace vardenix
