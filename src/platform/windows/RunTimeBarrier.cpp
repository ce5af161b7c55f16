#include "platform/windows/RunTimeBarrier.h"

#include "platform/RuntimeError.h"

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
    Guard([&] { handled = QApplication::notify(receiver, event); });
    return handled;
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
