#pragma once

#include "platform/windows/EscEye.h"

#include <QObject>
#include <QPointer>

#include <unordered_set>
#include <utility>
#include <vector>

namespace vardenix {

// Finds Esc among the program's own events. The toolkit can only be asked to hand events
// out, so they are let come and caught before anybody acts: what users and the desktop do
// to windows, and timers, goes back into the queue in its order. Calls that objects
// queued for one another cannot be held, and happen.
class HeldEvents : public QObject, public EscEye {
public:
    void Begin() override;
    bool Look() override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void PutBack();

    std::vector<std::pair<QPointer<QObject>, QEvent*>> held_; // caught in this look
    std::unordered_set<const QEvent*> returned_;              // put back since Begin
    bool pressed_ = false;
};

} // namespace vardenix
