#pragma once

#include "app/WorkspacePart.h"

#include <QObject>

class QAction;
class QKeyEvent;
class QWidget;

namespace vardenix {

class Workspace;

// The keys of the map's tools in all windows of the workspace, and of the menus. A
// control that takes text, or finds its rows by letters, keeps them; a corner that is
// waited for is given up by Esc wherever the keyboard is.
class MapKeys : public QObject, public WorkspacePart {
public:
    // Borrowed.
    explicit MapKeys(Workspace& workspace);

private:
    void WindowsMade() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    // The menu that Alt and a letter open beside the told mnemonics; null for none.
    QAction* MenuOf(const QWidget& control, const QKeyEvent& event) const;
    bool Press(const QWidget& control, const QKeyEvent& event);
    bool OfWorkspace(const QWidget& window) const;

    Workspace& workspace_;
};

} // namespace vardenix
