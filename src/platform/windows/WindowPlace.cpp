#include "platform/windows/WindowPlace.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace vardenix {

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
    window.move(PlaceWithin({topLeft, window.size() + FrameSize(window)}, screens));
}

} // namespace vardenix
