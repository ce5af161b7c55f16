// The menu "View": what the map shows, which windows are seen, zoom and position.

#include "app/Commands.h"
#include "app/Habits.h"
#include "app/Subsystems.h"
#include "mapview/windows/FrmVXAreasPathsOptions.h"
#include "mapview/windows/FrmVXHeightCols.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "texts/RuntimeError.h"
#include "workspace/PanelRules.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <array>
#include <optional>

namespace vardenix {

namespace {

void Repaint(Subsystems& all) {
    if (!all.Workspace.State().Starting)
        all.Workspace.RefreshPicArray();
}

template <bool MapView::*Layer>
bool IsShown(const Subsystems& all) {
    return all.Workspace.View().*Layer;
}

// A layer of the map that the settings remember.
template <bool MapView::*Layer, bool Configuration::*Stored>
void Switch(Subsystems& all) {
    bool& shown = all.Workspace.View().*Layer;
    shown = !shown;
    all.Workspace.State().Configuration.*Stored = shown;
    Repaint(all);
}

// One that is remembered with the desk.
template <bool MapView::*Layer>
void SwitchRelief(Subsystems& all) {
    bool& shown = all.Workspace.View().*Layer;
    shown = !shown;
    Repaint(all);
}

// One that they do not, and that stays as it is while the panel cannot be seen.
template <bool MapView::*Layer>
void SwitchForNow(Subsystems& all) {
    if (!all.Workspace.Panel().isVisible())
        return;
    bool& shown = all.Workspace.View().*Layer;
    shown = !shown;
    Repaint(all);
}

template <bool Configuration::*Shown>
bool IsOpen(const Subsystems& all) {
    return all.Workspace.State().Configuration.*Shown;
}

template <bool Configuration::*Shown>
void OpenOrClose(Subsystems& all) {
    all.Workspace.ShowWindow(Shown, !IsOpen<Shown>(all));
}

// What a dialog answers; nothing when it was cancelled.
template <typename Ask>
auto Answer(Ask ask) -> std::optional<decltype(ask())> {
    try {
        return ask();
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return std::nullopt;
        throw;
    }
}

template <uint32_t MapView::*Shown, uint32_t Configuration::*Stored>
void AskForColor(Subsystems& all) {
    uint32_t& stored = all.Workspace.State().Configuration.*Stored;
    const auto color =
        Answer([&] { return all.Workspace.Platform().Dialogs.Color(stored); });
    if (!color)
        return;
    stored = *color;
    all.Workspace.View().*Shown = *color;
    all.Workspace.Panel().ShowColors();
    Repaint(all);
}

void AskForFont(Subsystems& all) {
    FontChoice& font = all.Workspace.State().Configuration.HeightsFont;
    const auto chosen =
        Answer([&] { return all.Workspace.Platform().Dialogs.Font(font); });
    if (!chosen)
        return;
    font = *chosen;
    if (all.Workspace.View().ShowHeights)
        Repaint(all);
}

void AskForHeightColors(Workspace& workspace) {
    FrmVXHeightCols dialog(workspace.State().Configuration, workspace.Platform().Dialogs,
                           workspace, QApplication::activeWindow());
    dialog.exec();
    workspace.Panel().ShowColors();
}

void AskForAreasAndPaths(Workspace& workspace) {
    FrmVXAreasPathsOptions dialog(workspace.State().Configuration, workspace.View(),
                                  workspace.Platform().Dialogs, workspace,
                                  QApplication::activeWindow());
    dialog.exec();
}

void FillColors(Subsystems& all, QMenu& menu) {
    struct Choice {
        const char* Text;
        Scheme Wanted;
    };
    constexpr std::array choices{Choice{"As the &desktop's", Scheme::Desktop},
                                 Choice{"&Light", Scheme::Light},
                                 Choice{"Da&rk", Scheme::Dark}};
    const DeskMemory& memory = all.Workspace.Memory();
    const Scheme now = SchemeOf(memory.Read());
    for (const Choice& choice : choices) {
        QAction* entry = menu.addAction(choice.Text);
        entry->setCheckable(true);
        entry->setChecked(choice.Wanted == now);
        OnSignal(entry, &QAction::triggered, &menu, [&memory, wanted = choice.Wanted] {
            memory.Change([wanted](Desk& desk) {
                desk.Dark.reset();
                if (wanted != Scheme::Desktop)
                    desk.Dark = wanted == Scheme::Dark;
            });
            UseScheme(wanted);
        });
    }
}

constexpr auto ViewRows =
    std::to_array<Command>(
        {
            {.Id = "mnuShowAreas",
             .Text = "&Areas and paths",
             .Name = "Show Areas/Paths",
             .Keys = "Ctrl+1",
             .Menu = "mnuView",
             .Button = "chkShowAreas",
             .Chosen = IsShown<&MapView::ShowAreasPaths>,
             .Do = Switch<&MapView::ShowAreasPaths, &Configuration::VXMasterPathsAreas>},
            {.Id = "mnuShowGrid",
             .Text = "&Grid",
             .Name = "ShowGrid",
             .Keys = "Ctrl+2",
             .Menu = "mnuView",
             .Button = "chkShowGrid",
             .Chosen = IsShown<&MapView::ShowGrid>,
             .Do = Switch<&MapView::ShowGrid, &Configuration::OptionShowGrid>},
            {.Id = "mnuShowExport",
             .Text = "&Export area",
             .Name = "Show Export Area",
             .Keys = "Ctrl+3",
             .Menu = "mnuView",
             .Button = "chkShowExport",
             .Chosen = IsShown<&MapView::ShowExport>,
             .Do = Switch<&MapView::ShowExport, &Configuration::OptionShowExpArea>},
            {.Id = "mnuShowHeights",
             .Text = "&Heights",
             .Name = "Show Heights",
             .Keys = "Ctrl+4",
             .Menu = "mnuView",
             .Button = "chkShowHeights",
             .Icon = ":/heights.png",
             .Chosen = IsShown<&MapView::ShowHeights>,
             .Do = Switch<&MapView::ShowHeights, &Configuration::OptionShowHeights>},
            {.Id = "mnuShowSegments",
             .Text = "&Segments",
             .Name = "Show Segments",
             .Keys = "Ctrl+5",
             .Menu = "mnuView",
             .Button = "chkShowSegments",
             .Chosen = IsShown<&MapView::ShowSegments>,
             .Do = Switch<&MapView::ShowSegments, &Configuration::OptionShowSegments>},
            {.Id = "mnuApplyNight",
             .Text = "&Night colors",
             .Name = "Apply Night Colors",
             .Keys = "Ctrl+6",
             .KeyInTip = false,
             .Menu = "mnuView",
             .Button = "chkApplyNight",
             .Chosen = IsShown<&MapView::ApplyNight>,
             .Do = SwitchForNow<&MapView::ApplyNight>},
            {.Id = "mnuApplyMAP",
             .Text = "&MAP color",
             .Name = "Apply MAP Color",
             .Keys = "Ctrl+7",
             .KeyInTip = false,
             .Menu = "mnuView",
             .Button = "chkApplyMAP",
             .Chosen = IsShown<&MapView::ApplyMAP>,
             .Do = SwitchForNow<&MapView::ApplyMAP>},
            {.Id = "mnuShowRelief",
             .Text = "Relie&f",
             .Keys = "Ctrl+8",
             .Tip = "Light from the north west over the land",
             .Menu = "mnuView",
             .Button = "chkShowRelief",
             .Chosen = IsShown<&MapView::ShowRelief>,
             .Do = SwitchRelief<&MapView::ShowRelief>},
            {.Id = "chkReliefAlone",
             .Name = "Relief alone",
             .Tip = "The relief without tiles below it",
             .Button = "chkReliefAlone",
             .Can = IsShown<&MapView::ShowRelief>,
             .Chosen = IsShown<&MapView::ReliefAlone>,
             .Do = SwitchRelief<&MapView::ReliefAlone>},
            {.Id = "mnuShowContours",
             .Text = "&Contour lines",
             .Keys = "Ctrl+9",
             .Tip = "Lines of the same height, every so many feet",
             .Menu = "mnuView",
             .Button = "chkShowContours",
             .Chosen = IsShown<&MapView::ShowContours>,
             .Do = SwitchRelief<&MapView::ShowContours>},
            {.Id = "mnuWinMain",
             .Text = "Ma&in window",
             .Name = "Show Main Window",
             .Keys = "F5",
             .Menu = "mnuView",
             .Line = true,
             .Button = "chkShowMain",
             .Chosen = IsOpen<&Configuration::MainWinVis>,
             .Do = OpenOrClose<&Configuration::MainWinVis>},
            {.Id = "mnuWinTheater",
             .Text = "Theater &preview",
             .Name = "Show Theater Preview",
             .Keys = "F6",
             .Menu = "mnuView",
             .Button = "chkShowTheater",
             .Chosen = IsOpen<&Configuration::ThPrevWinVis>,
             .Do = OpenOrClose<&Configuration::ThPrevWinVis>},
            {.Id = "mnuWinResults",
             .Text = "Search &results",
             .Name = "Show Results window",
             .Keys = "F7",
             .Menu = "mnuView",
             .Button = "chkShowResults",
             .Chosen = IsOpen<&Configuration::SearchResWinVis>,
             .Do =
                 [](Subsystems& all) {
                     all.Search.ShowResults(
                         !IsOpen<&Configuration::SearchResWinVis>(all));
                 }},
            {.Id = "mnuWinTile",
             .Text = "&Tile palette",
             .Name = "Show Tile Palette",
             .Keys = "F8",
             .Menu = "mnuView",
             .Button = "chkShowTile",
             .Chosen = IsOpen<&Configuration::PalWinVis>,
             .Do = OpenOrClose<&Configuration::PalWinVis>},
            {.Id = "mnuWinFeatures",
             .Text = "&Features",
             .Name = "Show Features Window",
             .Keys = "F9",
             .Menu = "mnuView",
             .Button = "chkShowFeatures",
             .Chosen = IsOpen<&Configuration::FeatWinVis>,
             .Do =
                 [](Subsystems& all) {
                     all.Features.Show(!IsOpen<&Configuration::FeatWinVis>(all));
                 }},
            {.Id = "mnuWinHistory",
             .Text = "Histor&y",
             .Keys = "Ctrl+H",
             .Tip = "The changes of this run, and the way back to each",
             .Menu = "mnuView",
             .Chosen = [](const Subsystems& all) { return all.History.Shown(); },
             .Do = [](Subsystems& all) { all.History.Show(!all.History.Shown()); }},
            {.Id = "mnuOneWindow",
             .Text = "&One window",
             .Keys = "F11",
             .Tip = "All windows of the workspace in one, or each on its own",
             .Menu = "mnuView",
             .Line = true,
             .Chosen = [](const Subsystems& all) { return all.Workspace.IsOneWindow(); },
             .Do =
                 [](Subsystems& all) {
                     all.Workspace.SetOneWindow(!all.Workspace.IsOneWindow());
                 }},
            {.Id = "mnuZoomIn",
             .Text = "&Zoom in",
             .Keys = "Ctrl++ Ctrl+=",
             .Tip = "Round the pointer, as Ctrl and the wheel",
             .Menu = "mnuView",
             .Line = true,
             .Icon = ":/plus.png",
             .Do = [](Subsystems& all) { all.Workspace.Map().ZoomBy(1); }},
            {.Id = "mnuZoomOut",
             .Text = "Zoom o&ut",
             .Keys = "Ctrl+-",
             .Tip = "Beyond 20 posts a cell each post is its tile's mean color",
             .Menu = "mnuView",
             .Icon = ":/minus.png",
             .Do = [](Subsystems& all) { all.Workspace.Map().ZoomBy(-1); }},
            {.Id = "mnuZoomWhole",
             .Text = "&Whole map",
             .Keys = "Ctrl+Home",
             .Menu = "mnuView",
             .Do = [](Subsystems& all) { all.Workspace.Map().ShowWhole(); }},
            {.Id = "mnuControlPanel",
             .Text = "Contro&l panel",
             .Keys = "F4",
             .Tip = "The panel beside the map; without it the map has its room, too",
             .Menu = "mnuView",
             .Can = [](const Subsystems& all) { return all.Workspace.IsOneWindow(); },
             .Chosen = [](const Subsystems& all) { return all.Workspace.ShowsPanel(); },
             .Do =
                 [](Subsystems& all) {
                     all.Workspace.ShowPanel(!all.Workspace.ShowsPanel());
                 }},
            {.Id = "mnuColors", .Text = "&Colors", .Menu = "mnuView", .Fill = FillColors},
            {.Id = "mnuBringAll",
             .Text = "&Bring all to front",
             .Keys = "F12",
             .Tip = "Every window of the program comes over those of others",
             .Menu = "mnuView",
             .Do = [](Subsystems& all) { all.Workspace.BringAllToFront(); }},
            {.Id = "cmdplus",
             .Name = "Nearer",
             .Tip = "Zoom in: fewer posts in a cell",
             .Button = "cmdplus",
             .Do = [](Subsystems& all) { all.Workspace.Panel().StepZoom(1); }},
            {.Id = "cmdminus",
             .Name = "Farther",
             .Tip = "Zoom out: more posts in a cell",
             .Button = "cmdminus",
             .Do = [](Subsystems& all) { all.Workspace.Panel().StepZoom(-1); }},
            {.Id = "cmdZoomin",
             .Name = "Fewer grid cells",
             .Tip =
                 "One grid cell fewer a side; larger tiles where the map fills its room",
             .Button = "cmdZoomin",
             .Do =
                 [](Subsystems& all) {
                     if (ZoomIn(all.Workspace.View()))
                         all.Workspace.Panel().GridChosen();
                 }},
            {.Id = "cmdZoomOut",
             .Name = "More grid cells",
             .Tip =
                 "One grid cell more a side; smaller tiles where the map fills its room",
             .Button = "cmdZoomOut",
             .Do =
                 [](Subsystems& all) {
                     if (ZoomOut(all.Workspace.View()))
                         all.Workspace.Panel().GridChosen();
                 }},
            {.Id = "cmdGoXY",
             .Name = "Go to the position",
             .Tip = "Show the post at X, Y in the map's lower left corner",
             .Button = "cmdGoXY",
             .Do = [](Subsystems& all) { all.Workspace.Panel().GoToTypedPosition(); }},
            {.Id = "cmdAreasOptions",
             .Name = "Areas and paths options",
             .Tip = "What is shown of areas and paths, and their colors",
             .Button = "cmdAreasOptions",
             .Do = [](Subsystems& all) { AskForAreasAndPaths(all.Workspace); }},
            {.Id = "CmdGridCol",
             .Name = "Color of the grid",
             .Tip = "Color of the grid",
             .Button = "CmdGridCol",
             .Do = AskForColor<&MapView::GridColor, &Configuration::GridColor>},
            {.Id = "CmdExpAreaCol",
             .Name = "Color of the export area",
             .Tip = "Color of the export area",
             .Button = "CmdExpAreaCol",
             .Do = AskForColor<&MapView::ExportColor, &Configuration::ExportedAreaColor>},
            {.Id = "CmdSegCol",
             .Name = "Color of the segments",
             .Tip = "Color of the segments",
             .Button = "CmdSegCol",
             .Do = AskForColor<&MapView::SegmentColor, &Configuration::SegmentColor>},
            {.Id = "cmdFont",
             .Name = "Font of the heights",
             .Tip = "Font of the heights",
             .Button = "cmdFont",
             .Do = AskForFont},
            {.Id = "CmdHeightCol",
             .Name = "Colors of the heights",
             .Tip = "Colors of the heights",
             .Button = "CmdHeightCol",
             .Do = [](Subsystems& all) { AskForHeightColors(all.Workspace); }},
        });

} // namespace

std::span<const Command> ViewCommands() { return ViewRows; }

} // namespace vardenix
