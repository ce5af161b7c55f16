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

QSize FrmVXMap::RoundPicture() const {
    const int bars =
        ui_->strip->height() + ui_->HScroll1->sizeHint().height() + ui_->status->height();
    return {ui_->VScroll1->sizeHint().width() + margins_.left() + margins_.right(),
            bars + margins_.top() + margins_.bottom()};
}

WindowSize FrmVXMap::PictureRoom(QSize window) const {
    const QSize room = window - RoundPicture();
    return {room.width(), room.height()};
}

QSize FrmVXMap::MostOfScreen() const {
    return screen()->availableSize() - FrameSize(*this);
}

// Where the window has more room than the picture it lies at the top: on the right of a
// whole screen, whose left has the panel; in the middle of one window.
void FrmVXMap::PlacePicture() {
    const QSize form = QSize(view_.PictureSide(), view_.PictureSide()) + RoundPicture();
    const int right = std::max(0, width() - form.width());
    const int left = isMaximized() ? right : isWindow() ? 0 : right / 2;
    const int below = std::max(0, height() - form.height());
    layout()->setContentsMargins(margins_ + QMargins(left, 0, right - left, below));
}

void FrmVXMap::FitRoundPicture() {
    const int side = view_.PictureSide();
    ui_->PicShow->setFixedSize(side, side);
    ui_->ground->setMaximumSize(side, side);
    ui_->HScroll1->setMaximumWidth(side);
    ui_->VScroll1->setMaximumHeight(side);
    const QSize form = QSize(side, side) + RoundPicture();
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
    if (!isWindow()) {
        drawing_.start(AtRest, this);
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
    if (isWindow())
        EdgesDrawn();
    else if (isVisible())
        FollowRoom();
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
    Choose({view_.TilePixels, cells}, true);
}

void FrmVXMap::Choose(const GridChoice& wanted, bool forGood) {
    if (wanted == ChoiceOf(view_) && !forGood)
        return;
    view_.TilePixels = wanted.TilePixels;
    view_.GridCells = wanted.GridCells;
    emit GridChosen(forGood);
}

void FrmVXMap::FollowRoom() {
    sinceSized_.start();
    drawing_.stop();
    if (!isWindow())
        FillPart();
    else if (isMaximized())
        FillScreen();
    else if (filled_ && !isMinimized())
        BeAsBefore();
}

void FrmVXMap::FillScreen() {
    if (filled_)
        return;
    const WindowSize room = PictureRoom(MostOfScreen());
    filled_ = {ChoiceOf(view_), LargestGrid(view_, std::min(room.Width, room.Height)),
               true};
    Choose(filled_->Chosen, false);
}

// Whenever its room has changed; what was chosen on the panel since is what comes back.
void FrmVXMap::FillPart() {
    const WindowSize room = PictureRoom(size());
    const GridChoice now = ChoiceOf(view_);
    const GridChoice before = filled_ && filled_->Chosen == now ? filled_->Before : now;
    filled_ = {before, FittingGrid(view_, std::min(room.Width, room.Height)), false};
    Choose(filled_->Chosen, false);
}

// What was chosen on the panel meanwhile stays chosen.
void FrmVXMap::BeAsBefore() {
    const Filled filled = *filled_;
    filled_.reset();
    const GridChoice now = ChoiceOf(view_);
    if (!(now == filled.Chosen)) {
        Choose(now, true);
        return FitRoundPicture();
    }
    // The desktop itself gives a window the size that it had before.
    const QScopedValueRollback keep(keepSize_, filled.Screen);
    Choose(filled.Before, false);
    FitRoundPicture();
}

} // namespace vardenix
