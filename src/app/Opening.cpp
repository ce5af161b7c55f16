#include "app/Opening.h"

#include "files/FileNames.h"
#include "mapeditor/MapFile.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "program/StartUp.h"
#include "workspace/FirstView.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <string>
#include <vector>

namespace vardenix {

namespace {

// The name in the list of theaters; of one opened by hand, the folder that the folder of
// its theater.map lies in.
std::string TheaterTitle(const ProgramState& state) {
    const std::vector<std::string> choices = TheaterChoices(state.Discovery);
    const auto index = static_cast<size_t>(state.Configuration.OptionTheaterListIndex);
    if (index > 0 && index < choices.size())
        return choices[index];
    std::string folder = state.MAPFile;
    for (int levels = 0; levels < 2; ++levels) {
        folder = UpToLastSlash(folder);
        if (!folder.empty())
            folder.pop_back();
    }
    return AfterLastSlash(folder);
}

} // namespace

void Opening::PreviewChanged() {
    workspace_.MakePreview();
    workspace_.Windows().Preview->PreviewChanged();
}

void Opening::LoadMapEditor() {
    ProgramState& state = workspace_.State();
    state.MAPFileRead = OpenMapFile(state.MAPFile, state.MapFileRecord);
    workspace_.MapFileOpened();
}

void Opening::LoadMap() { workspace_.MakeMap(wishes_); }

// It is seen when the layout is applied, at its place.
void Opening::ShowMainPanel() {
    workspace_.Panel().Form_Load(TheaterTitle(workspace_.State()));
    points_.ShowOrigin();
}

void Opening::RestoreChildWindows() { workspace_.RestoreChildWindows(); }

void Opening::RefreshPalette() { workspace_.MakePalette(); }

void Opening::InitForm() {
    ProgramState& state = workspace_.State();
    BeginWhereLandIs(state.Configuration, state.Terrain, state.Catalogue.Lookup,
                     workspace_.View().ViewColumns());
    workspace_.Map().InitForm();
}

} // namespace vardenix
