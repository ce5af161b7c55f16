#include "platform/windows/WindowPlace.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimerEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace vardenix {

namespace {

// What the desktop has told; the widget itself hears of a frame only when it is moved or
// resized after it.
QMargins FrameOf(const QWidget& window) {
    return window.windowHandle() == nullptr
               ? QMargins()
               : FrameTold(window.windowHandle()->frameMargins());
}

QPoint CornerOfInside(const QWidget& window) {
    const QMargins frame = FrameOf(window);
    return {frame.left(), frame.top()};
}

bool Framed(const QWidget& window) { return !FrameOf(window).isNull(); }

QPoint PlaceOnScreen(const QWidget& window, QPoint topLeft) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    return PlaceWithin({topLeft, window.size() + FrameSize(window)}, screens);
}

// Belongs to the window.
class PlacedWhenFramed : public QObject {
public:
    PlacedWhenFramed(QWidget& window, QPoint topLeft)
        : QObject(&window), window_(window), topLeft_(topLeft) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            window_.removeEventFilter(this);
            startTimer(LookAgain);
        }
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        if (!window_.isWindow()) { // a part of another one meanwhile
            killTimer(event->timerId());
            deleteLater();
            return;
        }
        if (!window_.isVisible()) {
            killTimer(event->timerId());
            window_.installEventFilter(this); // till it comes up again
            return;
        }
        const QPoint place = PlaceOnScreen(window_, topLeft_);
        switch (watch_.Look(Framed(window_), PlaceOf(window_) == place)) {
        case PlaceWatch::Step::Wait:
            return;
        case PlaceWatch::Step::Move:
            window_.windowHandle()->setPosition(place + CornerOfInside(window_));
            return;
        case PlaceWatch::Step::Done:
            killTimer(event->timerId());
            deleteLater();
        }
    }

private:
    static constexpr int LookAgain = 20; // ms

    QWidget& window_;
    QPoint topLeft_;
    PlaceWatch watch_;
};

} // namespace

QMargins FrameTold(const QMargins& told) {
    const bool frame =
        std::min({told.left(), told.top(), told.right(), told.bottom()}) >= 0;
    return frame ? told : QMargins();
}

PlaceWatch::Step PlaceWatch::Look(bool framed, bool inPlace) {
    constexpr int mostUnframed = 1500; // half a minute; some desktops have no frames
    constexpr int mostFramed = 150;
    // A window is taken to stand where it was moved until the desktop says otherwise.
    constexpr int enoughRight = 25;
    if (!framed)
        return ++unframedLooks_ < mostUnframed            ? Step::Wait
               : inPlace || unframedLooks_ > mostUnframed ? Step::Done
                                                          : Step::Move;
    rightLooks_ = inPlace ? rightLooks_ + 1 : 0;
    if (++framedLooks_ > mostFramed || rightLooks_ == enoughRight)
        return Step::Done;
    return inPlace ? Step::Wait : Step::Move;
}

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

QPoint PlaceBeside(QSize window, const QRect& uncovered, const QRect& room) {
    constexpr int gap = 8;
    const auto within = [](int from, int length, int least, int most) {
        return std::max(least, std::min(from, least + most - length));
    };
    const int x = within(uncovered.center().x() - window.width() / 2, window.width(),
                         room.left(), room.width());
    const int y = within(uncovered.center().y() - window.height() / 2, window.height(),
                         room.top(), room.height());
    for (const QPoint& place : {QPoint(uncovered.right() + 1 + gap, y),
                                QPoint(uncovered.left() - gap - window.width(), y),
                                QPoint(x, uncovered.bottom() + 1 + gap),
                                QPoint(x, uncovered.top() - gap - window.height())})
        if (room.contains(QRect(place, window)))
            return place;
    return room.bottomRight() - QPoint(window.width() - 1, window.height() - 1);
}

QPoint PlaceOf(const QWidget& window) {
    return window.isVisible() && window.windowHandle() != nullptr
               ? window.windowHandle()->framePosition()
               : window.pos();
}

QSize FrameSize(const QWidget& window) {
    const auto own = [](const QWidget& up) {
        const QMargins frame = FrameOf(up);
        return QSize(frame.left() + frame.right(), frame.top() + frame.bottom());
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
