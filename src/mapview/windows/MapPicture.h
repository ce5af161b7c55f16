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

// What lies over a picture while it is shown, and costs no repaint of it.
class PictureOverlay {
public:
    PictureOverlay() = default;
    PictureOverlay(const PictureOverlay&) = delete;
    PictureOverlay& operator=(const PictureOverlay&) = delete;
    virtual ~PictureOverlay() = default;

    virtual void PaintOver(QPainter& painter) = 0;
};

// Shows what is on a surface, pixel for pixel. The surface is not copied: between two
// repaints it stands still, and inside one no window is painted.
class MapPicture : public QWidget {
    Q_OBJECT

public:
    explicit MapPicture(QWidget* parent = nullptr);

    // Borrowed for the widget's life.
    void Show(const QtDrawingSurface& surface);
    // Borrowed likewise.
    void ShowOver(PictureOverlay& overlay) { overlay_ = &overlay; }
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

    PictureOverlay* overlay_ = nullptr;
    std::optional<Band> band_;
};

} // namespace vardenix
