#pragma once

#include "mapview/MapView.h"
#include "platform/Dialogs.h"
#include "program/Configuration.h"
#include "program/WorkspaceCommands.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmVXAreasPathsOptions;
}

namespace vardenix {

// Which of the catalogue's areas and paths the map shows, and in what colours. Nothing is
// stored before Command1.
class FrmVXAreasPathsOptions : public QDialog {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXAreasPathsOptions(Configuration& settings, MapView& view, Dialogs& dialogs,
                           WorkspaceCommands& commands, QWidget* parent = nullptr);
    ~FrmVXAreasPathsOptions() override;

private:
    void Command1_Click();

    Configuration& settings_;
    MapView& view_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::FrmVXAreasPathsOptions> ui_;
};

} // namespace vardenix
