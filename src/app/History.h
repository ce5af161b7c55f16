#pragma once

#include "app/Steps.h"
#include "app/WorkspacePart.h"
#include "program/ChangeLog.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vardenix {

class FrmVXHistory;
class Recovery;
class Workspace;

// The window with earlier saves and the changes of the log, which comes up when it is
// asked for, and with the theater where it was open last.
class History : public WorkspacePart, private ChangeFollower {
public:
    // Borrowed.
    History(Workspace& workspace, Steps& steps, Recovery& recovery);
    ~History() override;

    bool Shown() const { return shown_; }
    void Show(bool shown);

private:
    FrmVXHistory& Window();
    void ListEarlier();
    void Remember();

    void Recorded(const Change& change) override;
    void Walked(const Change& change, Walk walk) override;
    void Saved(Paper paper) override;
    void CommandsChanged() override;
    void PlaceWindows() override;
    void ShowWindows(bool workspaceShown) override;
    void WindowClosed() override;
    std::optional<DeskPart> Docked() override;

    Workspace& workspace_;
    Steps& steps_;
    Recovery& recovery_;
    std::unique_ptr<FrmVXHistory> window_;
    bool shown_ = false;
    // Earlier saves as the window lists them, each with its number; and whether they may
    // be others by now.
    std::vector<std::pair<Paper, size_t>> earlier_;
    bool earlierOld_ = true;
};

} // namespace vardenix
