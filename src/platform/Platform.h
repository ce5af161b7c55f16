#pragma once

namespace vardenix {

class Clock;
class Dialogs;
class Processes;
class Registry;

// What the operating system gives, as one parcel for the windows and for long commands.
// All are borrowed and outlive whoever holds it.
struct Platform {
    vardenix::Dialogs& Dialogs;
    vardenix::Registry& Registry;
    const vardenix::Clock& Clock;
    vardenix::Processes& Processes;
};

} // namespace vardenix
