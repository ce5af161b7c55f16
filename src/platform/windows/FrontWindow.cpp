#include "platform/windows/FrontWindow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimerEvent>
#include <QWidget>

#include <xcb/xcb.h>

namespace vardenix {

namespace {

// What is told to belong to the root belongs to all windows of its program. The toolkit
// says something else each time when it shows a window; on its own line to the display
// this comes behind that.
void BelongToAll(const QWidget& window) {
    const auto* native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native == nullptr || native->connection() == nullptr)
        return;
    xcb_connection_t* display = native->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    xcb_change_property(display, XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window.internalWinId()),
                        XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1, &root);
    xcb_flush(display);
}

class ToldWhenShown : public QObject {
public:
    explicit ToldWhenShown(QWidget& window) : QObject(&window), window_(window) {
        setObjectName("ToldWhenShown");
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show)
            startTimer(0);
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        if (window_.isWindow() && window_.internalWinId() != 0)
            BelongToAll(window_);
    }

private:
    QWidget& window_;
};

} // namespace

void KeepInFront(QWidget& window) {
    window.setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    const bool onX = QGuiApplication::platformName() == QLatin1String("xcb");
    if (onX && window.findChild<QObject*>("ToldWhenShown", Qt::FindDirectChildrenOnly) ==
                   nullptr)
        new ToldWhenShown(window);
}

} // namespace vardenix
