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
    // To be changed in place; update() shows that.
    QImage& Picture() { return picture_; }
    // One pixel wide, in pixels of the widget; a later one lies over an earlier one.
    void SetBoxes(std::vector<PreviewBox> boxes);

signals:
    // The left button went down on this pixel; and the pointer was drawn to one with it,
    // which may lie outside.
    void Pressed(QPoint pixel);
    void Dragged(QPoint pixel);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QImage picture_;
    std::vector<PreviewBox> boxes_;
};

} // namespace vardenix
