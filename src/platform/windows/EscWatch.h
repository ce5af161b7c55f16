#pragma once

#include "platform/windows/EscEye.h"

#include <chrono>
#include <memory>

namespace vardenix {

// Tells that Esc was pressed in one of the program's windows while no window event is
// handled. On X11 it looks on at the display by a connection of its own, so the program's
// events stay in their queue, untouched and in order. Elsewhere the queue itself is gone
// through, and what windows would act upon is put back for later (HeldEvents).
class EscWatch {
public:
    EscWatch();
    EscWatch(const EscWatch&) = delete;
    EscWatch& operator=(const EscWatch&) = delete;
    ~EscWatch();

    // What was pressed so far does not count.
    void Begin();
    // Whether Esc was pressed since Begin. May be called as often as one likes: the
    // display is asked a hundred times a second at most.
    bool Pressed();

private:
    std::unique_ptr<EscEye> eye_; // made at the first Begin
    bool pressed_ = false;
    int calls_ = 0;
    std::chrono::steady_clock::time_point nextLook_;
};

} // namespace vardenix
