#include "workspace/windows/FrmVXMap.h"

#include "mapview/MapPatch.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "texts/Windows1252.h"
#include "ui_FrmVXMap.h"
#include "workspace/StatusLine.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

// The read-out stays as long as somebody may want to read it.
constexpr int ReadOutTime = 120000; // ms
constexpr int ReadOutWidth = 240;   // pixels
// Until nobody scrolls any more, who would have to wait for what is not seen.
constexpr int RestWaits = 150; // ms

bool IsFeatureFile(const QString& path) {
    return path.endsWith(".tdf", Qt::CaseInsensitive);
}

// By its name: feature files, which come together, or one region, heights or folder.
std::vector<std::string> DroppedPaths(const QMimeData& dropped) {
    std::vector<std::string> features;
    std::vector<std::string> others;
    for (const QUrl& url : dropped.urls()) {
        const QString path = url.toLocalFile();
        if (IsFeatureFile(path))
            features.push_back(path.toStdString());
        for (const char* end : {".exp", ".l0", ".elv"})
            if (path.endsWith(end, Qt::CaseInsensitive))
                others.push_back(path.toStdString());
        if (QFileInfo(path).isDir())
            others.push_back(path.toStdString());
    }
    if (features.empty() && others.size() == 1)
        return others;
    return features;
}

void SetRange(QScrollBar& bar, const ControlRange& range) {
    bar.setRange(range.Min, range.Max);
    bar.setPageStep(range.LargeChange);
}

} // namespace

FrmVXMap::FrmVXMap(const Parts& parts)
    : state_(parts.State), view_(parts.View), interaction_(parts.Interaction),
      renderer_(parts.Renderer), workspace_(parts.Workspace), wishes_(parts.Wishes),
      layers_(parts.Layers), mouse_(parts.State.Terrain, parts.View, parts.Interaction,
                                    parts.Undo, parts.Workspace, parts.Wishes),
      ui_(std::make_unique<Ui::FrmVXMap>()), overlay_(parts.View, parts.Interaction) {
    ui_->setupUi(this);
    ui_->ground->setPalette(QPalette(PictureGround()));
    ui_->ground->setBackgroundRole(QPalette::Window);
    HoldLowerLeft();
    ui_->PicShow->Show(picture2_);
    ui_->PicShow->ShowOver(overlay_);
    ui_->PicShow->setMouseTracking(true);
    for (const QScrollBar* bar : {ui_->HScroll1, ui_->VScroll1})
        OnSignal(bar, &QScrollBar::valueChanged, this, [this] { Scroll_Change(); });
    for (QWidget* part : std::initializer_list<QWidget*>{
             ui_->HScroll1, ui_->VScroll1, ui_->PicShow, ui_->ground->viewport()})
        part->installEventFilter(this);
    setAcceptDrops(true);
    rest_.setSingleShot(true);
    OnSignal(&rest_, &QTimer::timeout, this, [this] { PaintRest(); });
    mnupup1_ = new QMenu(this);
    mnupup1_->setObjectName("mnupup1");
    MakeToolTip();
    MakeStrip();
    setFocus(); // not the tools, whenever the window has the keyboard
}

void FrmVXMap::MakeStrip() {
    ui_->strip->Join(interaction_, view_);
    OnSignal(ui_->strip, &MapToolStrip::ToolsChanged, this, [this] {
        StopGesture();
        ShowTools();
        ShowPointer();
    });
    OnSignal(ui_->strip, &MapToolStrip::Done, this, [this] { setFocus(); });
    // The tool is the first that is cut.
    ui_->lblTool->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ShowTools();
}

void FrmVXMap::ShowWord(const QString& word) { ui_->lblWord->setText(word); }

void FrmVXMap::ShowTools() {
    ui_->strip->ShowTools();
    emit ToolsShown();
    const QString words = QString::fromStdString(
        Utf8FromBytes(ToolWords(interaction_, view_, state_.Catalogue.Lookup)));
    ui_->lblTool->setText(words);
    ui_->lblTool->setToolTip(words);
    overlay_.Follow();
    ui_->PicShow->update();
}

void FrmVXMap::StopGesture() {
    if (const auto changed = mouse_.Stop())
        RepaintPosts(*changed);
}

void FrmVXMap::StopPending() {
    if (mouse_.HasPending())
        StopGesture();
}

void FrmVXMap::ShowGhost(QImage picture) {
    overlay_.SetGhostPicture(std::move(picture));
    ui_->PicShow->update();
}

void FrmVXMap::ShowPost() {
    if (ui_->PicShow->underMouse())
        pointedAt_ = ui_->PicShow->mapFromGlobal(QCursor::pos());
    if (pointedAt_)
        ShowStatus(*pointedAt_);
}

MapToolStrip& FrmVXMap::Strip() { return *ui_->strip; }

void FrmVXMap::ChooseTool(MapTool tool) {
    StopWaiting();
    ui_->strip->Choose(tool);
    TakeKeyboard();
}

void FrmVXMap::TakeKeyboard() {
    if (!isAncestorOf(QApplication::focusWidget()))
        setFocus();
    window()->activateWindow();
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
    const PostPlace saved{view_.MapLeftX, view_.MapBottomY};
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
    if (picture2_.Image().size() == QSize(layout->PictureWidth, layout->PictureHeight))
        return;
    picture2_.Resize(layout->PictureWidth, layout->PictureHeight);
    FitRoundPicture();
}

void FrmVXMap::SetPosition(PostPlace position) {
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
    const QRect seen = Seen();
    const int64_t whole = int64_t{view_.PictureWidth()} * view_.PictureHeight();
    if (!seen.isEmpty() && int64_t{seen.width()} * seen.height() * 2 < whole) {
        PaintSeen();
        rest_.start(RestWaits);
    } else
        PaintWhole();
    ShowTools();
    // Another post may lie under the cursor, or the same with other values.
    if (ui_->PicShow->underMouse())
        PointAt(ui_->PicShow->mapFromGlobal(QCursor::pos()));
    else
        ShowPost();
}

void FrmVXMap::ShowLeftOut() {
    const QString word = tr("heights wider than their cell are left out");
    if (renderer_.HeightsLeftOut() > 0)
        ShowWord(word);
    else if (ui_->lblWord->text() == word)
        ShowWord({});
}

QRect FrmVXMap::Seen() const {
    return ui_->PicShow->visibleRegion().boundingRect() & picture2_.Image().rect();
}

void FrmVXMap::PaintSeen() {
    const QRect seen = Seen();
    Repaint(PatchOfPart(view_, {seen.x(), seen.y(), seen.width(), seen.height()},
                        ReachOf(view_, renderer_.Sources(), patch_)));
    MakeViewPort(view_);
}

bool FrmVXMap::PaintWhole() {
    rest_.stop();
    escWatch_.Begin();
    const bool finished = renderer_.RefreshPicArray(view_, picture2_, *this, layers_);
    ShowLeftOut();
    return finished;
}

// What is seen stays whole when Esc ends it.
void FrmVXMap::PaintRest() {
    // The posts may be in the middle of a change, of which a repaint follows.
    if (view_.ScrollBusy || !isVisible())
        return rest_.start(RestWaits);
    if (!PaintWhole() && !Seen().isEmpty())
        PaintSeen();
}

QtDrawingSurface& FrmVXMap::Picture2() {
    if (rest_.isActive())
        PaintWhole();
    return picture2_;
}

void FrmVXMap::RepaintPosts(const PostBox& posts) {
    Repaint(PatchOf(view_, posts, ReachOf(view_, renderer_.Sources(), patch_)));
}

void FrmVXMap::Repaint(const MapPatch& patch) {
    const PixelRect& clip = patch.Clip;
    if (clip.Width <= 0 || clip.Height <= 0)
        return;
    patch_.Resize(clip.Width, clip.Height);
    renderer_.RepaintPatch(view_, patch_, patch, layers_);
    picture2_.Put(patch_, clip);
    ui_->PicShow->update(clip.Left, clip.Top, clip.Width, clip.Height);
}

QRect FrmVXMap::OnScreen(PostPlace place, bool height) const {
    const PictureBox box =
        SquaresOnPicture(view_, {place.X, place.Y, place.X, place.Y}, height);
    const QPoint topLeft(PixelAt(box.LowerLeft.X), PixelAt(box.UpperRight.Y));
    const QPoint bottomRight(PixelAt(box.UpperRight.X), PixelAt(box.LowerLeft.Y));
    return {ui_->PicShow->mapToGlobal(topLeft), ui_->PicShow->mapToGlobal(bottomRight)};
}

void FrmVXMap::CopyToPicShow() { ui_->PicShow->update(); }

void FrmVXMap::LookForEsc() {
    if (escWatch_.Pressed())
        state_.AbortPaint = true;
}

void FrmVXMap::MakeViewPort(const MapView&) { emit ViewPainted(); }

void FrmVXMap::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void FrmVXMap::dropEvent(QDropEvent* event) {
    droppedPaths_ = DroppedPaths(*event->mimeData());
    event->acceptProposedAction();
    // Once the other program is done with its part: a box may come up.
    QMetaObject::invokeMethod(this, "LoadDropped", Qt::QueuedConnection);
}

void FrmVXMap::LoadDropped() {
    static_cast<RunTimeBarrier*>(qApp)->Guard([this] {
        const std::vector<std::string> paths = std::exchange(droppedPaths_, {});
        if (paths.empty() || view_.ScrollBusy)
            return;
        if (IsFeatureFile(QString::fromStdString(paths.front())))
            wishes_.LoadFeatures(paths);
        else
            wishes_.TakeDropped(paths.front());
    });
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
    case QEvent::Enter:
    case QEvent::Leave:
        if (watched == ui_->PicShow) {
            pointerOver_ = event->type() == QEvent::Enter;
            HearEveryMove();
            if (!pointerOver_ && !mouse_.Goes())
                ui_->PicShow->SetBand({});
        }
        break;
    case QEvent::MouseMove:
        if (watched == ui_->PicShow)
            PicShow_MouseMove(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        if (watched == ui_->PicShow)
            PicShow_MouseUp(*static_cast<QMouseEvent*>(event));
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FrmVXMap::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    if (isWindow() && !isMinimized())
        FollowRoom();
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

#include "moc_FrmVXMap.cpp"
