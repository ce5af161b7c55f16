#pragma once

#include <memory>

namespace vardenix {

// Tells that Esc was pressed in one of the program's windows while no window event is
// handled. Looks on at the display by a connection of its own, so the program's events
// stay in their queue, untouched and in order. Sees nothing where the display is not X11.
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
    class Connection;

    std::unique_ptr<Connection> connection_; // made at the first Begin
};

} // namespace vardenix
