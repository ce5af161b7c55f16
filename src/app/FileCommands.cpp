// The menu "File", saving, and the buttons of files on the panel.

#include "app/Commands.h"
#include "app/SaveAll.h"
#include "app/Subsystems.h"
#include "files/FileNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "workspace/windows/FrmVXMain.h"

#include <QMenu>

#include <array>

namespace vardenix {

namespace {

// A map of the finest elevations shows the new ones at once.
void LoadL0Elv(Workspace& workspace) {
    if (auto before = cmdLoadL0Elv(workspace.Saving()))
        workspace.HeightsLoaded(std::move(*before));
}

// One that has gone is told of before anything is left for it.
void OpenRecent(Workspace& workspace, const std::string& folder) {
    const std::string l2File = folder + "/terrain/theater.L2";
    if (FileExists(l2File))
        return workspace.StartAnew(folder);
    workspace.Platform().Dialogs.Notice("L2 File not found\n" + ShownPath(l2File),
                                        "Error...", BoxIcon::Critical);
}

void FillRecent(Workspace& workspace, QMenu& menu) {
    int number = 0;
    for (const std::string& folder : workspace.Memory().Read().Recent) {
        const QString shown = QString::fromStdString(folder).replace('&', "&&");
        QAction* entry = menu.addAction("&" + QString::number(++number) + "  " + shown);
        entry->setToolTip("Leaves this theater, and starts the program with that one");
        OnSignal(entry, &QAction::triggered, &menu, [&workspace, folder] {
            if (workspace.Panel().isEnabled())
                OpenRecent(workspace, folder);
        });
    }
}

constexpr auto FileRows = std::to_array<Command>({
    {.Id = "mnuSave",
     .Text = "&Save",
     .Keys = "Ctrl+S",
     .Tip = "Over the files that were opened",
     .ButtonTip = "Use shift for save with a different name.",
     .KeyInTip = false,
     .Menu = "mnuFile",
     .Button = "CmdSaveTheater",
     .Icon = ":/save.png",
     .Can = [](const Subsystems& all) { return all.Workspace.Panel().CanSave(); },
     .Do =
         [](Subsystems& all) {
             all.Workspace.SaveTheater(all.Workspace.Panel().ShiftDown());
         }},
    {.Id = "mnuSaveAs",
     .Text = "Save &as...",
     .Keys = "Ctrl+Shift+S",
     .Tip = "Under a name that you are asked for",
     .Menu = "mnuFile",
     .Do = [](Subsystems& all) { all.Workspace.SaveTheater(true); }},
    {.Id = "mnuSaveAll",
     .Text = "Save a&ll",
     .Keys = "Ctrl+Alt+S",
     .Tip = "Every file that differs from the disk",
     .Menu = "mnuFile",
     .InEditors = true,
     .Can = [](const Subsystems& all) { return AnyDiffers(all.Workspace); },
     .Do = [](Subsystems& all) { SaveAll(all.Workspace); }},
    {.Id = "mnuEarlierSaves",
     .Text = "Earlier sa&ves...",
     .Tip = "What the files of this theater were before they were saved",
     .Menu = "mnuFile",
     .Do = [](Subsystems& all) { all.Recovery.ShowEarlierSaves(); }},
    {.Id = "mnuLoadHeights",
     .Text = "Load &heights...",
     .Name = "Load a L0 or ELV file",
     .Keys = "Ctrl+L",
     .Tip = "A file of the finest elevations, L0 or ELV",
     .ButtonTip = "",
     .KeyInTip = false,
     .Menu = "mnuFile",
     .Line = true,
     .Button = "cmdLoadL0Elv",
     .Icon = ":/browse.png",
     .Do = [](Subsystems& all) { LoadL0Elv(all.Workspace); }},
    {.Id = "mnuImportElevations",
     .Text = "&Import elevations...",
     .Tip = "Heights of a map of the real world: GeoTIFF, HGT, ASC, IMG, PNG",
     .Menu = "mnuFile",
     .Line = true,
     .Do = [](Subsystems& all) { all.Elevations.ShowImport(); }},
    {.Id = "mnuExportElevations",
     .Text = "&Export elevations...",
     .Tip = "What is edited, level 2 or the L0/ELV heights, as GeoTIFF, ASC or PNG",
     .Menu = "mnuFile",
     .Do = [](Subsystems& all) { all.Elevations.Export(); }},
    {.Id = "mnuTheaterPlace",
     .Text = "&Place of the theater...",
     .Tip = "Where the theater lies on the earth",
     .Menu = "mnuFile",
     .Do = [](Subsystems& all) { all.Earth.ShowPlace(); }},
    {.Id = "mnuOpenTheater",
     .Text = "&Open another theater...",
     .Keys = "Ctrl+O",
     .Tip = "Leaves this theater, and starts the program anew",
     .Menu = "mnuFile",
     .Line = true,
     .Do = [](Subsystems& all) { all.Workspace.StartAnew({}); }},
    {.Id = "mnuRecent",
     .Text = "&Recent",
     .Menu = "mnuFile",
     .Can =
         [](const Subsystems& all) {
             return !all.Workspace.Memory().Read().Recent.empty();
         },
     .Fill = [](Subsystems& all, QMenu& menu) { FillRecent(all.Workspace, menu); }},
    {.Id = "mnyExit",
     .Text = "E&xit",
     .Keys = "Ctrl+Q",
     .Tip = "Leave the program",
     .Menu = "mnuFile",
     .Line = true,
     .Do = [](Subsystems& all) { all.Workspace.Panel().close(); }},
    {.Id = "CmdImport",
     .Name = "Import",
     .Keys = "Ctrl+I",
     .Tip = "Stamp a region from a file. Ctrl+Z takes it back; the arrows of the panel "
            "do not.",
     .Button = "CmdImport",
     .Do = [](Subsystems& all) { all.Regions.Import(); }},
    {.Id = "CmdExport",
     .Name = "Export",
     .Keys = "Ctrl+E",
     .Tip = "Use SHIFT to export TDFs (Features).",
     .KeyInTip = false,
     .Button = "CmdExport",
     .Do = [](Subsystems& all) { all.Regions.Export(); }},
    {.Id = "cmdOpenBIN",
     .Button = "cmdOpenBIN",
     .Do = [](Subsystems& all) { all.BinEditor.Open(); }},
    {.Id = "cmdOpenMap",
     .Button = "cmdOpenMap",
     .Can = [](const Subsystems& all) { return all.MapEditor.CanOpen(); },
     .Do = [](Subsystems& all) { all.MapEditor.Open(); }},
});

} // namespace

std::span<const Command> FileCommands() { return FileRows; }

} // namespace vardenix
