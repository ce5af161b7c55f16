#pragma once

#include <string>
#include <vector>

namespace vardenix {

// What the control panel has others do.
enum class PanelVerb {
    OpenBIN,
    OpenMap,
    Import,
    Export,
    SaveTheater,
    LoadL0Elv,
    EditL0Elv,
    Undo,
    Redo,
    CreateRestorePoint,
    Restore,
    MakeMEA,
    MakeTC,
    MakeTM,
    SearchTiles,
    RebuildTheater,
    SaveScreenshot,
    OpenTheater,
    OneWindow,
    BringAllToFront,
    BrushTool,
    RectangleTool,
    FillTool,
    PickTool,
    // The windows that the panel's boxes show and hide.
    ShowMain,
    ShowResults,
    ShowTheater,
    ShowTile,
    ShowFeatures
};

// app/ fills it in. A verb that cannot be done now has its control disabled; whoever
// changes that calls FrmVXMain::RefreshCommands.
class PanelCommands {
public:
    PanelCommands() = default;
    PanelCommands(const PanelCommands&) = delete;
    PanelCommands& operator=(const PanelCommands&) = delete;
    virtual ~PanelCommands() = default;

    virtual bool Can(PanelVerb) const { return false; }

    // Of a verb that is on or off, or one of several tools: whether it is the case.
    virtual bool Chosen(PanelVerb) const { return false; }

    // A verb without a word more: not one of those below.
    virtual void Do(PanelVerb) {}
    // `as`: under a name that the user is asked for.
    virtual void SaveTheater(bool /*as*/) {}
    // The finest elevations are edited, or level 2 again.
    virtual void EditL0Elv(bool /*on*/) {}
    virtual void ShowWindow(PanelVerb /*window*/, bool /*on*/) {}
    // The map as it was painted last, over a file that is there: a BMP for filter index
    // 1, a JPEG for 2.
    virtual void SaveScreenshot(const std::string& /*path*/, int /*filterIndex*/) {}

    // Folders of the theaters opened last, UTF-8, the newest first; and one of them to be
    // opened in place of this one.
    virtual std::vector<std::string> RecentTheaters() { return {}; }
    virtual void OpenRecent(const std::string& /*folder*/) {}

    // Dialogs; they have ended when the call returns.
    virtual void ShowHeightColors() = 0;
    virtual void ShowAreasPathsOptions() = 0;
    virtual void ShowAbout() = 0;
};

} // namespace vardenix
