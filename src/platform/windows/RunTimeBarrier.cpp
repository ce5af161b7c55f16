#include "platform/windows/RunTimeBarrier.h"

#include "texts/RuntimeError.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QWidget>

#include <new>

namespace vardenix {

RunTimeBarrier::RunTimeBarrier(int& argc, char** argv, Dialogs& dialogs)
    : QApplication(argc, argv), dialogs_(dialogs) {
    setApplicationName("Vardenix");
    setQuitOnLastWindowClosed(false);
}

bool RunTimeBarrier::Guard(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const RuntimeError& error) {
        Report(ReportText(error));
    } catch (const std::bad_alloc&) {
        Report(ReportText(RuntimeError(ErrorNumber::OutOfMemory)));
    } catch (const std::exception& error) {
        Report(error.what());
    }
    return false;
}

bool RunTimeBarrier::notify(QObject* receiver, QEvent* event) {
    bool handled = false;
    Guard([&] {
        handled =
            CallContextMenu(receiver, *event) || QApplication::notify(receiver, event);
    });
    return handled;
}

// As the menu key does: over the cursor of a text, or in the middle of the control.
bool RunTimeBarrier::CallContextMenu(QObject* receiver, const QEvent& event) {
    auto* control = qobject_cast<QWidget*>(receiver);
    if (event.type() != QEvent::KeyPress || control == nullptr || !control->isEnabled())
        return false;
    const auto& press = static_cast<const QKeyEvent&>(event);
    if (press.key() != Qt::Key_F10 || press.modifiers() != Qt::ShiftModifier)
        return false;
    const QPoint place =
        control->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, place,
                           control->mapToGlobal(place));
    return QApplication::notify(control, &menu);
}

void RunTimeBarrier::Report(const std::string& text) {
    // A window that fails whenever it is painted would stack a box for each repaint
    // behind the first one.
    if (reporting_)
        return;
    reporting_ = true;
    while (overrideCursor() != nullptr)
        restoreOverrideCursor();
    const BoxAnswer answer =
        dialogs_.MessageBox(text, "Vardenix", BoxIcon::Critical, BoxButtons::ContinueEnd);
    reporting_ = false;
    for (QWidget* window : topLevelWidgets())
        if (!window->property(LockedByWork).toBool())
            window->setEnabled(true);
    if (answer == BoxAnswer::End && OnEnd)
        Guard(OnEnd);
}

} // namespace vardenix
