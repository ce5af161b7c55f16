// What mouse, wheel and keys do on the map.

#include "mapview/MapPatch.h"
#include "mapview/PictureBox.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/OwnKeys.h"
#include "texts/Windows1252.h"
#include "ui_FrmVXMap.h"
#include "workspace/MapGhost.h"
#include "workspace/StatusLine.h"
#include "workspace/ZoomAndDrag.h"
#include "workspace/windows/FrmVXMap.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

// Where the pointers point in their pictures.
const std::map<MapPointer, QCursor>& Pointers() {
    static const std::map<MapPointer, QCursor> pointers{
        {MapPointer::Brush, QCursor(QPixmap(":/brush.png"), 4, 27)},
        {MapPointer::Rectangle, QCursor(QPixmap(":/rectangle.png"), 6, 6)},
        {MapPointer::Fill, QCursor(QPixmap(":/fill.png"), 6, 25)},
        {MapPointer::Pick, QCursor(QPixmap(":/pick.png"), 4, 28)},
        {MapPointer::Select, QCursor(QPixmap(":/select.png"), 6, 6)},
        {MapPointer::Eraser, QCursor(QPixmap(":/eraser.png"), 6, 25)},
        {MapPointer::Cross, QCursor(Qt::CrossCursor)}};
    return pointers;
}

GestureKeys KeysOf(const QMouseEvent& event) {
    return {.Shift = event.modifiers().testFlag(Qt::ShiftModifier),
            .Alt = event.modifiers().testFlag(Qt::AltModifier),
            .Control = event.modifiers().testFlag(Qt::ControlModifier)};
}

} // namespace

void FrmVXMap::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && Escape())
        return;
    if (event->key() == Qt::Key_Escape && !ui_->VScroll1->isEnabled())
        state_.AbortPaint = true;
    constexpr Qt::KeyboardModifiers others =
        Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (event->key() == Qt::Key_Space && (event->modifiers() & others) == 0) {
        spaceHeld_ = true;
        return ShowPointer();
    }
    if (!TakeToolKey(*event) && !ScrollKey(event->key()))
        QWidget::keyPressEvent(event);
}

void FrmVXMap::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        spaceHeld_ = false;
        ShowPointer();
    }
    QWidget::keyReleaseEvent(event);
}

void FrmVXMap::focusOutEvent(QFocusEvent* event) {
    // Its release would be told elsewhere.
    spaceHeld_ = false;
    ShowPointer();
    QWidget::focusOutEvent(event);
}

bool FrmVXMap::TakeToolKey(const QKeyEvent& event) {
    if ((event.modifiers() &
         (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != Qt::NoModifier)
        return false;
    if (TriggerByOwnKey(*this, event))
        return true;
    switch (event.key()) {
    case Qt::Key_BracketLeft:
        ui_->strip->SetBrushSize(interaction_.BrushSize - 1);
        return true;
    case Qt::Key_BracketRight:
        ui_->strip->SetBrushSize(interaction_.BrushSize + 1);
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        ZoomBy(1);
        return true;
    case Qt::Key_Minus:
        ZoomBy(-1);
        return true;
    default:
        return false;
    }
}

bool FrmVXMap::ScrollKey(int key) {
    using Slide = QAbstractSlider::SliderAction;
    const auto move = [](QScrollBar* bar, Slide how) {
        bar->triggerAction(how);
        return true;
    };
    switch (key) {
    case Qt::Key_Left:
        return move(ui_->HScroll1, Slide::SliderSingleStepSub);
    case Qt::Key_Right:
        return move(ui_->HScroll1, Slide::SliderSingleStepAdd);
    case Qt::Key_Home:
        return move(ui_->HScroll1, Slide::SliderPageStepSub);
    case Qt::Key_End:
        return move(ui_->HScroll1, Slide::SliderPageStepAdd);
    case Qt::Key_Up:
        return move(ui_->VScroll1, Slide::SliderSingleStepSub);
    case Qt::Key_Down:
        return move(ui_->VScroll1, Slide::SliderSingleStepAdd);
    case Qt::Key_PageUp:
        return move(ui_->VScroll1, Slide::SliderPageStepSub);
    case Qt::Key_PageDown:
        return move(ui_->VScroll1, Slide::SliderPageStepAdd);
    default:
        return false;
    }
}

// The menu key stands for a right click where the cursor is. The click itself has been
// handled as it came.
void FrmVXMap::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QPoint at = PlaceOfPointer().toPoint();
    if (mouse_.RightDown(at.x(), at.y()))
        ShowPopup(ui_->PicShow->mapToGlobal(at));
}

// With Alt some desktops turn the wheel's axis, and so do sideways wheels. Forward goes
// to the bar's lower values.
void FrmVXMap::wheelEvent(QWheelEvent* event) {
    event->accept();
    const QPoint turned = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const int steps = zoomTurned_.NotchesWith(turned.y());
        return ZoomBy(steps);
    }
    const bool sideways =
        event->modifiers().testFlag(Qt::ShiftModifier) || turned.y() == 0;
    WheelSum& sum = sideways ? turnedAcross_ : turnedDown_;
    const int notches = sum.NotchesWith(turned.y() != 0 ? turned.y() : turned.x());
    QScrollBar* bar = sideways ? ui_->HScroll1 : ui_->VScroll1;
    bar->setValue(
        AfterWheel(bar->value(), -notches, view_, {bar->minimum(), bar->maximum()}));
}

void FrmVXMap::PicShow_MouseDown(QMouseEvent& event) {
    setFocus(Qt::MouseFocusReason);
    const QPointF at = event.position();
    const bool moves = event.button() == Qt::MiddleButton ||
                       (event.button() == Qt::LeftButton && spaceHeld_);
    if (moves) {
        StopGesture();
        panning_.emplace(view_, event.globalPosition().x(), event.globalPosition().y());
        panningBy_ = event.button();
        HearEveryMove();
        return ShowHand(false);
    }
    switch (event.button()) {
    case Qt::RightButton:
        if (mouse_.RightDown(at.x(), at.y()))
            ShowPopup(event.globalPosition().toPoint());
        return;
    case Qt::LeftButton:
        // A box of the click's own may come up over the band.
        ui_->PicShow->SetBand({});
        if (const auto changed = mouse_.LeftDown(at.x(), at.y(), KeysOf(event)))
            RepaintPosts(*changed);
        return ShowTools(); // a pick may have changed them
    default:
        return;
    }
}

void FrmVXMap::PicShow_MouseUp(QMouseEvent& event) {
    if (panning_ && event.button() == panningBy_) {
        const bool click = !panning_->Moved() && event.button() == Qt::MiddleButton;
        panning_.reset();
        HearEveryMove();
        ShowPointer();
        // Only now is it known that it was no drag.
        if (click)
            mouse_.MiddleDown(event.position().x(), event.position().y());
        return;
    }
    if (event.button() != Qt::LeftButton || !mouse_.Goes())
        return;
    if (const auto changed = mouse_.LeftUp(event.position().x(), event.position().y()))
        RepaintPosts(*changed);
    PicShow_MouseMove(event);
}

void FrmVXMap::ShowPopup(QPoint globalPosition) { mnupup1_->popup(globalPosition); }

void FrmVXMap::PicShow_MouseMove(const QMouseEvent& event) {
    if (Pan(event))
        return;
    const QPointF at = event.position();
    if (event.buttons().testFlag(Qt::LeftButton)) {
        if (const auto changed = mouse_.LeftMove(at.x(), at.y()))
            RepaintPosts(*changed);
    } else if (mouse_.Goes()) {
        StopGesture(); // let go where nobody told
    }
    PointAt(at);
}

void FrmVXMap::HearEveryMove() {
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents,
                                   !pointerOver_ || panning_);
}

bool FrmVXMap::Pan(const QMouseEvent& event) {
    if (!panning_)
        return false;
    if (!event.buttons().testFlag(panningBy_)) {
        panning_.reset();
        HearEveryMove();
        return false;
    }
    const auto wanted = panning_->To(event.globalPosition().x(),
                                     event.globalPosition().y(), state_.Terrain.MapWidth);
    const PostPlace now{view_.MapLeftX, view_.MapBottomY};
    if (wanted && !view_.ScrollBusy && !(*wanted == now)) {
        SetPosition(*wanted);
        workspace_.RefreshPicArray();
    }
    return true;
}

void FrmVXMap::PointAt(QPointF position) {
    pointedAt_ = position;
    ShowPointer();
    ShowBand(position);
    ShowStatus(position);
    ReadOut out = ReadOutAt(view_, state_.Terrain, state_.Catalogue.Lookup, position.x(),
                            position.y());
    if (const std::string name = NameOfPlace(position); !name.empty())
        out.Text += "\r\n" + name;
    toolTip_.SetBackColor(out.BackColor);
    toolTip_.SetToolTipHeader(QString::fromStdString(out.Header));
    toolTip_.SetToolTipHeaderShow(!out.Header.empty());
    toolTip_.SetToolText(*ui_->PicShow, QString::fromStdString(Utf8FromBytes(out.Text)));
}

void FrmVXMap::ShowPointer() {
    if (panning_ || spaceHeld_)
        return ShowHand(!panning_);
    const auto pointer = Pointers().find(PointerFor(interaction_, view_));
    if (pointer == Pointers().end())
        ui_->PicShow->unsetCursor();
    else
        ui_->PicShow->setCursor(pointer->second);
}

void FrmVXMap::ShowHand(bool open) {
    ui_->PicShow->setCursor(open ? Qt::OpenHandCursor : Qt::ClosedHandCursor);
}

std::string FrmVXMap::NameOfPlace(QPointF position) const {
    if (!placeNames_)
        return {};
    const bool height = view_.L0Mode;
    const PostPlace place = height
                                ? ElevationUnderCursor(view_, position.x(), position.y())
                                : PostUnderCursor(view_, position.x(), position.y());
    const bool inside =
        height ? OnElevations(place, state_.Terrain) : OnTerrain(place, state_.Terrain);
    return inside ? placeNames_(place, height) : std::string();
}

void FrmVXMap::ShowStatus(QPointF position) {
    std::string words = PostWords(view_, state_.Terrain, state_.Catalogue.Lookup,
                                  position.x(), position.y());
    if (const std::string name = NameOfPlace(position); !name.empty())
        words += "   " + name;
    ui_->lblPost->setText(QString::fromStdString(Utf8FromBytes(words)));
}

QPointF FrmVXMap::PlaceOfPointer() const {
    if (ui_->PicShow->underMouse())
        return ui_->PicShow->mapFromGlobal(QCursor::pos());
    return ui_->PicShow->visibleRegion().boundingRect().center();
}

void FrmVXMap::ZoomAt(QPointF place, int16_t zoomPosts) {
    if (view_.ScrollBusy || zoomPosts == view_.ZoomPosts || state_.Terrain.MapWidth == 0)
        return;
    const PostPlace position =
        ZoomedAt(view_, zoomPosts, place.x(), place.y(), state_.Terrain.MapWidth);
    wishes_.SetZoom(zoomPosts);
    LoadImageControls();
    SetPosition(position);
    workspace_.RefreshPicArray();
}

void FrmVXMap::ZoomBy(int steps) {
    ZoomAt(PlaceOfPointer(),
           ZoomAfterWheel(view_.ZoomPosts, -steps,
                          MostZoomPosts(view_, state_.Terrain.MapWidth)));
}

void FrmVXMap::ShowWhole() {
    const int32_t width = state_.Terrain.MapWidth;
    if (view_.ScrollBusy || width == 0)
        return;
    wishes_.SetZoom(ZoomOfWhole(view_, width));
    LoadImageControls();
    SetPosition({0, 0});
    workspace_.RefreshPicArray();
}

void FrmVXMap::ShowBand(QPointF position) {
    if (overlay_.PointAt(PostUnderCursor(view_, position.x(), position.y()),
                         mouse_.Line()))
        ui_->PicShow->update();
    const auto ghost = mouse_.GhostWith(position.x(), position.y());
    if (!ghost)
        return ui_->PicShow->SetBand({});
    const PostBox& squares = ghost->Squares;
    const PictureBox band = SquaresOnPicture(view_, squares, ghost->OfHeights);
    const QPoint topLeft(PixelAt(band.LowerLeft.X), PixelAt(band.UpperRight.Y));
    const QPoint bottomRight(PixelAt(band.UpperRight.X), PixelAt(band.LowerLeft.Y));
    const QSize size(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y());
    MapPicture::Band shown;
    shown.Frame = QRect(topLeft, size);
    shown.Color = ColorOf(view_.ExportColor);
    if (ghost->TellsSize)
        shown.Words = QString("%1 X %2")
                          .arg(squares.X2 - squares.X1 + 1)
                          .arg(squares.Y2 - squares.Y1 + 1);
    if (const auto posts = PostsOfGhost(*ghost, view_, state_.Terrain.MapWidth)) {
        const LentTiles lent(state_.Terrain, *posts, ghost->Tile);
        const MapPatch patch = PatchOf(view_, *posts, 0);
        if (patch.Clip.Width > 0 && patch.Clip.Height > 0) {
            patch_.Resize(patch.Clip.Width, patch.Clip.Height);
            renderer_.RepaintPatch(view_, patch_, patch, layers_);
            shown.Ghost = patch_.Image().copy();
            shown.GhostAt = {patch.Clip.Left, patch.Clip.Top};
        }
    }
    ui_->PicShow->SetBand(std::move(shown));
}

bool FrmVXMap::Escape() {
    if (StopWaiting())
        return true;
    if (interaction_.Hand.Selected.Empty())
        return false;
    Select(interaction_, {}, workspace_);
    return true;
}

bool FrmVXMap::StopWaiting() {
    const bool goes = mouse_.Goes() || mouse_.Waits();
    if (!goes && !interaction_.Hand.Stamp && !interaction_.Waits())
        return false;
    // One thing at a time.
    if (goes) {
        StopGesture();
    } else if (interaction_.Hand.Stamp) {
        interaction_.Hand.Stamp.reset();
    } else {
        interaction_.StopWaiting();
        wishes_.HideFrame7();
    }
    ShowTools();
    PointAt(ui_->PicShow->mapFromGlobal(QCursor::pos()));
    return true;
}

} // namespace vardenix
