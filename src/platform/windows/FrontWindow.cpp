#include "platform/windows/FrontWindow.h"

#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QPointer>
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
        const bool shown = event->type() == QEvent::Show;
        if ((!shown && event->type() != QEvent::Hide) || !watched->isWidgetType())
            return false;
        const auto& window = *static_cast<QWidget*>(watched);
        if (&window == &window_) {
            if (shown)
                startTimer(0);
        } else if (IsDialog(window)) {
            shown ? LieUnder(window) : GiveKeyboardBack(window);
        }
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        if (window_.isWindow() && window_.internalWinId() != 0)
            BelongToAll(window_);
    }

private:
    // A dialog of another window would come up under this one.
    void LieUnder(const QWidget& dialog) {
        const bool up =
            window_.isWindow() && window_.isVisible() && !window_.isMinimized();
        QWindow* over = dialog.windowHandle();
        if (!up || over == nullptr)
            return;
        // One of a dialog that lies over it does so too.
        for (const QWindow* of = over->transientParent(); of; of = of->transientParent())
            if (of == window_.windowHandle())
                return;
        cameFrom_[&dialog] = QGuiApplication::focusWindow();
        over->setTransientParent(window_.windowHandle());
    }

    // The desktop would give it to this window now.
    void GiveKeyboardBack(const QWidget& dialog) {
        const QPointer<QWindow> to = cameFrom_.take(&dialog);
        const QWidget* inUse = QApplication::activeWindow();
        if (to && to->isVisible() && (inUse == nullptr || inUse == &dialog))
            to->requestActivate();
    }

    QWidget& window_;
    // Of each dialog that is up, the window that had the keyboard before it.
    QHash<const QObject*, QPointer<QWindow>> cameFrom_;
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
