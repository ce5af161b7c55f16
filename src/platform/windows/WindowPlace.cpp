#include "platform/windows/WindowPlace.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimerEvent>
#include <QWidget>

#include <algorithm>

namespace vardenix {

namespace {

// A window that changes its size before the desktop has framed it is taken by the place
// of its inside, and its title ends up above the screen. When it is painted first it has
// its frame, and is moved once more. Belongs to the window.
class PlacedWhenFramed : public QObject {
public:
    PlacedWhenFramed(QWidget& window, QPoint place)
        : QObject(&window), window_(window), place_(place) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            window_.removeEventFilter(this);
            startTimer(0);
        }
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        window_.move(place_);
        deleteLater();
    }

private:
    QWidget& window_;
    QPoint place_;
};

} // namespace

QPoint PlaceWithin(const QRect& window, const QList<QRect>& screens) {
    if (screens.isEmpty())
        return window.topLeft();
    const auto under =
        std::find_if(screens.begin(), screens.end(), [&](const QRect& screen) {
            return screen.contains(window.center());
        });
    const QRect& screen = under == screens.end() ? screens.first() : *under;
    const auto pulled = [](int from, int length, int least, int room) {
        return std::max(least, std::min(from, least + room - length));
    };
    return {pulled(window.left(), window.width(), screen.left(), screen.width()),
            pulled(window.top(), window.height(), screen.top(), screen.height())};
}

QSize FrameSize(const QWidget& window) {
    const auto own = [](const QWidget& up) {
        return up.frameGeometry().size() - up.geometry().size();
    };
    QSize frame = own(window);
    for (const QWidget* other : QApplication::topLevelWidgets())
        if (frame.isNull() && other->isVisible())
            frame = own(*other);
    return frame;
}

void MoveOnScreen(QWidget& window, QPoint topLeft) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    const QPoint place =
        PlaceWithin({topLeft, window.size() + FrameSize(window)}, screens);
    window.move(place);
    // Not up yet, so its frame is unknown.
    if (window.frameGeometry() == window.geometry())
        new PlacedWhenFramed(window, place);
}

} // namespace vardenix
