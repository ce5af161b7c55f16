#include "bineditor/windows/TileSlots.h"

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"

#include <QDragEnterEvent>
#include <QFrame>
#include <QGridLayout>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>

namespace vardenix {

namespace {

constexpr int PerRow = 4;
// Highlightrect lies inside the picture.
constexpr int HighlightMargin = PixelsOfTwips(15);
constexpr int Parked = -1000;

} // namespace

std::vector<std::string> DraggedDds(const QMimeData& data) {
    std::vector<std::string> files;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile())
            return {};
        files.push_back(url.toLocalFile().toStdString());
    }
    return files;
}

TileSlot::TileSlot(TileSlots& owner, int slot)
    : QWidget(&owner), owner_(owner), slot_(slot) {
    setObjectName("PicTile_" + QString::number(slot));
    setAccessibleName("Slot " + QString::number(slot));
    setFixedSize(TileSlots::Side, TileSlots::Side);
    setMouseTracking(true);
    setAcceptDrops(true);
}

void TileSlot::SetPicture(QImage picture) {
    picture_ = std::move(picture);
    update();
}

void TileSlot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (picture_.isNull())
        painter.fillRect(rect(), palette().color(QPalette::Midlight));
    else
        painter.drawImage(rect(), picture_);
}

void TileSlot::mousePressEvent(QMouseEvent* event) {
    owner_.setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::LeftButton)
        emit owner_.SlotClicked(slot_);
}

void TileSlot::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit owner_.SlotOpened(slot_);
}

void TileSlot::mouseMoveEvent(QMouseEvent* /*event*/) { emit owner_.SlotHovered(slot_); }

void TileSlot::dragEnterEvent(QDragEnterEvent* event) {
    if (DraggedDds(*event->mimeData()).size() == 1)
        event->acceptProposedAction();
}

void TileSlot::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    emit owner_.FilesDropped(slot_, DraggedDds(*event->mimeData()));
}

TileSlots::TileSlots(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    for (int slot = 0; slot < 16; ++slot) {
        slots_[static_cast<size_t>(slot)] = new TileSlot(*this, slot);
        grid->addWidget(slots_[static_cast<size_t>(slot)], slot / PerRow, slot % PerRow);
    }
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    highlightrect_ = new QFrame(this);
    highlightrect_->setObjectName("Highlightrect");
    highlightrect_->setAttribute(Qt::WA_TransparentForMouseEvents);
    PlaceHighlight();
}

void TileSlots::SetHighlight(int slot, const QColor& color) {
    highlighted_ = slot;
    color_ = color;
    PlaceHighlight();
}

void TileSlots::PlaceHighlight() {
    if (highlighted_ < 0) {
        highlightrect_->move(Parked, 0);
        return;
    }
    highlightrect_->setStyleSheet(
        QString("#Highlightrect { border: %1px solid %2; background: transparent; }")
            .arg(hasFocus() ? 4 : 3)
            .arg(color_.name()));
    highlightrect_->setGeometry(At(highlighted_)
                                    .geometry()
                                    .marginsRemoved({HighlightMargin, HighlightMargin,
                                                     HighlightMargin, HighlightMargin}));
    highlightrect_->raise();
}

void TileSlots::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    PlaceHighlight();
}

void TileSlots::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    PlaceHighlight();
}

void TileSlots::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    PlaceHighlight();
}

void TileSlots::keyPressEvent(QKeyEvent* event) {
    const int slot = highlighted_ < 0 ? 0 : highlighted_;
    const auto go = [&](int to) {
        if (to >= 0 && to < 16)
            emit SlotClicked(to);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return go(slot - 1);
    case Qt::Key_Right:
        return go(slot + 1);
    case Qt::Key_Up:
        return go(slot - PerRow);
    case Qt::Key_Down:
        return go(slot + PerRow);
    case Qt::Key_Home:
        return go(0);
    case Qt::Key_End:
        return go(15);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit SlotOpened(slot);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace vardenix

#include "moc_TileSlots.cpp"
