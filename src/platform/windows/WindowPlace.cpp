#include "platform/windows/WindowPlace.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimerEvent>
#include <QWidget>

#include <algorithm>

namespace vardenix {

namespace {

bool Framed(const QWidget& window) { return window.frameGeometry() != window.geometry(); }

QPoint PlaceOnScreen(const QWidget& window, QPoint topLeft) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    return PlaceWithin({topLeft, window.size() + FrameSize(window)}, screens);
}

// A window that changes its size before the desktop has framed it is taken by the place
// of its inside, and its title ends up above the screen. So it is moved once more when
// the frame is there, which can be a moment after it is first painted, and again when the
// desktop has moved it since. Belongs to the window.
class PlacedWhenFramed : public QObject {
public:
    PlacedWhenFramed(QWidget& window, QPoint topLeft)
        : QObject(&window), window_(window), topLeft_(topLeft) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            window_.removeEventFilter(this);
            startTimer(LookAgain);
        }
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        const QPoint place = PlaceOnScreen(window_, topLeft_);
        rightLooks_ = Framed(window_) && window_.pos() == place ? rightLooks_ + 1 : 0;
        // Some desktops have no frames.
        const bool last = ++looks_ == MostLooks;
        if ((Framed(window_) || last) && rightLooks_ == 0)
            window_.move(place);
        // Nobody has a hand on the window so soon.
        if (!last && rightLooks_ < EnoughRightLooks)
            return;
        killTimer(event->timerId());
        deleteLater();
    }

private:
    static constexpr int LookAgain = 20; // ms
    static constexpr int MostLooks = 20;
    static constexpr int EnoughRightLooks = 3;

    QWidget& window_;
    QPoint topLeft_;
    int looks_ = 0;
    int rightLooks_ = 0; // one behind the other
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
    window.move(PlaceOnScreen(window, topLeft));
    if (!Framed(window))
        new PlacedWhenFramed(window, topLeft);
}

} // namespace vardenix
