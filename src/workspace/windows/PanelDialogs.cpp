#include "workspace/windows/PanelDialogs.h"

#include "mapview/windows/FrmVXAreasPathsOptions.h"
#include "mapview/windows/FrmVXHeightCols.h"
#include "workspace/windows/FrmAbout.h"

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
    FrmAbout dialog(platform_, QApplication::activeWindow());
    dialog.exec();
}

} // namespace vardenix
