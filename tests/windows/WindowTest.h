#pragma once

#include "platform/windows/RunTimeBarrier.h"
#include "support/ScriptedDialogs.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>

namespace vardenix::tests {

// The application object of the test program.
RunTimeBarrier& Barrier();

// What the barrier's boxes are answered with while this object lives; without one, a box
// fails the test.
class BarrierAnswers : public ScriptedDialogs {
public:
    BarrierAnswers();
    ~BarrierAnswers() override;
};

// A control by its name; the test ends when there is none.
template <typename Control>
Control& Find(QWidget& window, const char* name) {
    auto* control = window.findChild<Control*>(name);
    if (control == nullptr)
        throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

// Calls `answer` with the next modal window as soon as there is one.
template <typename Window>
void WhenModal(std::function<void(Window&)> answer) {
    QTimer::singleShot(0, [answer] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (window != nullptr && window->isVisible())
            answer(*window);
        else
            WhenModal<Window>(answer);
    });
}

} // namespace vardenix::tests
