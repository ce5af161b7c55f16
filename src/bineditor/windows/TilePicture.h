#pragma once

#include "bineditor/TileDetail.h"

#include <QCursor>
#include <QImage>
#include <QWidget>

#include <array>

namespace vardenix {

// What TilePic draws over the picture. Rows count from 1, 0 is none.
struct DrawnTile {
    const TileRecord* Tile = nullptr;
    bool Areas = true;
    bool Paths = true;
    int32_t SelectedArea = 0;
    int32_t SelectedPath = 0;
    QColor AreaColor;
    QColor SelectedAreaColor;
    QColor PathColor;
    QColor SelectedPathColor;
};

// TilePic: a tile's picture with its areas and paths, and the rubber band of a new one.
class TilePicture : public QWidget {
    Q_OBJECT

public:
    explicit TilePicture(QWidget* parent = nullptr);

    void SetImage(QImage image);
    // As large as the image times the zoom.
    void SetZoom(double zoom);
    void SetDrawn(const DrawnTile& drawn);
    TileScale Scale() const;

    // The next drag makes an area, or a path; at most one of them.
    void SetPending(bool area, bool path);

    QSize sizeHint() const override { return size(); }

signals:
    void AreaDrawn(double startX, double startY, double endX, double endY);
    void PathDrawn(double startX, double startY, double endX, double endY);
    void Hovered(double x, double y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void DrawAreas(QPainter& painter) const;
    void DrawPaths(QPainter& painter) const;
    void DrawBand(QPainter& painter) const;
    void ShowCursor(Qt::KeyboardModifiers keys);

    QImage image_;
    DrawnTile drawn_;
    std::array<QCursor, 3> cursors_; // path, area, neither
    bool pendingArea_ = false;
    bool pendingPath_ = false;
    bool dragging_ = false;
    RubberBand band_;
};

} // namespace vardenix
