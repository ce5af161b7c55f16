#pragma once

#include "platform/Dialogs.h"

#include <QApplication>

#include <functional>

namespace vardenix {

// A window with this property set is locked by work that still runs, and unlocks itself
// when that has ended, however it ends.
constexpr const char* LockedByWork = "LockedByWork";

// The application object, and the one place where what no handler traps is caught: the
// user is told, and the work goes on. Handlers of signals are joined by OnSignal, below,
// so that their errors never enter Qt's code, which does not clean up behind one; notify
// is the net for handlers of events. It also lets Shift+F10 call context menus, which the
// toolkit leaves to each desktop.
class RunTimeBarrier : public QApplication {
public:
    // `argc` and `dialogs` are borrowed for the object's life.
    RunTimeBarrier(int& argc, char** argv, Dialogs& dialogs);

    // What the button "End" of the report does; it may come back, and the program then
    // goes on.
    std::function<void()> OnEnd;

    // Runs `work` as an event would be; false when it ended in an error, which has been
    // told.
    bool Guard(const std::function<void()>& work);

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void Report(const std::string& text);
    bool CallContextMenu(QObject* receiver, const QEvent& event);

    Dialogs& dialogs_;
    bool reporting_ = false;
};

// QObject::connect with the barrier round `work`, which takes the signal's arguments or
// none. Ends with `receiver`. Every connection to code that may throw is made by this.
template <typename Sender, typename Owner, typename Work, typename... Arguments>
void OnSignal(const Sender* sender, void (Owner::*signal)(Arguments...),
              const QObject* receiver, Work work) {
    QObject::connect(sender, signal, receiver,
                     [work = std::move(work)](Arguments... arguments) mutable {
                         static_cast<RunTimeBarrier*>(qApp)->Guard(
                             [&] { // the only application
                                 if constexpr (std::is_invocable_v<Work&, Arguments...>)
                                     work(arguments...);
                                 else
                                     work();
                             });
                     });
}

} // namespace vardenix
