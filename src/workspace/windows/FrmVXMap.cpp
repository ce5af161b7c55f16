#include "workspace/windows/FrmVXMap.h"

#include "mapview/ExportBox.h"
#include "platform/Windows1252.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/WindowPlace.h"
#include "ui_FrmVXMap.h"
#include "workspace/windows/Actions.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>

namespace vardenix {

namespace {

constexpr int WheelNotch = QWheelEvent::DefaultDeltasPerStep;
// Below that there would be nothing left to take hold of.
constexpr int LeastSide = 120;
// The read-out stays as long as somebody may want to read it.
constexpr int ReadOutTime = 120000; // ms
constexpr int ReadOutWidth = 240;   // pixels
// Where the brush's hairs end in its picture.
constexpr QPoint BrushTip{4, 27};

// The local files among what was dropped that are feature files by their names.
std::vector<std::string> DroppedFeatureFiles(const QMimeData& dropped) {
    std::vector<std::string> paths;
    for (const QUrl& url : dropped.urls()) {
        const QString path = url.toLocalFile();
        if (path.endsWith(".tdf", Qt::CaseInsensitive))
            paths.push_back(path.toStdString());
    }
    return paths;
}

void SetRange(QScrollBar& bar, const ControlRange& range) {
    bar.setRange(range.Min, range.Max);
    bar.setPageStep(range.LargeChange);
}

} // namespace

FrmVXMap::FrmVXMap(const Parts& parts)
    : state_(parts.State), view_(parts.View), interaction_(parts.Interaction),
      renderer_(parts.Renderer), workspace_(parts.Workspace), commands_(parts.Commands),
      features_(parts.Features),
      mouse_(parts.State.Terrain, parts.View, parts.Interaction, parts.Undo,
             parts.Workspace, parts.Commands),
      ui_(std::make_unique<Ui::FrmVXMap>()),
      brush_(QPixmap(":/brush.png"), BrushTip.x(), BrushTip.y()) {
    ui_->setupUi(this);
    ui_->ground->setBackgroundRole(QPalette::Mid);
    ui_->ground->horizontalScrollBar()->setToolTip(tr("Reaches the rest of the picture"));
    ui_->ground->verticalScrollBar()->setToolTip(tr("Reaches the rest of the picture"));
    ui_->PicShow->Show(picture2_);
    ui_->PicShow->setMouseTracking(true);
    for (const QScrollBar* bar : {ui_->HScroll1, ui_->VScroll1})
        OnSignal(bar, &QScrollBar::valueChanged, this, [this] { Scroll_Change(); });
    for (QWidget* part : std::initializer_list<QWidget*>{
             ui_->HScroll1, ui_->VScroll1, ui_->PicShow, ui_->ground->viewport()})
        part->installEventFilter(this);
    setAcceptDrops(true);
    MakePopup();
    MakeToolTip();
}

void FrmVXMap::MakePopup() {
    mnupup1_ = new QMenu(this);
    mnupup1_->setObjectName("mnupup1");
    const auto join = [this](const char* name, void (MapMouse::*verb)()) {
        QAction* entry = mnupup1_->addAction(CaptionOf(name));
        entry->setObjectName(name);
        OnSignal(entry, &QAction::triggered, this, [this, verb] { (mouse_.*verb)(); });
    };
    join("mnuTileProperties", &MapMouse::mnuTileProperties);
    join("mnuLocInBIN", &MapMouse::mnuLocInBIN);
    join("mnuLocColMAP", &MapMouse::mnuLocColMAP);
}

void FrmVXMap::MakeToolTip() {
    // The read-out is wanted while the panel has the keyboard, too.
    setAttribute(Qt::WA_AlwaysShowToolTips);
    toolTip_.Create(*this);
    toolTip_.SetDelayTime(ReadOutTime);
    toolTip_.SetMaxTipWidth(ReadOutWidth);
    toolTip_.AddTool(*ui_->PicShow);
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
        const ScrollBusyWhile busy(view_);
        const QScopedValueRollback placing(placing_, true);
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
    const ScrollBusyWhile busy(view_);
    const QScopedValueRollback placing(placing_, true);
    ui_->HScroll1->setValue(position.X);
    ui_->VScroll1->setValue(-position.Y);
    // A bar that stands there already says nothing.
    Scroll_Change();
}

void FrmVXMap::ShowPositionOfView() {
    const QSignalBlocker quietH(ui_->HScroll1);
    const QSignalBlocker quietV(ui_->VScroll1);
    ui_->HScroll1->setValue(view_.MapLeftX);
    ui_->VScroll1->setValue(-view_.MapBottomY);
}

void FrmVXMap::Scroll_Change() {
    // While files are read or written nothing is repainted, and the picture must stay
    // that of the posts that a click would meet.
    if (view_.ScrollBusy && !placing_)
        return ShowPositionOfView();
    view_.MapLeftX = ui_->HScroll1->value();
    view_.MapBottomY = -ui_->VScroll1->value();
    state_.Configuration.X = view_.MapLeftX;
    state_.Configuration.Y = view_.MapBottomY;
    workspace_.PositionChanged();
    if (!state_.Starting && !view_.ScrollBusy)
        workspace_.RefreshPicArray();
}

void FrmVXMap::RefreshPicArray() {
    escWatch_.Begin();
    renderer_.RefreshPicArray(view_, picture2_, *this, features_);
    // Another post may lie under the cursor, or the same with other values.
    if (ui_->PicShow->underMouse())
        PicShow_MouseMove(ui_->PicShow->mapFromGlobal(QCursor::pos()));
}

void FrmVXMap::CopyToPicShow() { ui_->PicShow->update(); }

void FrmVXMap::LookForEsc() {
    if (escWatch_.Pressed())
        state_.AbortPaint = true;
}

void FrmVXMap::MakeViewPort(const MapView&) { emit ViewPainted(); }

void FrmVXMap::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && StopWaiting())
        return;
    if (event->key() == Qt::Key_Escape && !ui_->VScroll1->isEnabled())
        state_.AbortPaint = true;
    using Slide = QAbstractSlider::SliderAction;
    const auto move = [](QScrollBar* bar, Slide how) { bar->triggerAction(how); };
    switch (event->key()) {
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
        QWidget::keyPressEvent(event);
    }
}

// The menu key stands for a right click where the cursor is. The click itself has been
// handled as it came.
void FrmVXMap::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QPoint at = ui_->PicShow->underMouse()
                          ? ui_->PicShow->mapFromGlobal(QCursor::pos())
                          : ui_->PicShow->visibleRegion().boundingRect().center();
    if (mouse_.RightDown(at.x(), at.y()))
        ShowPopup(ui_->PicShow->mapToGlobal(at));
}

// With Alt some desktops turn the wheel's axis, and so do sideways wheels. Forward goes
// to the bar's lower values.
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
    bar->setValue(
        AfterWheel(bar->value(), -notches, view_, {bar->minimum(), bar->maximum()}));
}

void FrmVXMap::PicShow_MouseDown(QMouseEvent& event) {
    setFocus(Qt::MouseFocusReason);
    const QPointF at = event.position();
    switch (event.button()) {
    case Qt::MiddleButton:
        return mouse_.MiddleDown(at.x(), at.y());
    case Qt::RightButton:
        if (mouse_.RightDown(at.x(), at.y()))
            ShowPopup(event.globalPosition().toPoint());
        return;
    case Qt::LeftButton:
        // A box of the click's own may come up over the band.
        ui_->PicShow->SetBand({}, {});
        return mouse_.LeftDown(at.x(), at.y());
    default:
        return;
    }
}

void FrmVXMap::ShowPopup(QPoint globalPosition) {
    const bool onTerrain = mouse_.PopupOnTerrain();
    for (QAction* entry : mnupup1_->actions()) {
        const bool can = entry->objectName() == "mnuLocInBIN" ? commands_.CanLocateInBIN()
                         : entry->objectName() == "mnuLocColMAP"
                             ? commands_.CanLocateColorInMAP()
                             : true;
        entry->setEnabled(onTerrain && can);
    }
    mnupup1_->popup(globalPosition);
}

void FrmVXMap::PicShow_MouseMove(QPointF position) {
    switch (PointerFor(interaction_)) {
    case MapPointer::Brush:
        ui_->PicShow->setCursor(brush_);
        break;
    case MapPointer::Cross:
        ui_->PicShow->setCursor(Qt::CrossCursor);
        break;
    case MapPointer::Default:
        ui_->PicShow->unsetCursor();
        break;
    }
    ShowBand(position);
    const ReadOut out = ReadOutAt(view_, state_.Terrain, state_.Catalogue.Lookup,
                                  position.x(), position.y());
    toolTip_.SetBackColor(out.BackColor);
    toolTip_.SetToolTipHeader(QString::fromStdString(out.Header));
    toolTip_.SetToolTipHeaderShow(!out.Header.empty());
    toolTip_.SetToolText(*ui_->PicShow, QString::fromStdString(Utf8FromBytes(out.Text)));
}

void FrmVXMap::ShowBand(QPointF position) {
    const auto box = BoxAtCursor(interaction_, view_,
                                 PostUnderCursor(view_, position.x(), position.y()));
    if (!box)
        return ui_->PicShow->SetBand({}, {});
    const PictureBox band = BoxOnPicture(view_, *box);
    const QPoint topLeft(PixelAt(band.LowerLeft.X), PixelAt(band.UpperRight.Y));
    const QPoint bottomRight(PixelAt(band.UpperRight.X), PixelAt(band.LowerLeft.Y));
    const QSize size(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y());
    ui_->PicShow->SetBand(QRect(topLeft, size), ColorOf(view_.ExportColor));
}

bool FrmVXMap::StopWaiting() {
    if (!interaction_.Waits())
        return false;
    interaction_.StopWaiting();
    commands_.HideFrame7();
    PicShow_MouseMove(ui_->PicShow->mapFromGlobal(QCursor::pos()));
    return true;
}

void FrmVXMap::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFeatureFiles(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void FrmVXMap::dropEvent(QDropEvent* event) {
    droppedPaths_ = DroppedFeatureFiles(*event->mimeData());
    event->acceptProposedAction();
    // Once the other program is done with its part: a box may come up.
    QMetaObject::invokeMethod(this, "LoadDropped", Qt::QueuedConnection);
}

void FrmVXMap::LoadDropped() {
    static_cast<RunTimeBarrier*>(qApp)->Guard(
        [this] { commands_.LoadFeatures(droppedPaths_); });
}

bool FrmVXMap::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Wheel:
        // Wherever the wheel is turned, it moves over the terrain.
        wheelEvent(static_cast<QWheelEvent*>(event));
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (watched == ui_->PicShow)
            PicShow_MouseDown(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        if (watched == ui_->PicShow)
            PicShow_MouseMove(static_cast<QMouseEvent*>(event)->position());
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
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
    workspace_.WindowHidden("chkShowMain");
}

} // namespace vardenix
