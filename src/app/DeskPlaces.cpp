#include "app/DeskPlaces.h"

#include "app/DeskWindow.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "platform/windows/Theme.h"
#include "platform/windows/WindowPlace.h"
#include "workspace/FirstLayout.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>

namespace vardenix {

namespace {

WindowSize SizeOf(QSize size) { return {size.width(), size.height()}; }
WindowSize SizeOf(const QWidget& window) { return SizeOf(window.size()); }

void PlaceAt(QWidget& window, const PixelRect& place) {
    window.resize(place.Width, place.Height);
    MoveOnScreen(window, {place.Left, place.Top});
}

QPoint CornerOf(const WindowPosition& place) {
    return {PixelsOfTwips(place.Left), PixelsOfTwips(place.Top)};
}

PixelRect RectAt(const WindowPosition& place, WindowSize size) {
    return {PixelsOfTwips(place.Left), PixelsOfTwips(place.Top), size.Width, size.Height};
}

PixelRect RectOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.width(), rect.height()};
}

QRect Room(const QWidget& window) { return window.screen()->availableGeometry(); }

// That of the start-up window, which is still up.
WindowSize FrameOf(const QWidget& window) {
    const QSize frame = FrameSize(window);
    return frame.isNull() ? UsualFrame : WindowSize{frame.width(), frame.height()};
}

// Stored without the frame, which is not known when the window comes back.
WindowSize PaletteAtFirst(const Configuration& settings) {
    return {PixelsOfTwips(settings.PalWinSizeW), PixelsOfTwips(settings.PalWinSizeH)};
}

} // namespace

WindowPosition StoredPlaceOf(const QWidget& window) {
    const QPoint place = PlaceOf(window);
    return {.Top = TwipsOfPixels(place.y()), .Left = TwipsOfPixels(place.x())};
}

void PlaceAt(QWidget& window, const WindowPosition& place) {
    MoveOnScreen(window, {PixelsOfTwips(place.Left), PixelsOfTwips(place.Top)});
}

void NoIcon(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
}

void KeepOverMap(QWidget& window, const WorkspaceWindows& windows) {
    const QWidget& below = *windows.Map;
    window.setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    StayOver(window, below);
}

void StayOver(QWidget& window, const QWidget& below) {
    for (const QWidget* each : std::initializer_list<const QWidget*>{&window, &below})
        each->winId(); // makes what the desktop knows of it
    window.windowHandle()->setTransientParent(below.windowHandle());
}

void ShowTool(QWidget& window, bool shown) {
    if (shown)
        NoIcon(window);
    SetShown(window, shown);
}

void PlaceTool(QWidget& window, const WindowPosition& stored,
               const WorkspaceWindows& windows, Standing standing) {
    window.adjustSize();
    if (stored.Left != 0 || stored.Top != 0)
        return PlaceAt(window, stored);
    const QSize frame = FrameSize(window);
    std::vector<PixelRect> others;
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        const QWindow* handle = other->windowHandle();
        const bool tool = handle != nullptr && handle->transientParent() != nullptr &&
                          handle->transientParent() == windows.Map->windowHandle();
        const bool counts = standing == Standing::All || other->isVisible();
        if (other != &window && counts && (tool || other == windows.Panel.get()))
            others.push_back(RectOf(QRect(PlaceOf(*other), other->size() + frame)));
    }
    const PixelRect place =
        LeastCovering(RectOf(Room(*windows.Map)), SizeOf(window.size() + frame), others);
    MoveOnScreen(window, {place.Left, place.Top});
}

void DeskPlaces::Place() {
    const bool first = NeverPlaced(settings_);
    if (first) {
        settings_.MainWinVis = true;
        settings_.ThPrevWinVis = true;
    }
    first ? PlaceFirst() : PlaceAsStored();
    placed_ = true;
}

void DeskPlaces::PlaceFirst() {
    PlacePanel(Room(*windows_.Map).topLeft());
    const FirstLayout layout = LayOutFirst(
        RectOf(Room(*windows_.Map)), SizeOf(*windows_.Panel), SizeOf(*windows_.Map),
        SizeOf(*windows_.Preview), PaletteAtFirst(settings_), FrameOf(*windows_.Map));
    PlaceAt(*windows_.Map, layout.Map);
    PlaceAt(*windows_.Preview, layout.Preview);
    PlaceAt(*windows_.Palette, layout.Palette);
}

// The panel has its true height only when it is up.
void DeskPlaces::PlacePanel(QPoint topLeft) {
    MoveOnScreen(*windows_.Panel, topLeft);
    windows_.Panel->show();
}

void DeskPlaces::PlaceAsStored() {
    PlacePanel(CornerOf(settings_.MainControlWinPos));
    const WindowSize palette = PaletteAtFirst(settings_);
    const FirstLayout layout = LayOutStored(
        RectOf(Room(*windows_.Map)),
        {.Panel = RectAt(settings_.MainControlWinPos, SizeOf(*windows_.Panel)),
         .Map = RectAt(settings_.MainWinPos, SizeOf(*windows_.Map)),
         .Preview = RectAt(settings_.ThPrevWinPos, SizeOf(*windows_.Preview)),
         .Palette = RectAt(settings_.PalWinPos, palette)},
        FrameOf(*windows_.Map));
    PlaceAt(*windows_.Map, layout.Map);
    PlaceAt(*windows_.Preview, layout.Preview);
    windows_.Palette->resize(QSize(palette.Width, palette.Height)
                                 .boundedTo(windows_.Map->screen()->availableSize()));
    MoveOnScreen(*windows_.Palette, CornerOf(settings_.PalWinPos));
}

void DeskPlaces::Store() {
    if (!windows_.Panel->isWindow())
        return; // parts of one window keep the places that they had
    settings_.MainControlWinPos = StoredPlaceOf(*windows_.Panel);
    if (!windows_.Map->isMaximized())
        settings_.MainWinPos = StoredPlaceOf(*windows_.Map);
    settings_.ThPrevWinPos = StoredPlaceOf(*windows_.Preview);
    // One that fills the screen keeps the place it had before.
    if (windows_.Palette->isMaximized())
        return;
    settings_.PalWinPos = StoredPlaceOf(*windows_.Palette);
    settings_.PalWinSizeW = TwipsOfPixels(windows_.Palette->width());
    settings_.PalWinSizeH = TwipsOfPixels(windows_.Palette->height());
}

void DeskPlaces::ShowByBoxes() {
    // Before the map, which so ends up with the keyboard. Its tools come behind it, or
    // the desktop would not know what they are to lie over.
    SetShown(*windows_.Panel, true);
    const bool mapComes = settings_.MainWinVis && !windows_.Map->isVisible();
    if (!windows_.Map->isVisible()) {
        SetShown(*windows_.Preview, false);
        SetShown(*windows_.Palette, false);
        if (settings_.MainWinVis)
            NoIcon(*windows_.Map); // as which it may have been hidden
    }
    windows_.Map->setVisible(settings_.MainWinVis);
    RestoreChildWindows();
    // Some desktops look at their order at the next click only.
    if (mapComes && windows_.Panel->isWindow())
        windows_.Panel->raise();
}

void DeskPlaces::ShowTicked() {
    if (windows_.Map->isVisible())
        NoIcon(*windows_.Map);
    ShowByBoxes();
}

void DeskPlaces::RestoreChildWindows() {
    const auto restore = [this](QWidget* window, bool wanted) {
        if (window == nullptr)
            return;
        const bool shown = SmallWindowsShown() && wanted;
        // Some desktops make an icon of a tool with its window, and shown as an icon it
        // would take the map with it.
        if (shown)
            NoIcon(*window);
        SetShown(*window, shown);
    };
    restore(windows_.Preview.get(), settings_.ThPrevWinVis);
    restore(windows_.Palette.get(), settings_.PalWinVis);
}

bool DeskPlaces::SmallWindowsShown() const {
    return placed_ && !(windows_.Map->isVisible() && windows_.Map->isMinimized());
}

void DeskPlaces::HideAll() {
    for (QWidget* window :
         std::initializer_list<QWidget*>{windows_.Panel.get(), windows_.Map.get(),
                                         windows_.Preview.get(), windows_.Palette.get()})
        SetShown(*window, false);
}

} // namespace vardenix
