// The menu "Edit": undo, restore points, and the tools of the map.

#include "app/Commands.h"
#include "app/Subsystems.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <array>

namespace vardenix {

namespace {

// A click that gives a corner does nothing else.
template <MapTool Tool>
bool InHand(const Subsystems& all) {
    const MapInteraction& interaction = all.Workspace.Interaction();
    return !interaction.Waits() && interaction.Tool == Tool;
}

template <MapTool Tool>
void Take(Subsystems& all) {
    all.Workspace.Map().ChooseTool(Tool);
}

bool EditsPosts(const Subsystems& all) { return !all.Workspace.View().L0Mode; }

template <Painting What>
bool Paints(const Subsystems& all) {
    return all.Workspace.Interaction().Hand.Paints == What;
}

constexpr auto EditRows = std::to_array<Command>({
    {.Id = "mnuUndo",
     .Text = "&Undo",
     .Keys = "Ctrl+Z",
     .Tip = "Takes back the newest change, whatever it was",
     .Menu = "mnuEdit",
     .Icon = ":/undo.png",
     .InEditors = true,
     .Can = [](const Subsystems& all) { return all.Steps.CanGo(Walk::Back); },
     .Do = [](Subsystems& all) { all.Steps.Go(Walk::Back); }},
    {.Id = "mnuRedo",
     .Text = "&Redo",
     .Keys = "Ctrl+Y Ctrl+Shift+Z",
     .Tip = "Brings again what was taken back last",
     .Menu = "mnuEdit",
     .Icon = ":/redo.png",
     .InEditors = true,
     .Can = [](const Subsystems& all) { return all.Steps.CanGo(Walk::Again); },
     .Do = [](Subsystems& all) { all.Steps.Go(Walk::Again); }},
    {.Id = "cmdUndo",
     .Name = "Undo",
     .ButtonTip = "Undo (not for importing)",
     .KeyInTip = false,
     .Button = "cmdUndo",
     .Can =
         [](const Subsystems& all) {
             return all.Workspace.Undo().CanUndo(all.Workspace.View().Edited());
         },
     .Do =
         [](Subsystems& all) {
             UndoInView(all.Workspace.Undo(), all.Workspace.View(), all.Workspace);
         }},
    {.Id = "cmdRedo",
     .Name = "Redo",
     .ButtonTip = "Redo (not for importing)",
     .KeyInTip = false,
     .Button = "cmdRedo",
     .Can =
         [](const Subsystems& all) {
             return all.Workspace.Undo().CanRedo(all.Workspace.View().Edited());
         },
     .Do =
         [](Subsystems& all) {
             RedoInView(all.Workspace.Undo(), all.Workspace.View(), all.Workspace);
         }},
    {.Id = "mnuBrush",
     .Text = "&Brush",
     .MapKeys = "B",
     .Tip = "Paints every post that the pointer crosses",
     .Menu = "mnuEdit",
     .Line = true,
     .MapButton = "cmdBrush",
     .Icon = ":/brush.png",
     .Chosen = InHand<MapTool::Brush>,
     .Do = Take<MapTool::Brush>},
    {.Id = "mnuRectangle",
     .Text = "Re&ctangle",
     .MapKeys = "R",
     .Tip = "Press at one corner, let go at the opposite one",
     .Menu = "mnuEdit",
     .MapButton = "cmdRectangle",
     .Icon = ":/rectangle.png",
     .Chosen = InHand<MapTool::Rectangle>,
     .Do = Take<MapTool::Rectangle>},
    {.Id = "mnuFill",
     .Text = "&Fill",
     .MapKeys = "F",
     .Tip = "Fills the connected posts of the same tile, as far as the segments in view "
            "reach; with Shift as far as the tile does",
     .Menu = "mnuEdit",
     .MapButton = "cmdFill",
     .Icon = ":/fill.png",
     .Chosen = InHand<MapTool::Fill>,
     .Do = Take<MapTool::Fill>},
    {.Id = "mnuPick",
     .Text = "&Pick a tile",
     .MapKeys = "I",
     .Tip = "Takes the tile of a post; Alt and a click do so with any tool",
     .Menu = "mnuEdit",
     .MapButton = "cmdPick",
     .Icon = ":/pick.png",
     .Chosen = InHand<MapTool::Pick>,
     .Do = Take<MapTool::Pick>},
    {.Id = "mnuEraser",
     .Text = "&Eraser",
     .MapKeys = "E",
     .Tip = "Paints tile 0, or the tile that the map's menu has given to it",
     .Menu = "mnuEdit",
     .MapButton = "cmdEraser",
     .Icon = ":/eraser.png",
     .Chosen = InHand<MapTool::Eraser>,
     .Do = Take<MapTool::Eraser>},
    {.Id = "mnuGround",
     .Text = "Paint &grounds",
     .MapKeys = "T",
     .Tip =
         "Brush, rectangle and fill paint the ground of the chosen tile, with the tiles "
         "that lead over to what lies round it; again: tiles",
     .Menu = "mnuEdit",
     .MapButton = "cmdGround",
     .Icon = ":/ground.png",
     .Can = EditsPosts,
     .Chosen = Paints<Painting::Ground>,
     .Do = [](Subsystems& all) { all.Selecting.TogglePainting(Painting::Ground); }},
    {.Id = "mnuPostHeights",
     .Text = "Shape &heights",
     .MapKeys = "H",
     .Tip = "Brush, rectangle and fill change the elevations of posts; again: tiles",
     .Menu = "mnuEdit",
     .MapButton = "cmdPostHeights",
     .Icon = ":/hill.png",
     .Can = EditsPosts,
     .Chosen = Paints<Painting::Heights>,
     .Do = [](Subsystems& all) { all.Selecting.TogglePainting(Painting::Heights); }},
    {.Id = "Command3",
     .Button = "Command3",
     .Can = EditsPosts,
     .Do = [](Subsystems& all) { all.RestorePoints.Create(); }},
    {.Id = "Command4",
     .Button = "Command4",
     .Can = EditsPosts,
     .Do = [](Subsystems& all) { all.RestorePoints.Restore(); }},
    {.Id = "chkL0ELV",
     .Name = "L0/ELV Edit mode",
     .Keys = "F2",
     .KeyInTip = false,
     .Button = "chkL0ELV",
     .Can = [](const Subsystems& all) { return all.Workspace.Panel().HasL0File(); },
     .Chosen = [](const Subsystems& all) { return all.Workspace.View().L0Mode; },
     .Do =
         [](Subsystems& all) { all.Workspace.EditL0Elv(!all.Workspace.View().L0Mode); }},
});

} // namespace

std::span<const Command> EditCommands() { return EditRows; }

} // namespace vardenix
