#include "platform/windows/FrontWindow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimerEvent>
#include <QWidget>
#include <QWindow>

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

bool IsDialog(const QWidget& window) {
    return window.isWindow() && window.windowType() == Qt::Dialog;
}

// Sees what is shown in the whole program.
class ToldWhenShown : public QObject {
public:
    explicit ToldWhenShown(QWidget& window) : QObject(&window), window_(window) {
        setObjectName("ToldWhenShown");
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Show || !watched->isWidgetType())
            return false;
        const auto& shown = *static_cast<QWidget*>(watched);
        if (&shown == &window_)
            startTimer(0);
        else if (IsDialog(shown))
            LieUnder(shown);
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        if (window_.isWindow() && window_.internalWinId() != 0)
            BelongToAll(window_);
    }

private:
    // A dialog of another window would come up under this one.
    void LieUnder(const QWidget& dialog) const {
        const bool up =
            window_.isWindow() && window_.isVisible() && !window_.isMinimized();
        QWindow* over = dialog.windowHandle();
        if (!up || over == nullptr)
            return;
        // One of a dialog that lies over it does so too.
        for (const QWindow* of = over->transientParent(); of; of = of->transientParent())
            if (of == window_.windowHandle())
                return;
        over->setTransientParent(window_.windowHandle());
    }

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
