#include "app/SaveAll.h"

#include "app/Workspace.h"
#include "mapview/MapView.h"
#include "platform/SavedOrKept.h"
#include "program/MissingSegments.h"
#include "program/PaperSaving.h"
#include "texts/RuntimeError.h"
#include "workspace/StatusLine.h"
#include "workspace/windows/FrmVXMain.h"

#include <algorithm>
#include <array>

namespace vardenix {

namespace {

constexpr std::array SavedTogether{Paper::Level2, Paper::Catalogue, Paper::MapFile};
constexpr const char* SaveApart =
    "Level 2 and Texture.bin have different tile numbers; the BIN editor tells more. "
    "Save them all the same?";

// Nothing can be used meanwhile.
class PanelLocked {
public:
    explicit PanelLocked(Workspace& workspace)
        : panel_(workspace.Panel()), busy_(workspace.View()) {
        panel_.LockPanel(true);
    }
    PanelLocked(const PanelLocked&) = delete;
    PanelLocked& operator=(const PanelLocked&) = delete;
    ~PanelLocked() { panel_.LockPanel(false); }

private:
    FrmVXMain& panel_;
    ScrollBusyWhile busy_;
};

std::vector<Paper> DifferingTogether(const ProgramState& state) {
    std::vector<Paper> papers;
    std::ranges::copy_if(SavedTogether, std::back_inserter(papers),
                         [&state](Paper paper) { return MayDiffer(state, paper); });
    return papers;
}

bool MaySaveNumbers(const ProgramState& state, const std::vector<Paper>& papers,
                    Dialogs& dialogs) {
    return state.Numbers.Fits() || papers == std::vector{Paper::MapFile} ||
           dialogs.MessageBox(SaveApart, "Confirm", BoxIcon::Warning,
                              BoxButtons::YesNo) == BoxAnswer::Yes;
}

bool SaveTogether(Workspace& workspace) {
    ProgramState& state = workspace.State();
    Dialogs& dialogs = workspace.Platform().Dialogs;
    const std::vector<Paper> papers = DifferingTogether(state);
    if (papers.empty())
        return true;
    const bool levelTwo = papers.front() == Paper::Level2;
    if ((levelTwo && !MaySaveOverGap(state.Terrain, dialogs)) ||
        !MaySaveNumbers(state, papers, dialogs) ||
        !SavedOrKept(dialogs, [&](IfChanged ifChanged) {
            const PanelLocked locked(workspace);
            SavePapers(state, papers, workspace.Panel(), workspace.Log(), ifChanged);
        }))
        return false;
    for (const Paper paper : papers)
        state.Changes.Saved(paper);
    return true;
}

bool SaveLoadedHeights(Workspace& workspace) {
    ProgramState& state = workspace.State();
    if (!MayDiffer(state, Paper::Heights))
        return true;
    MapView view = workspace.View();
    view.L0Mode = true;
    const SavingParts parts = workspace.Saving();
    if (!CmdSaveTheater(
            {parts.Terrain, view, parts.Dialogs, parts.PB3, parts.Log, parts.Panel},
            false))
        return false;
    state.Changes.Saved(Paper::Heights);
    return true;
}

} // namespace

bool AnyDiffers(const Workspace& workspace) {
    return std::ranges::any_of(AllPapers, [&workspace](Paper paper) {
        return MayDiffer(workspace.State(), paper);
    });
}

bool SaveAll(Workspace& workspace) {
    try {
        workspace.TakeTyped();
        if (!SaveTogether(workspace))
            return false;
    } catch (const RuntimeError& error) {
        workspace.Platform().Dialogs.Notice(TrapText(error), "Error...",
                                            BoxIcon::Critical);
        return false;
    }
    workspace.AllSaved();
    if (!SaveLoadedHeights(workspace))
        return false;
    workspace.Tell(SavedWords("all", workspace.Platform().Clock.Now()));
    return true;
}

} // namespace vardenix
