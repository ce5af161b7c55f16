#include "bineditor/windows/TilePicture.h"

#include "platform/windows/RunTimeBarrier.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>

#include <cmath>

namespace vardenix {

namespace {

enum Cursor { PathCursor, AreaCursor, PlainCursor };

// A cross, with what the next drag makes beside it.
QCursor MakeCursor(Cursor kind) {
    constexpr int Side = 32;
    constexpr int Middle = 11;
    QPixmap picture(Side, Side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const auto draw = [&](const QPen& pen) {
        painter.setPen(pen);
        painter.drawLine(Middle, 1, Middle, 2 * Middle - 1);
        painter.drawLine(1, Middle, 2 * Middle - 1, Middle);
        if (kind == AreaCursor)
            painter.drawEllipse(QPoint(24, 24), 5, 5);
        else if (kind == PathCursor)
            painter.drawLine(18, 29, 29, 18);
    };
    draw(QPen(Qt::white, 3));
    draw(QPen(Qt::black, 1));
    painter.end();
    return QCursor(picture, Middle, Middle);
}

// Positions of broken files lie anywhere, and a painter has no use for them.
bool CanBeDrawn(std::initializer_list<double> values) {
    constexpr double Farthest = 1e6; // pixels
    for (const double value : values)
        if (!(std::abs(value) < Farthest))
            return false;
    return true;
}

} // namespace

TilePicture::TilePicture(QWidget* parent) : QWidget(parent) {
    setObjectName("TilePic");
    setMouseTracking(true);
    for (const Cursor kind : {PathCursor, AreaCursor, PlainCursor})
        cursors_[kind] = MakeCursor(kind);
    setCursor(cursors_[PlainCursor]);
}

void TilePicture::SetImage(QImage image) {
    image_ = std::move(image);
    SetZoom(1);
}

void TilePicture::SetZoom(double zoom) {
    setFixedSize(std::max(1, static_cast<int>(std::lround(image_.width() * zoom))),
                 std::max(1, static_cast<int>(std::lround(image_.height() * zoom))));
    update();
}

void TilePicture::SetDrawn(const DrawnTile& drawn) {
    drawn_ = drawn;
    update();
}

TileScale TilePicture::Scale() const {
    return {static_cast<double>(width()), static_cast<double>(height())};
}

void TilePicture::SetPending(bool area, bool path) {
    pendingArea_ = area;
    pendingPath_ = path && !area;
}

void TilePicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.drawImage(rect(), image_);
    if (drawn_.Tile != nullptr) {
        if (drawn_.Areas)
            DrawAreas(painter);
        if (drawn_.Paths)
            DrawPaths(painter);
    }
    if (dragging_)
        DrawBand(painter);
}

void TilePicture::DrawAreas(QPainter& painter) const {
    const TileScale scale = Scale();
    for (int32_t row = 1; row <= drawn_.Tile->NumAreas; ++row) {
        const TileArea& area = drawn_.Tile->Areas[static_cast<size_t>(row)];
        const double x = scale.FeetToScreen(area.CenterY);
        const double y = scale.FeetToScreenFlipped(area.CenterX);
        const double radius = scale.FeetToScreen(area.Radius);
        if (!CanBeDrawn({x, y, radius}) || radius < 0)
            continue;
        painter.setPen(row == drawn_.SelectedArea ? drawn_.SelectedAreaColor
                                                  : drawn_.AreaColor);
        painter.drawEllipse(QPointF(x, y), radius, radius);
    }
}

void TilePicture::DrawPaths(QPainter& painter) const {
    const TileScale scale = Scale();
    for (int32_t row = 1; row <= drawn_.Tile->NumPaths; ++row) {
        const TilePath& path = drawn_.Tile->Paths[static_cast<size_t>(row)];
        const QPointF from(scale.FeetToScreen(path.StartY),
                           scale.FeetToScreenFlipped(path.StartX));
        const QPointF to(scale.FeetToScreen(path.EndY),
                         scale.FeetToScreenFlipped(path.EndX));
        if (!CanBeDrawn({from.x(), from.y(), to.x(), to.y()}))
            continue;
        painter.setPen(
            QPen(row == drawn_.SelectedPath ? drawn_.SelectedPathColor : drawn_.PathColor,
                 PenWidth(scale, path.Width)));
        painter.drawLine(from, to);
    }
}

// Shape1 and Line1.
void TilePicture::DrawBand(QPainter& painter) const {
    painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    const QPointF start(band_.DragStartX, band_.DragStartY);
    if (pendingArea_)
        painter.drawEllipse(start, band_.DragRadius(), band_.DragRadius());
    painter.drawLine(start, QPointF(band_.DragEndX, band_.DragEndY));
}

void TilePicture::ShowCursor(Qt::KeyboardModifiers keys) {
    if ((keys & Qt::ShiftModifier) != 0)
        setCursor(cursors_[PathCursor]);
    else if ((keys & Qt::ControlModifier) != 0 || pendingArea_)
        setCursor(cursors_[AreaCursor]);
    else
        setCursor(cursors_[pendingPath_ ? PathCursor : PlainCursor]);
}

void TilePicture::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if ((event->modifiers() & Qt::ShiftModifier) != 0)
        SetPending(false, true);
    if ((event->modifiers() & Qt::ControlModifier) != 0)
        SetPending(true, false);
    dragging_ = pendingArea_ || pendingPath_;
    const QPointF at = event->position();
    band_ = {at.x(), at.y(), at.x(), at.y()};
    update();
}

void TilePicture::mouseMoveEvent(QMouseEvent* event) {
    ShowCursor(event->modifiers());
    const QPointF at = event->position();
    if (dragging_) {
        band_.DragEndX = at.x();
        band_.DragEndY = at.y();
        update();
    }
    emit Hovered(at.x(), at.y());
}

void TilePicture::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_)
        return;
    band_.DragEndX = event->position().x();
    band_.DragEndY = event->position().y();
    const bool area = pendingArea_;
    dragging_ = false;
    SetPending(false, false);
    ShowCursor(event->modifiers());
    update();
    if (area)
        emit AreaDrawn(band_.DragStartX, band_.DragStartY, band_.DragEndX,
                       band_.DragEndY);
    else
        emit PathDrawn(band_.DragStartX, band_.DragStartY, band_.DragEndX,
                       band_.DragEndY);
}

} // namespace vardenix

#include "moc_TilePicture.cpp"
