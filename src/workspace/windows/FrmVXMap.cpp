#include "workspace/windows/FrmVXMap.h"

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/WindowPlace.h"
#include "ui_FrmVXMap.h"

#include <QCloseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>

namespace vardenix {

namespace {

constexpr int WheelNotch = QWheelEvent::DefaultDeltasPerStep;
// Below that there would be nothing left to take hold of.
constexpr int LeastSide = 120;

void SetRange(QScrollBar& bar, const ControlRange& range) {
    bar.setRange(range.Min, range.Max);
    bar.setPageStep(range.LargeChange);
}

} // namespace

FrmVXMap::FrmVXMap(ProgramState& state, MapView& view, MapRenderer& renderer,
                   WorkspaceCommands& commands)
    : state_(state), view_(view), renderer_(renderer), commands_(commands),
      ui_(std::make_unique<Ui::FrmVXMap>()) {
    ui_->setupUi(this);
    ui_->ground->setBackgroundRole(QPalette::Mid);
    ui_->ground->horizontalScrollBar()->setToolTip(tr("Reaches the rest of the picture"));
    ui_->ground->verticalScrollBar()->setToolTip(tr("Reaches the rest of the picture"));
    ui_->PicShow->Show(picture2_);
    for (const QScrollBar* bar : {ui_->HScroll1, ui_->VScroll1})
        OnSignal(bar, &QScrollBar::valueChanged, this, [this] { Scroll_Change(); });
    for (QWidget* part : std::initializer_list<QWidget*>{
             ui_->HScroll1, ui_->VScroll1, ui_->PicShow, ui_->ground->viewport()})
        part->installEventFilter(this);
}

FrmVXMap::~FrmVXMap() = default;

void FrmVXMap::InitForm() {
    if (!vardenix::InitForm(state_.Configuration, state_.Terrain.MapWidth, view_))
        return;
    const ViewPosition saved{view_.MapLeftX, view_.MapBottomY};
    LoadImageControls(); // new ranges may move the bars
    SetPosition(saved);
}

void FrmVXMap::LoadImageControls() {
    // The desktop puts its frame and title round what is asked for here.
    const WindowMetrics metrics{.ScrollBarWidth = ui_->VScroll1->sizeHint().width(),
                                .ScrollBarHeight = ui_->HScroll1->sizeHint().height()};
    const auto layout =
        vardenix::LoadImageControls(view_, state_.Terrain.MapWidth, metrics);
    if (!layout)
        return;
    {
        const ScrollBusyScope busy(view_);
        SetRange(*ui_->HScroll1, layout->HScroll1);
        SetRange(*ui_->VScroll1, layout->VScroll1);
    }
    if (picture2_.Image().width() == layout->PictureSide)
        return;
    picture2_.Resize(layout->PictureSide);
    FitRoundPicture(*layout);
}

void FrmVXMap::FitRoundPicture(const MapLayout& layout) {
    const int side = layout.PictureSide;
    ui_->PicShow->setFixedSize(side, side);
    ui_->ground->setMaximumSize(side, side);
    ui_->HScroll1->setMaximumWidth(side);
    ui_->VScroll1->setMaximumHeight(side);
    const QSize form(layout.FormWidth, layout.FormHeight);
    const QSize room = screen()->availableSize() - FrameSize(*this);
    setMinimumSize(std::min(form.width(), LeastSide), std::min(form.height(), LeastSide));
    // There is nothing to be seen beside the picture.
    setMaximumSize(form);
    // What the picture needs in one direction takes its scroll bar's room in the other.
    QSize wanted = form;
    if (form.height() > room.height())
        wanted.rwidth() += ui_->ground->verticalScrollBar()->sizeHint().width();
    if (form.width() > room.width())
        wanted.rheight() += ui_->ground->horizontalScrollBar()->sizeHint().height();
    resize(wanted.boundedTo(form).boundedTo(room));
}

void FrmVXMap::SetPosition(ViewPosition position) {
    const ScrollBusyScope busy(view_);
    ui_->HScroll1->setValue(position.X);
    ui_->VScroll1->setValue(-position.Y);
    // A bar that stands there already says nothing.
    Scroll_Change();
}

void FrmVXMap::Scroll_Change() {
    view_.MapLeftX = ui_->HScroll1->value();
    view_.MapBottomY = -ui_->VScroll1->value();
    state_.Configuration.X = view_.MapLeftX;
    state_.Configuration.Y = view_.MapBottomY;
    commands_.PositionChanged();
    if (!state_.Starting && !view_.ScrollBusy)
        commands_.RefreshPicArray();
}

void FrmVXMap::RefreshPicArray() {
    escWatch_.Begin();
    renderer_.RefreshPicArray(view_, picture2_, *this, nullptr);
}

void FrmVXMap::CopyToPicShow() { ui_->PicShow->update(); }

void FrmVXMap::LookForEsc() {
    if (escWatch_.Pressed())
        state_.AbortPaint = true;
}

void FrmVXMap::MakeViewPort(const MapView&) { emit ViewPainted(); }

void FrmVXMap::keyPressEvent(QKeyEvent* event) {
    using Action = QAbstractSlider::SliderAction;
    const auto move = [](QScrollBar* bar, Action action) { bar->triggerAction(action); };
    switch (event->key()) {
    case Qt::Key_Left:
        return move(ui_->HScroll1, Action::SliderSingleStepSub);
    case Qt::Key_Right:
        return move(ui_->HScroll1, Action::SliderSingleStepAdd);
    case Qt::Key_Home:
        return move(ui_->HScroll1, Action::SliderPageStepSub);
    case Qt::Key_End:
        return move(ui_->HScroll1, Action::SliderPageStepAdd);
    case Qt::Key_Up:
        return move(ui_->VScroll1, Action::SliderSingleStepSub);
    case Qt::Key_Down:
        return move(ui_->VScroll1, Action::SliderSingleStepAdd);
    case Qt::Key_PageUp:
        return move(ui_->VScroll1, Action::SliderPageStepSub);
    case Qt::Key_PageDown:
        return move(ui_->VScroll1, Action::SliderPageStepAdd);
    default:
        QWidget::keyPressEvent(event);
    }
}

// One notch is ZoomPosts posts; forward goes to the bar's lower values. With Alt some
// desktops turn the wheel's axis, and so do sideways wheels.
void FrmVXMap::wheelEvent(QWheelEvent* event) {
    event->accept();
    const QPoint turned = event->angleDelta();
    const bool sideways =
        event->modifiers().testFlag(Qt::ShiftModifier) || turned.y() == 0;
    int& sum = sideways ? wheelTurned_.rx() : wheelTurned_.ry();
    sum += turned.y() != 0 ? turned.y() : turned.x();
    const int notches = sum / WheelNotch;
    sum -= notches * WheelNotch;
    QScrollBar* bar = sideways ? ui_->HScroll1 : ui_->VScroll1;
    bar->setValue(bar->value() - notches * view_.ZoomPosts);
}

bool FrmVXMap::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    // Wherever the wheel is turned, it moves over the terrain.
    wheelEvent(static_cast<QWheelEvent*>(event));
    return true;
}

void FrmVXMap::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit MinimiseStateChanged();
}

void FrmVXMap::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    hide();
    commands_.WindowHidden("chkShowMain");
}

} // namespace vardenix
