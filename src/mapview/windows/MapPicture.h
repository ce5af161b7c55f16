#pragma once

#include "mapview/windows/QtDrawingSurface.h"

#include <QWidget>

namespace vardenix {

// Shows what is on a surface, pixel for pixel. The surface is not copied: between two
// repaints it stands still, and inside one no window is painted.
class MapPicture : public QWidget {
    Q_OBJECT

public:
    explicit MapPicture(QWidget* parent = nullptr);

    // Borrowed for the widget's life.
    void Show(const QtDrawingSurface& surface);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QtDrawingSurface* surface_ = nullptr;
};

} // namespace vardenix
