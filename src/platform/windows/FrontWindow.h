#pragma once

class QWidget;

namespace vardenix {

// Makes `window` one that the desktop keeps over all other windows of the program but
// dialogs, whichever is in use, and that belongs to none: it becomes no icon with another
// one. For its whole life; it comes up as a window of its own.
void KeepInFront(QWidget& window);

} // namespace vardenix
