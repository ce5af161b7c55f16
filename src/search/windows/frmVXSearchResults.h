#pragma once

#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"
#include "search/SearchHits.h"
#include "search/windows/HitModel.h"

#include <QWidget>

#include <array>
#include <functional>
#include <memory>

class QCheckBox;
class QLineEdit;

namespace Ui {
class frmVXSearchResults;
}

namespace vardenix {

// The hits of the last search: shows them on the map, and overwrites fields of those that
// are ticked.
class frmVXSearchResults : public QWidget {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    frmVXSearchResults(ProgramState& state, WorkspaceCommands& commands);
    ~frmVXSearchResults() override;

    // Runs a search, which replaces ProgramState::Search.Results; the list is taken away
    // before and filled afterwards.
    void PopulateResList(const std::function<void()>& search);
    // Fields of posts have changed: the list follows.
    void PostsChanged();
    void RestorePointMade();

signals:
    // A restore point is wanted before hits are overwritten.
    void RestorePointWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    std::array<QCheckBox*, HitFields> Checks() const;
    std::array<QLineEdit*, HitFields> Boxes() const;
    void DressList();
    void JoinField(size_t field);
    void ItemClick(const QModelIndex& index);
    void Check1_Click();
    void Command1_Click();
    void SetPB8(int value);
    void ShowStatus();

    ProgramState& state_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::frmVXSearchResults> ui_;
    HitModel model_;
    bool markClicked_ = false; // the click at hand was on a check mark
};

} // namespace vardenix
