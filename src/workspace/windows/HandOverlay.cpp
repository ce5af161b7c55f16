#include "workspace/windows/HandOverlay.h"

#include "workspace/SelectionEdges.h"

#include <QPainter>
#include <QPolygonF>

namespace vardenix {

namespace {

constexpr int Thick = 3;     // pixels of an edge
constexpr int HatchSide = 8; // of the pattern that repeats

// Black and white, so that one of them is seen on every ground.
const QBrush& Hatch() {
    static const QBrush hatch([] {
        QImage pattern(HatchSide, HatchSide, QImage::Format_RGB32);
        for (int y = 0; y < HatchSide; ++y)
            for (int x = 0; x < HatchSide; ++x)
                pattern.setPixel(
                    x, y, (x + y) % HatchSide < HatchSide / 2 ? 0xFF000000 : 0xFFFFFFFF);
        return pattern;
    }());
    return hatch;
}

std::vector<QRect> RectsOf(const Selection& selection, const MapView& view) {
    std::vector<QRect> rects;
    for (const PixelBox& box : EdgesOnPicture(selection, view, Thick))
        rects.emplace_back(box.Left, box.Top, box.Right - box.Left, box.Bottom - box.Top);
    return rects;
}

void PaintEdges(QPainter& painter, const std::vector<QRect>& edges) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Hatch());
    painter.drawRects(edges.data(), static_cast<int>(edges.size()));
    painter.setBrush(Qt::NoBrush);
}

Selection SelectionOf(const PostClip& clip, PostPlace corner, const MapView& view) {
    std::vector<RowSpan> spans;
    for (int32_t row = 0; row < clip.Height; ++row) {
        const int32_t y = corner.Y + row;
        if (y < view.MapBottomY - 1 || y > view.MapBottomY + view.ViewRows())
            continue;
        for (int32_t column = 0; column < clip.Width; ++column)
            if (clip.Selected[static_cast<size_t>(row) * static_cast<size_t>(clip.Width) +
                              static_cast<size_t>(column)] != 0)
                spans.push_back({y, corner.X + column, corner.X + column});
    }
    return Selection(std::move(spans));
}

} // namespace

void HandOverlay::Follow() { edges_ = RectsOf(interaction_.Hand.Selected, view_); }

bool HandOverlay::PointAt(PostPlace post, std::vector<PicturePoint> line) {
    const bool ghostMoves = interaction_.Hand.Stamp && !(post == pointer_);
    const bool lineGrows = line.size() != line_.size();
    pointer_ = post;
    line_ = std::move(line);
    return ghostMoves || lineGrows;
}

void HandOverlay::PaintGhost(QPainter& painter) const {
    const StampInHand& stamp = *interaction_.Hand.Stamp;
    const PostPlace corner{pointer_.X - stamp.Grip.X, pointer_.Y - stamp.Grip.Y};
    const double left = view_.CellSize() * (corner.X - view_.MapLeftX);
    const double bottom = view_.BottomOfRow(corner.Y);
    if (!ghost_.isNull()) {
        painter.setOpacity(0.75);
        painter.drawImage(QPoint(PixelAt(left), PixelAt(bottom) - ghost_.height()),
                          ghost_);
        painter.setOpacity(1);
    }
    PaintEdges(painter, RectsOf(SelectionOf(stamp.Clip, corner, view_), view_));
}

void HandOverlay::PaintOver(QPainter& painter) {
    PaintEdges(painter, edges_);
    if (interaction_.Hand.Stamp)
        PaintGhost(painter);
    if (line_.size() < 2)
        return;
    QPolygonF line;
    for (const PicturePoint& at : line_)
        line << QPointF(at.X, at.Y);
    painter.setPen(QPen(Hatch(), 2));
    painter.drawPolyline(line);
}

} // namespace vardenix
