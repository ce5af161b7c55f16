// Menus, saving, undo, export and import of the control panel.

#include "platform/Dialogs.h"
#include "platform/OpenPage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "ui_FrmVXMain.h"
#include "workspace/windows/FrmVXMain.h"

#include <QMenu>

#include <algorithm>
#include <array>

namespace vardenix {

namespace {

struct VerbControl {
    PanelVerb Verb;
    const char* Control;
};

// Of each verb, the control that is enabled when it can be done.
constexpr std::array<VerbControl, 29> VerbControls{{
    {PanelVerb::OpenBIN, "cmdOpenBIN"},
    {PanelVerb::OpenMap, "cmdOpenMap"},
    {PanelVerb::Import, "CmdImport"},
    {PanelVerb::Export, "CmdExport"},
    {PanelVerb::SaveTheater, "CmdSaveTheater"},
    {PanelVerb::LoadL0Elv, "cmdLoadL0Elv"},
    {PanelVerb::EditL0Elv, "chkL0ELV"},
    {PanelVerb::Undo, "cmdUndo"},
    {PanelVerb::Redo, "cmdRedo"},
    {PanelVerb::CreateRestorePoint, "Command3"},
    {PanelVerb::Restore, "Command4"},
    {PanelVerb::MakeMEA, "mnumkMEA"},
    {PanelVerb::MakeTC, "mnumktc"},
    {PanelVerb::MakeTM, "mnumktm"},
    {PanelVerb::SearchTiles, "mnusearchTiles"},
    {PanelVerb::RebuildTheater, "mnuRebuildTheater"},
    {PanelVerb::SaveScreenshot, "mnuSaveScreeshot"},
    {PanelVerb::OpenTheater, "mnuOpenTheater"},
    {PanelVerb::OneWindow, "mnuOneWindow"},
    {PanelVerb::BringAllToFront, "mnuBringAll"},
    {PanelVerb::BrushTool, "mnuBrush"},
    {PanelVerb::RectangleTool, "mnuRectangle"},
    {PanelVerb::FillTool, "mnuFill"},
    {PanelVerb::PickTool, "mnuPick"},
    {PanelVerb::ShowMain, "chkShowMain"},
    {PanelVerb::ShowResults, "chkShowResults"},
    {PanelVerb::ShowTheater, "chkShowTheater"},
    {PanelVerb::ShowTile, "chkShowTile"},
    {PanelVerb::ShowFeatures, "chkShowFeatures"},
}};

} // namespace

void FrmVXMain::JoinVerb(const char* control, PanelVerb verb) {
    // Keys come here also while the panel is locked.
    const auto act = [this, verb] {
        if (isEnabled())
            commands_.Do(verb);
    };
    if (auto* entry = findChild<QAction*>(control))
        OnSignal(entry, &QAction::triggered, this, act);
    else
        OnSignal(findChild<QAbstractButton*>(control), &QAbstractButton::clicked, this,
                 act);
}

void FrmVXMain::ConnectCommands() {
    for (const VerbControl& row : VerbControls) {
        switch (row.Verb) {
        case PanelVerb::Export:
        case PanelVerb::SaveTheater:
        case PanelVerb::EditL0Elv:
        case PanelVerb::SaveScreenshot:
            break; // these say more than the verb
        default:
            if (row.Verb < PanelVerb::ShowMain)
                JoinVerb(row.Control, row.Verb);
        }
    }
    OnSignal(ui_->CmdSaveTheater, &QAbstractButton::clicked, this,
             [this] { CmdSaveTheater_Click(shiftDown_); });
    OnSignal(ui_->CmdExport, &QAbstractButton::clicked, this,
             [this] { CmdExport_Click(); });
    OnSignal(ui_->mnuSaveAs, &QAction::triggered, this,
             [this] { CmdSaveTheater_Click(true); });
}

void FrmVXMain::CmdSaveTheater_Click(bool as) {
    // The key comes here also while the panel is locked.
    if (isEnabled() && commands_.Can(PanelVerb::SaveTheater))
        commands_.SaveTheater(as);
    RedrawSaveButton();
}

void FrmVXMain::CmdExport_Click() {
    exportWithShift_ = shiftDown_;
    commands_.Do(PanelVerb::Export);
}

void FrmVXMain::ConnectMenus() {
    OnSignal(ui_->mnyExit, &QAction::triggered, this, [this] { close(); });
    OnSignal(ui_->mnuOnlineHelp, &QAction::triggered, this,
             [this] { mnuOnlineHelp_Click(); });
    // The menus of one window can be pulled down also while the panel is locked.
    OnSignal(ui_->mnuAbout, &QAction::triggered, this, [this] {
        if (isEnabled())
            commands_.ShowAbout();
    });
    OnSignal(ui_->mnuSaveScreeshot, &QAction::triggered, this,
             [this] { mnuSaveScreeshot_Click(); });
    ui_->mnuOneWindow->setCheckable(true);
    for (const QMenu* menu : {ui_->mnuEdit, ui_->mnuView})
        OnSignal(menu, &QMenu::aboutToShow, this, [this] { TickChosen(); });
    OnSignal(ui_->mnuRecent, &QMenu::aboutToShow, this, [this] { FillRecent(); });
    OnSignal(ui_->mnuFile, &QMenu::aboutToShow, this, [this] {
        ui_->mnuRecent->setEnabled(commands_.Can(PanelVerb::OpenTheater) &&
                                   !commands_.RecentTheaters().empty());
    });
    // Without an action.
    ui_->mnumkTHR->setEnabled(false);
    ui_->mnuThStats->setEnabled(false);
}

void FrmVXMain::TickChosen() {
    for (const VerbControl& row : VerbControls)
        if (auto* entry = findChild<QAction*>(row.Control); entry && entry->isCheckable())
            entry->setChecked(commands_.Chosen(row.Verb));
}

void FrmVXMain::FillRecent() {
    ui_->mnuRecent->clear();
    int number = 0;
    for (const std::string& folder : commands_.RecentTheaters()) {
        const QString shown = QString::fromStdString(folder).replace('&', "&&");
        QAction* entry =
            ui_->mnuRecent->addAction("&" + QString::number(++number) + "  " + shown);
        entry->setToolTip("Leaves this theater, and starts the program with that one");
        OnSignal(entry, &QAction::triggered, this, [this, folder] {
            if (isEnabled())
                commands_.OpenRecent(folder);
        });
    }
}

void FrmVXMain::mnuOnlineHelp_Click() {
    OpenPage(platform_.Processes, platform_.Dialogs, state_.Configuration.OnlineHelp);
}

void FrmVXMain::mnuSaveScreeshot_Click() {
    if (!isEnabled())
        return;
    FileAnswer answer;
    try {
        answer = platform_.Dialogs.SaveFile(
            {.Title = {}, .Filter = "Bitmap (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"});
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return;
        throw;
    }
    commands_.SaveScreenshot(answer.Path, answer.FilterIndex);
}

void FrmVXMain::RefreshCommands() {
    for (const VerbControl& row : VerbControls) {
        const bool can = commands_.Can(row.Verb);
        if (auto* entry = findChild<QAction*>(row.Control))
            entry->setEnabled(can);
        else
            findChild<QWidget*>(row.Control)->setEnabled(can);
    }
    ui_->mnuSaveAs->setEnabled(commands_.Can(PanelVerb::SaveTheater));
    if (l0FileName_.empty())
        ui_->chkL0ELV->setEnabled(false);
    if (view_.L0Mode) {
        ui_->Command3->setEnabled(false);
        ui_->Command4->setEnabled(false);
    }
    RedrawSaveButton();
}

void FrmVXMain::DisableClickableItemsVX(bool enabled) {
    for (const char* name : ClickableItemsVX)
        if (auto* control = findChild<QWidget*>(name))
            control->setEnabled(enabled);
    // Unlocking gives back only what can be done.
    if (enabled)
        RefreshCommands();
}

void FrmVXMain::RedrawSaveButton() {
    const ButtonState look = vardenix::RedrawSaveButton(
        shiftDown_, view_.Edited(), titles_.L0NeedSaveFlag(), titles_.L2NeedSaveFlag());
    ui_->CmdSaveTheater->setText(QString::fromStdString(look.Caption));
    ui_->CmdSaveTheater->setEnabled(look.Enabled &&
                                    commands_.Can(PanelVerb::SaveTheater));
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
