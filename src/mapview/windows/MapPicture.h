#pragma once

#include "mapview/windows/QtDrawingSurface.h"

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <QWidget>

#include <optional>

class QPainter;

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
    // `words` stand beside its corner. `ghost`, within it, is what may come there.
    struct Band {
        QRect Frame;
        QColor Color;
        QString Words;
        QImage Ghost;
        QPoint GhostAt;
    };
    void SetBand(std::optional<Band> band);
    const std::optional<Band>& ShownBand() const { return band_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QtDrawingSurface* surface_ = nullptr;
    void PaintWords(QPainter& painter) const;

    std::optional<Band> band_;
};

} // namespace vardenix
