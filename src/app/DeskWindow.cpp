#include "app/DeskWindow.h"

#include "mapview/windows/FrmVXTheaterPreview.h"
#include "platform/windows/RunTimeBarrier.h"
#include "workspace/windows/EdgeHandle.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QCloseEvent>
#include <QDataStream>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QIODevice>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>

#include <algorithm>
#include <numeric>
#include <utility>

namespace vardenix {

namespace {

// Those that a window of its own needs are made again by whoever makes it one.
void BecomePart(QWidget& window) {
    window.hide();
    window.setAttribute(Qt::WA_NativeWindow, false);
    window.setWindowState(Qt::WindowNoState);
}

// There is no corner of the window to take hold of.
void ShowGrip(const QWidget& window, bool shown) {
    for (QStatusBar* bar : window.findChildren<QStatusBar*>())
        bar->setSizeGripEnabled(shown);
}

// Of the parts beside the map: four tiles of the palette.
constexpr int ColumnWidth = 340;
// Below that titles over the parts are left out; the tabs name them, too.
constexpr int LowScreen = 700;
// From there on the preview has a place of its own.
constexpr int HighScreen = 900;
constexpr int PreviewHeight = 250;
// Tabs, header, three rows of tiles and the line below.
constexpr int PaletteHeight = 328;
constexpr int TitleHeight = 22;

// What a part has no room for is reached by scrolling: no part makes the whole window
// larger than the screen.
class Ground : public QScrollArea {
public:
    explicit Ground(const DeskPart& part) {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setWidget(part.Window);
    }

    QSize sizeHint() const override { return {ColumnWidth, Height}; }
    QSize minimumSizeHint() const override { return {LeastSide, LeastSide}; }

private:
    static constexpr int Height = 220;
    static constexpr int LeastSide = 90;
};

QDockWidget* DockOf(const QWidget& part) {
    for (QWidget* outer = part.parentWidget(); outer != nullptr;
         outer = outer->parentWidget())
        if (auto* dock = qobject_cast<QDockWidget*>(outer))
            return dock;
    return nullptr;
}

} // namespace

DeskWindow::DeskWindow(WorkspaceWindows& windows, const std::vector<DeskPart>& parts,
                       std::function<void(const char* box)> hidden,
                       const std::string& layout)
    : windows_(windows), hidden_(std::move(hidden)), menus_(windows.Panel->menuBar()) {
    setObjectName("FrmVXDesk");
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    // A panel that is hidden, or behind the tab of another part, does not hear its keys.
    addActions(windows.Panel->actions());
    // The right side as high as the window, and the left one too.
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    windows_.Panel->layout()->setMenuBar(nullptr);
    setMenuBar(menus_);
    TakeMap();
    Dock({windows_.Panel.get(), "", Qt::LeftDockWidgetArea});
    for (const DeskPart& part : parts)
        Dock(part);
    Arrange(parts);
    for (const QWidget* titled :
         std::initializer_list<const QWidget*>{windows_.Panel.get(), windows_.Map.get()})
        OnSignal(titled, &QWidget::windowTitleChanged, this, [this] { ShowTitle(); });
    ShowTitle();
    Restore(layout);
}

// Nothing of the parts belongs to this window when it goes.
DeskWindow::~DeskWindow() {
    layout()->setMenuBar(nullptr);
    windows_.Panel->setMenuBar(menus_);
    for (const Docked& each : docked_)
        if (each.Window) {
            each.Dock->removeEventFilter(this);
            each.Window->hide();
            each.Window->setParent(nullptr, Qt::Window);
            each.Window->resize(each.Size);
            ShowGrip(*each.Window, true);
        }
    windows_.Map->hide();
    windows_.Map->setParent(nullptr, Qt::Window);
}

void DeskWindow::TakeMap() {
    BecomePart(*windows_.Map);
    auto* holder = new QWidget(this);
    auto* box = new QHBoxLayout(holder);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    handle_ = new EdgeHandle(holder);
    box->addWidget(handle_);
    box->addWidget(windows_.Map.get());
    OnSignal(handle_, &EdgeHandle::Dragged, this, [this](int by) {
        if (QDockWidget* beside = ShowsPanel() ? docked_.front().Dock : tabs_)
            resizeDocks({beside}, {beside->width() + by}, Qt::Horizontal);
    });
    setCentralWidget(holder);
    windows_.Map->show();
}

void DeskWindow::Dock(const DeskPart& part) {
    const bool closable = *part.Box != '\0';
    const bool shown = part.Window->isVisible();
    const QSize size = part.Window->size();
    BecomePart(*part.Window);
    auto* dock = new QDockWidget(part.Window->windowTitle(), this);
    dock->setObjectName("dock" + part.Window->objectName());
    dock->setFeatures(
        QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable |
        (closable ? QDockWidget::DockWidgetClosable : QDockWidget::NoDockWidgetFeatures));
    dock->setWidget(closable ? new Ground(part) : part.Window);
    ShowGrip(*part.Window, false);
    dock->installEventFilter(this);
    OnSignal(part.Window, &QWidget::windowTitleChanged, dock,
             [dock](const QString& title) { dock->setWindowTitle(title); });
    addDockWidget(part.Area, dock);
    docked_.push_back({dock, part.Window, part.Box, size});
    SetShown(*part.Window, shown || !closable);
}

void DeskWindow::ShowTitle() {
    QString program = windows_.Panel->windowTitle();
    if (program.startsWith('*'))
        program.remove(0, 1);
    setWindowTitle(windows_.Map->windowTitle() + " - " + program);
}

std::string DeskWindow::Layout() const {
    const QByteArray geometry = saveGeometry();
    const QByteArray state = saveState();
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << geometry << state << qChecksum(geometry + state);
    return bytes.toBase64().toStdString();
}

// A screen that is not there any more counts for nothing, as the toolkit sees to; nor
// does a text that somebody has changed.
void DeskWindow::Restore(const std::string& layout) {
    const QByteArray bytes = QByteArray::fromBase64(QByteArray::fromStdString(layout));
    QDataStream stream(bytes);
    QByteArray geometry;
    QByteArray state;
    quint16 sum = 0;
    stream >> geometry >> state >> sum;
    if (stream.status() != QDataStream::Ok || sum != qChecksum(geometry + state) ||
        !restoreGeometry(geometry)) {
        setGeometry(windows_.Map->screen()->availableGeometry());
        setWindowState(Qt::WindowMaximized);
        arranged_ = false;
        return;
    }
    kept_ = state;
    RestoreParts();
}

// Which of them are shown is the boxes' to say.
void DeskWindow::RestoreParts() {
    std::vector<bool> shown;
    for (const Docked& each : docked_)
        shown.push_back(!each.Dock->isHidden());
    restoreState(kept_);
    for (size_t i = 0; i < docked_.size(); ++i)
        docked_[i].Dock->setVisible(shown[i]);
}

void DeskWindow::Arrange(const std::vector<DeskPart>& parts) {
    const int height = windows_.Map->screen()->availableSize().height();
    for (size_t i = 0; i < parts.size(); ++i) {
        QDockWidget* dock = docked_[i + 1].Dock;
        if (!parts[i].Tab && height >= HighScreen)
            splitDockWidget(docked_.front().Dock, dock, Qt::Vertical);
        else if (tabs_ == nullptr)
            tabs_ = dock;
        else
            tabifyDockWidget(tabs_, dock);
    }
    if (height < LowScreen)
        for (const Docked& each : docked_)
            each.Dock->setTitleBarWidget(new QWidget(each.Dock));
}

void DeskWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!arranged_)
        ShareRoom();
    arranged_ = true;
    TakeKeptRoom(size());
}

void DeskWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (isVisible())
        TakeKeptRoom(event->size());
}

// A window that comes up as large as the screen is small before, and what its parts were
// given then is not what they had.
void DeskWindow::TakeKeptRoom(QSize room) {
    if (kept_.isEmpty() ||
        (isMaximized() && room.width() < screen()->availableSize().width()))
        return;
    RestoreParts();
    kept_.clear();
}

void DeskWindow::ShareRoom() {
    QList<QDockWidget*> docks{docked_.front().Dock};
    QList<int> heights{height()};
    for (const Docked& each : docked_)
        if (each.Dock != docks.front() && each.Dock != tabs_ &&
            !tabifiedDockWidgets(tabs_).contains(each.Dock)) {
            docks.append(each.Dock);
            heights.append(PreviewHeight);
        }
    docks.append(tabs_);
    heights.append(PaletteHeight +
                   (tabs_->titleBarWidget() == nullptr ? TitleHeight : 0));
    heights.front() -= std::accumulate(heights.begin() + 1, heights.end(), 0);
    heights.front() = std::max(heights.front(), 1);
    resizeDocks(docks, heights, Qt::Vertical);
    resizeDocks({tabs_}, {ColumnWidth}, Qt::Horizontal);
    tabs_->raise();
}

bool DeskWindow::ShowsPanel() const { return !docked_.front().Dock->isHidden(); }

void DeskWindow::ShowPanel(bool shown) {
    docked_.front().Dock->setVisible(shown);
    handle_->ShowFolded(!shown);
}

// The way out is the panel's.
void DeskWindow::closeEvent(QCloseEvent* event) {
    if (!windows_.Panel->close())
        event->ignore();
}

bool DeskWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close)
        for (const Docked& each : docked_)
            if (each.Dock == watched && *each.Box != '\0') {
                SetShown(*each.Window, false);
                hidden_(each.Box);
                event->ignore();
                return true;
            }
    return QMainWindow::eventFilter(watched, event);
}

void SetShown(QWidget& part, bool shown) {
    QDockWidget* dock = DockOf(part);
    const bool comes = dock != nullptr && shown && dock->isHidden();
    part.setVisible(shown);
    if (dock != nullptr)
        dock->setVisible(shown);
    if (comes)
        dock->raise(); // it may have come behind another tab
}

} // namespace vardenix
