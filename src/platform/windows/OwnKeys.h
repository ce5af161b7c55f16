#pragma once

#include <QKeySequence>
#include <QList>

class QAction;
class QKeyEvent;
class QWidget;

namespace vardenix {

// Keys of an action that hold in one window alone, and there only as long as no box takes
// them for its text: plain letters, which no window could do without. Each is one key
// without Ctrl, Alt or Meta.
void SetOwnKeys(QAction& action, const QList<QKeySequence>& keys);

// Triggers the one among the window's actions whose own key was pressed. False when there
// is none that can be used.
bool TriggerByOwnKey(const QWidget& window, const QKeyEvent& event);

} // namespace vardenix
