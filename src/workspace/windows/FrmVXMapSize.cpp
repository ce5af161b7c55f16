// How the map's window and its picture follow one another.

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/WindowPlace.h"
#include "ui_FrmVXMap.h"
#include "workspace/windows/FrmVXMap.h"

#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>

namespace vardenix {

namespace {

// Below that there would be nothing left to take hold of.
constexpr int LeastSide = 120;
// Desktops place and frame a window, and cut it to the screen, for so long after it was
// shown or sized by the program; only then is a new size the user's.
constexpr int64_t Settled = 1000; // ms
// Nobody's hand rests for so long while it draws an edge.
constexpr int AtRest = 300; // ms
// A room that is drawn to another size is followed so often.
constexpr int AnotherRoom = 30; // ms

} // namespace

// Where every command puts its post. The bars that would move the picture in the window
// stay away: those of the terrain reach everything.
void FrmVXMap::HoldLowerLeft() {
    margins_ = layout()->contentsMargins();
    ui_->ground->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    ui_->ground->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScrollBar* down = ui_->ground->verticalScrollBar();
    OnSignal(down, &QAbstractSlider::rangeChanged, this,
             [down] { down->setValue(down->maximum()); });
}

// A part of another window leaves the border to that.
QMargins FrmVXMap::Margins() const { return isWindow() ? margins_ : QMargins(); }

QSize FrmVXMap::RoundPicture() const {
    const int bars =
        ui_->strip->height() + ui_->HScroll1->sizeHint().height() + ui_->status->height();
    const QMargins round = Margins();
    return {ui_->VScroll1->sizeHint().width() + round.left() + round.right(),
            bars + round.top() + round.bottom()};
}

WindowSize FrmVXMap::PictureRoom(QSize window) const {
    const QSize room = window - RoundPicture();
    return {room.width(), room.height()};
}

QSize FrmVXMap::MostOfScreen() const {
    return screen()->availableSize() - FrameSize(*this);
}

// At the upper left of a window that has more room, until the picture has grown.
void FrmVXMap::PlacePicture() {
    const QSize form =
        QSize(view_.PictureWidth(), view_.PictureHeight()) + RoundPicture();
    const int right = std::max(0, width() - form.width());
    const int below = std::max(0, height() - form.height());
    layout()->setContentsMargins(Margins() + QMargins(0, 0, right, below));
}

void FrmVXMap::FitRoundPicture() {
    const QSize picture(view_.PictureWidth(), view_.PictureHeight());
    ui_->PicShow->setFixedSize(picture);
    ui_->ground->setMaximumSize(picture);
    ui_->HScroll1->setMaximumWidth(picture.width());
    ui_->VScroll1->setMaximumHeight(picture.height());
    const QSize form = picture + RoundPicture();
    setMinimumSize(std::min(form.width(), LeastSide), std::min(form.height(), LeastSide));
    PlacePicture();
    if (!isWindow() || isMaximized() || keepSize_)
        return;
    resize(form.boundedTo(MostOfScreen()));
}

void FrmVXMap::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    sinceSized_.start();
}

void FrmVXMap::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    PlacePicture();
    QScrollBar* down = ui_->ground->verticalScrollBar();
    down->setValue(down->maximum());
    if (!isWindow() || isMaximized()) {
        drawing_.start(AnotherRoom, this);
        return;
    }
    if (!event->spontaneous() || windowState() != Qt::WindowNoState || !isVisible()) {
        sinceSized_.start();
        return;
    }
    if (!sinceSized_.isValid() || !sinceSized_.hasExpired(Settled))
        return;
    if (!drawing_.isActive())
        beforeDrawn_ = event->oldSize();
    drawing_.start(AtRest, this);
}

void FrmVXMap::timerEvent(QTimerEvent* event) {
    if (event->timerId() != drawing_.timerId())
        return QWidget::timerEvent(event);
    if (view_.ScrollBusy)
        return; // files are read or written; a moment later
    drawing_.stop();
    if (isWindow() && !isMaximized())
        EdgesDrawn();
    else if (isVisible())
        Fill(size());
}

void FrmVXMap::EdgesDrawn() {
    if (windowState() != Qt::WindowNoState)
        return;
    const int16_t cells = DrawnCells(view_, PictureRoom(beforeDrawn_),
                                     PictureRoom(size()), PictureRoom(MostOfScreen()));
    if (cells == 0)
        return;
    if (cells == view_.GridCells)
        return FitRoundPicture();
    view_.GridCells = cells;
    emit GridChosen();
}

void FrmVXMap::FollowRoom() {
    sinceSized_.start();
    drawing_.stop();
    if (!isWindow())
        Fill(size());
    else if (isMaximized())
        Fill(MostOfScreen()); // which the desktop is about to give it
    else
        BeAsBefore();
}

void FrmVXMap::Fill(QSize window) {
    filledScreen_ = isWindow();
    if (filling_.Fill(PictureRoom(window)))
        emit RoomFilled();
}

void FrmVXMap::BeAsBefore() {
    if (!filling_.End())
        return;
    // The desktop itself gives a window the size that it had before.
    const QScopedValueRollback keep(keepSize_, filledScreen_ && filling_.SquareKept());
    emit RoomFilled();
    FitRoundPicture();
}

} // namespace vardenix
