#pragma once

#include "mapview/HeightColors.h"
#include "platform/Dialogs.h"
#include "program/Configuration.h"
#include "program/WorkspaceCommands.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmVXHeightCols;
}

namespace vardenix {

// The colours of the heights on the map: one for all, or a table by altitude. Works on a
// copy of the table; nothing is stored before cmdOK.
class FrmVXHeightCols : public QDialog {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXHeightCols(Configuration& settings, Dialogs& dialogs,
                    WorkspaceCommands& commands, QWidget* parent = nullptr);
    ~FrmVXHeightCols() override;

private:
    void Connect(Dialogs& dialogs);
    // The table is filled from the copy; `selected` is a row from 0, -1 for none.
    void FillListView(int selected);
    // From 0; -1 when none is selected, whatever row the keyboard stands on.
    int SelectedRow() const;
    void ListView1_Click();
    HeightColorEntry EnteredRow() const;
    void EnableCommands();
    void cmdOK_Click();

    Configuration& settings_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::FrmVXHeightCols> ui_;
    HeightColorRows rows_;
};

} // namespace vardenix
