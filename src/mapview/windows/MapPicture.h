#pragma once

#include "mapview/windows/QtDrawingSurface.h"

#include <QColor>
#include <QRect>
#include <QWidget>

#include <optional>

namespace vardenix {

// Shows what is on a surface, pixel for pixel. The surface is not copied: between two
// repaints it stands still, and inside one no window is painted.
class MapPicture : public QWidget {
    Q_OBJECT

public:
    explicit MapPicture(QWidget* parent = nullptr);

    // Borrowed for the widget's life.
    void Show(const QtDrawingSurface& surface);
    // A frame over the picture, which costs no repaint of the map; none takes it away.
    void SetBand(const std::optional<QRect>& band, const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QtDrawingSurface* surface_ = nullptr;
    std::optional<QRect> band_;
    QColor bandColor_;
};

} // namespace vardenix
