// Saving, export and import as the control panel shows them.

#include "ui_FrmVXMain.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

void FrmVXMain::DisableClickableItemsVX(bool enabled) {
    for (const char* name : ClickableItemsVX)
        if (auto* control = findChild<QWidget*>(name))
            control->setEnabled(enabled);
    // Unlocking gives back only what can be done.
    if (enabled)
        workspace_.CommandsChanged();
}

bool FrmVXMain::CanSave() const {
    return vardenix::RedrawSaveButton(shiftDown_, view_.L0Mode, titles_.L0NeedSaveFlag(),
                                      titles_.L2NeedSaveFlag())
        .Enabled;
}

void FrmVXMain::RedrawSaveButton() {
    const ButtonState look = vardenix::RedrawSaveButton(
        shiftDown_, view_.L0Mode, titles_.L0NeedSaveFlag(), titles_.L2NeedSaveFlag());
    ui_->CmdSaveTheater->setText(QString::fromStdString(look.Caption));
    workspace_.CommandsChanged();
}

void FrmVXMain::RedrawExportButton() {
    ui_->CmdExport->setText(
        QString::fromStdString(vardenix::RedrawExportButton(shiftDown_)));
}

void FrmVXMain::ShowHint(Hint hint) {
    ui_->lblExport->setVisible(hint == Hint::Export);
    ui_->lblImport->setVisible(hint == Hint::Import);
    ui_->lblImportNoUndo->setVisible(hint == Hint::Import);
    ui_->Frame7->setVisible(hint != Hint::None);
}

} // namespace vardenix
