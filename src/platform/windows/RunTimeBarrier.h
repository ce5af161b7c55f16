#pragma once

#include "platform/Dialogs.h"

#include <QApplication>

#include <functional>

namespace vardenix {

// The application object, and the one place where what no handler traps is caught: the
// user is told, and the work goes on. No exception passes through Qt's own code further
// than the event that raised it.
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

    Dialogs& dialogs_;
    bool reporting_ = false;
};

} // namespace vardenix
