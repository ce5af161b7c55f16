#include "workspace/windows/EdgeHandle.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

#include <cstdlib>

namespace vardenix {

namespace {

constexpr int HandleWidth = 9;
constexpr double ArrowLength = 3; // half of it
constexpr double ArrowHeight = 6;

} // namespace

EdgeHandle::EdgeHandle(QWidget* parent) : QAbstractButton(parent) {
    setObjectName("panelHandle");
    setFixedWidth(HandleWidth);
    setCursor(Qt::SplitHCursor);
    setFocusPolicy(Qt::NoFocus); // F4 does the same
    setAttribute(Qt::WA_Hover);
    setAccessibleName(tr("Fold the panel away or bring it back"));
    setToolTip(tr("A click folds the panel away or brings it back (F4); drawn to a side "
                  "it makes it wider or narrower"));
}

void EdgeHandle::ShowFolded(bool folded) {
    folded_ = folded;
    update();
}

void EdgeHandle::mousePressEvent(QMouseEvent* event) {
    QAbstractButton::mousePressEvent(event);
    dragged_ = false;
    if (event->button() == Qt::LeftButton)
        pressedAt_ = event->globalPosition().toPoint().x();
}

void EdgeHandle::mouseMoveEvent(QMouseEvent* event) {
    if (!pressedAt_)
        return QAbstractButton::mouseMoveEvent(event);
    const int x = event->globalPosition().toPoint().x();
    if (!dragged_ && std::abs(x - *pressedAt_) < QApplication::startDragDistance())
        return;
    dragged_ = true;
    setDown(false);
    emit Dragged(x - *pressedAt_);
    pressedAt_ = x;
}

void EdgeHandle::mouseReleaseEvent(QMouseEvent* event) {
    pressedAt_.reset();
    QAbstractButton::mouseReleaseEvent(event);
}

void EdgeHandle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(
        rect(), palette().color(underMouse() ? QPalette::Midlight : QPalette::Window));
    const int towards = folded_ ? 1 : -1;
    const QPointF middle = QRectF(rect()).center();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::WindowText));
    painter.drawPolygon(QPolygonF{middle + QPointF(towards * ArrowLength, 0),
                                  middle + QPointF(-towards * ArrowLength, -ArrowHeight),
                                  middle + QPointF(-towards * ArrowLength, ArrowHeight)});
}

} // namespace vardenix

#include "moc_EdgeHandle.cpp"
