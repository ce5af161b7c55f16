#pragma once

#include "app/Workspace.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

// While it lives, nothing on the panel can be used and clicks on the map do nothing:
// events are handled inside long work.
class BusyWhile {
public:
    explicit BusyWhile(Workspace& workspace)
        : panel_(workspace.Panel()), scroll_(workspace.View()) {
        panel_.LockPanel(true);
    }
    BusyWhile(const BusyWhile&) = delete;
    BusyWhile& operator=(const BusyWhile&) = delete;
    ~BusyWhile() { panel_.LockPanel(false); }

private:
    FrmVXMain& panel_;
    ScrollBusyWhile scroll_;
};

} // namespace vardenix
