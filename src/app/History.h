#pragma once

#include "app/Steps.h"
#include "app/WorkspacePart.h"
#include "program/ChangeLog.h"

#include <memory>
#include <optional>

namespace vardenix {

class FrmVXHistory;
class Workspace;

// The window with the changes of the log, which comes up when it is asked for.
class History : public WorkspacePart, private ChangeFollower {
public:
    // Borrowed.
    History(Workspace& workspace, Steps& steps);
    ~History() override;

    bool Shown() const { return shown_; }
    void Show(bool shown);

private:
    FrmVXHistory& Window();

    void Recorded(const Change& change) override;
    void Walked(const Change& change, Walk walk) override;
    void CommandsChanged() override;
    void ShowWindows(bool workspaceShown) override;
    void WindowClosed() override;
    std::optional<DeskPart> Docked() override;

    Workspace& workspace_;
    Steps& steps_;
    std::unique_ptr<FrmVXHistory> window_;
    bool shown_ = false;
};

} // namespace vardenix
