// The menu "Selection": what is selected and what becomes of it.

#include "app/Commands.h"
#include "app/Subsystems.h"
#include "workspace/windows/FrmVXMap.h"

#include <array>

namespace vardenix {

namespace {

const HandState& Hand(const Subsystems& all) { return all.Workspace.Interaction().Hand; }

bool AnySelected(const Subsystems& all) { return !Hand(all).Selected.Empty(); }
bool AnySelectedPosts(const Subsystems& all) {
    return AnySelected(all) && !all.Workspace.View().L0Mode;
}

template <MapTool Tool>
bool HasTool(const Subsystems& all) {
    return all.Workspace.Interaction().Tool == Tool;
}
template <MapTool Tool>
void TakeTool(Subsystems& all) {
    all.Workspace.Map().ChooseTool(Tool);
}

constexpr auto SelectionRows = std::to_array<Command>({
    {.Id = "mnuSelect",
     .Text = "&Select",
     .MapKeys = "S",
     .Tip = "Selects a rectangle of posts; with Shift more, with Shift and Ctrl less",
     .Menu = "mnuSelection",
     .MapButton = "cmdSelect",
     .Icon = ":/select.png",
     .Chosen = HasTool<MapTool::Select>,
     .Do = TakeTool<MapTool::Select>},
    {.Id = "mnuLasso",
     .Text = "&Lasso",
     .MapKeys = "L",
     .Tip = "Selects the posts that a line is drawn round; with Shift more, with Shift "
            "and Ctrl less",
     .Menu = "mnuSelection",
     .MapButton = "cmdLasso",
     .Icon = ":/lasso.png",
     .Chosen = HasTool<MapTool::Lasso>,
     .Do = TakeTool<MapTool::Lasso>},
    {.Id = "mnuSelectAll",
     .Text = "Select &all",
     .Keys = "Ctrl+A",
     .Menu = "mnuSelection",
     .Line = true,
     .Do = [](Subsystems& all) { all.Selecting.All(); }},
    {.Id = "mnuSelectNone",
     .Text = "Select &nothing",
     .Keys = "Ctrl+D",
     .Tip = "The tools may change all posts again",
     .Menu = "mnuSelection",
     .Can = AnySelected,
     .Do = [](Subsystems& all) { all.Selecting.None(); }},
    {.Id = "mnuSelectInvert",
     .Text = "&Invert selection",
     .Keys = "Ctrl+Shift+I",
     .Menu = "mnuSelection",
     .Do = [](Subsystems& all) { all.Selecting.Invert(); }},
    {.Id = "mnuSelectHits",
     .Text = "All &hits of the search",
     .Menu = "mnuSelection",
     .Can =
         [](const Subsystems& all) {
             return all.Workspace.State().Search.Results.size() > 1;
         },
     .Do = [](Subsystems& all) { all.Selecting.Hits(); }},
    {.Id = "mnuSelectHeights",
     .Text = "All &between two heights...",
     .Menu = "mnuSelection",
     .Do = [](Subsystems& all) { all.Selecting.BetweenHeights(); }},
    {.Id = "mnuCopy",
     .Text = "&Copy",
     .Keys = "Ctrl+C",
     .Tip = "What is selected, for this program and other copies of it",
     .Menu = "mnuSelection",
     .Line = true,
     .Can = AnySelectedPosts,
     .Do = [](Subsystems& all) { all.Clipboard.Copy(); }},
    {.Id = "mnuCut",
     .Text = "C&ut",
     .Keys = "Ctrl+X",
     .Tip = "Copies; tile 0 stays, and elevation 0 where elevations come along",
     .Menu = "mnuSelection",
     .Can = AnySelectedPosts,
     .Do = [](Subsystems& all) { all.Clipboard.Cut(); }},
    {.Id = "mnuPaste",
     .Text = "&Paste",
     .Keys = "Ctrl+V",
     .Tip = "What was copied follows the pointer and is stamped by clicks, until Esc",
     .Menu = "mnuSelection",
     .Can =
         [](const Subsystems& all) {
             return !all.Workspace.View().L0Mode && all.Clipboard.CanPaste();
         },
     .Do = [](Subsystems& all) { all.Clipboard.Paste(); }},
    {.Id = "mnuSaveSelection",
     .Text = "Save selection as &region...",
     .Tip = "The rectangle round it, as an export file",
     .Menu = "mnuSelection",
     .Can = AnySelectedPosts,
     .Do = [](Subsystems& all) { all.Clipboard.SaveAsRegion(); }},
    {.Id = "mnuMendSeams",
     .Text = "&Mend seams",
     .Tip = "Gives the selected posts other tiles where what lies side by side does not "
            "fit",
     .Menu = "mnuSelection",
     .Line = true,
     .Can = AnySelectedPosts,
     .Do = [](Subsystems& all) { all.Land.Mend(); }},
    {.Id = "mnuFindSeams",
     .Text = "&Find what does not fit",
     .Tip = "The posts whose tiles do not fit their neighbours, as hits of a search",
     .Menu = "mnuSelection",
     .Do = [](Subsystems& all) { all.Land.FindSeams(); }},
    {.Id = "mnuShowSeams",
     .Text = "Show what &does not fit",
     .Tip = "A red line between posts whose tiles do not fit",
     .Menu = "mnuSelection",
     .Chosen = [](const Subsystems& all) { return all.Land.SeamsShown(); },
     .Do = [](Subsystems& all) { all.Land.ShowSeams(!all.Land.SeamsShown()); }},
});

} // namespace

std::span<const Command> SelectionCommands() { return SelectionRows; }

} // namespace vardenix
