#include "app/Habits.h"

#include "app/Workspace.h"
#include "mapview/MapLayout.h"
#include "workspace/GridShapes.h"
#include "workspace/ZoomAndDrag.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vardenix {

namespace {

struct ToolName {
    std::string_view Name;
    MapTool Tool;
};
constexpr std::array ToolNames{ToolName{"brush", MapTool::Brush},
                               ToolName{"rectangle", MapTool::Rectangle},
                               ToolName{"fill", MapTool::Fill}};

void TakeUpTool(MapInteraction& interaction, const Desk& desk) {
    const auto* known = std::ranges::find(ToolNames, desk.Tool, &ToolName::Name);
    if (known != ToolNames.end())
        ChooseTool(interaction, known->Tool);
    if (desk.BrushSize != 0)
        interaction.BrushSize = std::clamp(desk.BrushSize, 1, int32_t{MaxBrushSize});
}

void TakeUpView(Workspace& workspace, const Desk& desk) {
    const std::string folder = workspace.TheaterFolder();
    const auto seen = desk.Views.find(folder);
    if (folder.empty() || desk.Resume != folder || seen == desk.Views.end())
        return;
    const DeskView& view = seen->second;
    workspace.Panel().SetZoom(
        std::min(view.ZoomPosts,
                 MostZoomPosts(workspace.View(), workspace.State().Terrain.MapWidth)));
    workspace.LoadImageControls();
    workspace.PlaceView(view.X, view.Y);
}

} // namespace

Scheme SchemeOf(const Desk& desk) {
    return !desk.Dark.has_value() ? Scheme::Desktop
           : *desk.Dark           ? Scheme::Dark
                                  : Scheme::Light;
}

void TakeUpHabits(Workspace& workspace, const Desk& desk) {
    TakeUpTool(workspace.Interaction(), desk);
    workspace.SelectionChanged();
    if (desk.PaletteClass)
        workspace.Windows().Palette->ShowFrom(*desk.PaletteClass, desk.PaletteRow);
    TakeUpView(workspace, desk);
}

void NoteOpened(const Workspace& workspace, Desk& desk) {
    desk.Resume.clear();
    NoteTheater(desk, workspace.TheaterFolder());
}

void NoteHabits(const Workspace& workspace, Desk& desk) {
    const MapInteraction& interaction = workspace.Interaction();
    const MapTool tool =
        interaction.Tool == MapTool::Pick ? interaction.ToolBeforePick : interaction.Tool;
    const auto* known = std::ranges::find(ToolNames, tool, &ToolName::Tool);
    if (known != ToolNames.end())
        desk.Tool = known->Name;
    desk.BrushSize = interaction.BrushSize;
    const FrmVXTilePal& palette = *workspace.Windows().Palette;
    if (palette.ShownClass() >= 0) {
        desk.PaletteClass = palette.ShownClass();
        desk.PaletteRow = palette.FirstRow();
    }
    const MapView& view = workspace.View();
    if (const std::string folder = workspace.TheaterFolder(); !folder.empty())
        desk.Views[folder] = {view.MapLeftX, view.MapBottomY, view.ZoomPosts};
}

} // namespace vardenix
