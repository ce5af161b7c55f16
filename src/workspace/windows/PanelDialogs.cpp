#include "workspace/windows/PanelDialogs.h"

#include "workspace/windows/FrmAbout.h"
#include "workspace/windows/FrmVXAreasPathsOptions.h"
#include "workspace/windows/FrmVXHeightCols.h"

#include <QApplication>

namespace vardenix {

void PanelDialogs::ShowHeightColors() {
    FrmVXHeightCols dialog(state_.Configuration, platform_.Dialogs, workspace_,
                           QApplication::activeWindow());
    dialog.exec();
}

void PanelDialogs::ShowAreasPathsOptions() {
    FrmVXAreasPathsOptions dialog(state_.Configuration, view_, platform_.Dialogs,
                                  workspace_, QApplication::activeWindow());
    dialog.exec();
}

void PanelDialogs::ShowAbout() {
    FrmAbout dialog(platform_.Processes, QApplication::activeWindow());
    dialog.exec();
}

} // namespace vardenix
