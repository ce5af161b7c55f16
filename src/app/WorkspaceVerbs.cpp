#include "app/WorkspaceVerbs.h"

#include "files/FileNames.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "workspace/RestorePoint.h"
#include "workspace/StatusLine.h"
#include "workspace/TilePalette.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <optional>

namespace vardenix {

namespace {

std::optional<MapTool> ToolOf(PanelVerb verb) {
    switch (verb) {
    case PanelVerb::BrushTool:
        return MapTool::Brush;
    case PanelVerb::RectangleTool:
        return MapTool::Rectangle;
    case PanelVerb::FillTool:
        return MapTool::Fill;
    case PanelVerb::PickTool:
        return MapTool::Pick;
    default:
        return {};
    }
}

} // namespace

Workspace::PanelVerbs::PanelVerbs(Workspace& workspace)
    : PanelDialogs(workspace.state_, workspace.view_, workspace.platform_, workspace),
      workspace_(workspace) {}

bool Workspace::PanelVerbs::Can(PanelVerb verb) const {
    switch (verb) {
    case PanelVerb::Undo:
        return workspace_.undo_.CanUndo(workspace_.view_.Edited());
    case PanelVerb::Redo:
        return workspace_.undo_.CanRedo(workspace_.view_.Edited());
    case PanelVerb::SaveTheater:
    case PanelVerb::LoadL0Elv:
    case PanelVerb::EditL0Elv:
    case PanelVerb::CreateRestorePoint:
    case PanelVerb::Restore:
    case PanelVerb::SaveScreenshot:
    case PanelVerb::OpenTheater:
    case PanelVerb::OneWindow:
    case PanelVerb::BringAllToFront:
    case PanelVerb::BrushTool:
    case PanelVerb::RectangleTool:
    case PanelVerb::FillTool:
    case PanelVerb::PickTool:
    case PanelVerb::ShowMain:
    case PanelVerb::ShowTheater:
    case PanelVerb::ShowTile:
        return true;
    default:
        return workspace_.offers_.Panel.contains(verb) ||
               workspace_.offers_.ShowWindow.contains(verb);
    }
}

bool Workspace::PanelVerbs::Chosen(PanelVerb verb) const {
    if (verb == PanelVerb::OneWindow)
        return workspace_.IsOneWindow();
    return ToolOf(verb) == workspace_.interaction_.Tool;
}

void Workspace::PanelVerbs::Do(PanelVerb verb) {
    switch (verb) {
    case PanelVerb::LoadL0Elv:
        return LoadL0Elv();
    case PanelVerb::Undo:
        return UndoInView(workspace_.undo_, workspace_.view_, workspace_);
    case PanelVerb::Redo:
        return RedoInView(workspace_.undo_, workspace_.view_, workspace_);
    case PanelVerb::CreateRestorePoint:
        return CreatePoint();
    case PanelVerb::Restore:
        return Restore();
    case PanelVerb::OpenTheater:
        return workspace_.StartAnew({});
    case PanelVerb::OneWindow:
        return workspace_.SetOneWindow(!workspace_.IsOneWindow());
    case PanelVerb::BringAllToFront:
        return workspace_.BringAllToFront();
    default:
        if (const auto tool = ToolOf(verb))
            return workspace_.windows_.Map->ChooseTool(*tool);
        if (const auto offer = workspace_.offers_.Panel.find(verb);
            offer != workspace_.offers_.Panel.end())
            offer->second();
    }
}

SavingParts Workspace::PanelVerbs::Saving() {
    return {workspace_.state_.Terrain,  workspace_.view_, workspace_.platform_.Dialogs,
            *workspace_.windows_.Panel, workspace_.log_,  *workspace_.windows_.Panel};
}

void Workspace::PanelVerbs::SaveTheater(bool as) {
    if (!CmdSaveTheater(Saving(), as))
        return;
    workspace_.undo_.Saved(workspace_.view_.Edited());
    workspace_.Tell(SavedWords(workspace_.platform_.Clock.Now()));
    workspace_.restoredUnsaved_ &= workspace_.view_.L0Mode;
    if (workspace_.offers_.TheaterSaved)
        workspace_.offers_.TheaterSaved();
}

// A map of the finest elevations shows the new ones at once.
void Workspace::PanelVerbs::LoadL0Elv() {
    if (!cmdLoadL0Elv(Saving()))
        return;
    workspace_.undo_.ForgetElevations();
    if (workspace_.view_.L0Mode)
        workspace_.undo_.ShowButtons(Layer::Heights);
}

void Workspace::PanelVerbs::EditL0Elv(bool on) {
    workspace_.view_.L0Mode = on;
    workspace_.windows_.Panel->ChangeControlsForL0Edit(on);
    workspace_.undo_.ShowButtons(workspace_.view_.Edited());
}

void Workspace::PanelVerbs::CreatePoint() {
    workspace_.windows_.Panel->LetEventsThrough();
    vardenix::CreateRestorePoint(workspace_.state_.Terrain,
                                 workspace_.platform_.Clock.Now(),
                                 workspace_.state_.Folders.SystemTempPath);
    workspace_.renumberedSincePoint_ = false;
    ShowOriginOfPoint();
    workspace_.Tell("restore point created");
}

void Workspace::PanelVerbs::Restore() {
    workspace_.windows_.Panel->LetEventsThrough();
    Terrain& terrain = workspace_.state_.Terrain;
    Dialogs& dialogs = workspace_.platform_.Dialogs;
    const std::string& folder = workspace_.state_.Folders.SystemTempPath;
    // Another copy of the program may have made a point meanwhile.
    ShowOriginOfPoint();
    if (!MayRestoreOtherTheater(OriginOfPoint(folder), terrain.LFilename, dialogs) ||
        (workspace_.renumberedSincePoint_ && !MayRestoreOldNumbers(dialogs)))
        return;
    const Restored result = RestoreFromPoint(terrain, folder);
    if (const std::string message = RestoreMessage(result); !message.empty())
        return dialogs.Notice(message, {}, BoxIcon::Information);
    if (result == Restored::Done) {
        workspace_.restoredUnsaved_ = true;
        workspace_.undo_.ChangedOtherwise();
        workspace_.Tell("the terrain now differs from the file");
    }
    workspace_.RefreshPicArray();
}

void Workspace::PanelVerbs::ShowOriginOfPoint() {
    workspace_.windows_.Panel->SetRestoreTip(
        RestoreTip(OriginOfPoint(workspace_.state_.Folders.SystemTempPath)));
}

void Workspace::PanelVerbs::ShowWindow(PanelVerb window, bool on) {
    Configuration& settings = workspace_.state_.Configuration;
    if (window == PanelVerb::ShowMain)
        settings.MainWinVis = on;
    else if (window == PanelVerb::ShowTheater)
        settings.ThPrevWinVis = on;
    else if (window == PanelVerb::ShowTile)
        settings.PalWinVis = on;
    else if (const auto offer = workspace_.offers_.ShowWindow.find(window);
             offer != workspace_.offers_.ShowWindow.end())
        return offer->second(on);
    if (on)
        workspace_.places_.ShowTicked();
    else
        workspace_.places_.ShowByBoxes();
}

void Workspace::PanelVerbs::SaveScreenshot(const std::string& path, int filterIndex) {
    const ImageSession session;
    ImageSaveOptions options;
    options.Format = filterIndex == 2 ? PictureFormat::Jpeg : PictureFormat::Bmp;
    options.ColorDepth = 24;
    ImageSaveEx(PictureToBitmap(workspace_.windows_.Map->Picture2().Pixels()), path,
                options);
}

std::vector<std::string> Workspace::PanelVerbs::RecentTheaters() {
    return workspace_.desk_.Read().Recent;
}

// One that has gone is told of before anything is left for it.
void Workspace::PanelVerbs::OpenRecent(const std::string& folder) {
    const std::string l2File = folder + "/terrain/theater.L2";
    if (FileExists(l2File))
        return workspace_.StartAnew(folder);
    workspace_.platform_.Dialogs.Notice("L2 File not found\n" + ShownPath(l2File),
                                        "Error...", BoxIcon::Critical);
}

Workspace::MapVerbs::MapVerbs(Workspace& workspace)
    : MapDialogs(workspace.platform_.Dialogs, workspace,
                 workspace.state_.Catalogue.Lookup),
      workspace_(workspace) {}

bool Workspace::MapVerbs::CanLocateInBIN() const {
    return workspace_.offers_.LocateInBIN != nullptr;
}

bool Workspace::MapVerbs::CanLocateColorInMAP() const {
    return workspace_.offers_.LocateColorInMAP != nullptr;
}

void Workspace::MapVerbs::LocateInBIN(int32_t tileNumber) {
    if (workspace_.offers_.LocateInBIN)
        workspace_.offers_.LocateInBIN(tileNumber);
}

void Workspace::MapVerbs::LocateColorInMAP(uint8_t palette) {
    if (workspace_.offers_.LocateColorInMAP)
        workspace_.offers_.LocateColorInMAP(palette);
}

void Workspace::MapVerbs::ExportTiles() {
    if (workspace_.offers_.ExportTiles)
        workspace_.offers_.ExportTiles();
}

void Workspace::MapVerbs::SubExportTDFs() {
    if (workspace_.offers_.SubExportTDFs)
        workspace_.offers_.SubExportTDFs();
}

void Workspace::MapVerbs::ImportTiles() {
    if (workspace_.offers_.ImportTiles)
        workspace_.offers_.ImportTiles();
}

void Workspace::MapVerbs::PickTile(int32_t tileNumber) {
    const TileLookup& lookup = workspace_.state_.Catalogue.Lookup;
    if (!HasTile(lookup, tileNumber))
        return workspace_.Tell("the catalogue has no tile " + std::to_string(tileNumber));
    workspace_.windows_.Palette->ShowTile(tileNumber);
}

void Workspace::MapVerbs::SetZoom(int16_t zoomPosts) {
    workspace_.windows_.Panel->SetZoom(zoomPosts);
}

void Workspace::MapVerbs::LoadFeatures(const std::vector<std::string>& paths) {
    if (workspace_.offers_.LoadFeatures)
        workspace_.offers_.LoadFeatures(paths);
}

bool Workspace::MapVerbs::ExportWithShift() const {
    return workspace_.windows_.Panel->ExportWithShift();
}

void Workspace::MapVerbs::HideFrame7() {
    workspace_.windows_.Panel->ShowHint(FrmVXMain::Hint::None);
}

} // namespace vardenix
