#pragma once

#include "mapview/Preview.h"

#include <QImage>
#include <QWidget>

#include <vector>

namespace vardenix {

// A picture stretched over the whole widget, without smoothing, and boxes over it.
class StretchedPicture : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void SetPicture(const QImage& picture);
    // One pixel wide, in pixels of the widget; a later one lies over an earlier one.
    void SetBoxes(std::vector<PreviewBox> boxes);

signals:
    // The left button went down on this pixel.
    void Pressed(QPoint pixel);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QImage picture_;
    std::vector<PreviewBox> boxes_;
};

} // namespace vardenix
