// The menus "Tools" and "Help".

#include "app/Commands.h"
#include "app/Subsystems.h"
#include "files/FileNames.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "platform/OpenPage.h"
#include "search/DerivedFiles.h"
#include "texts/RuntimeError.h"
#include "workspace/windows/FrmAbout.h"
#include "workspace/windows/FrmVXMap.h"

#include <QApplication>

#include <array>
#include <optional>

namespace vardenix {

namespace {

template <DerivedFile Kind>
void Make(Subsystems& all) {
    all.Search.Make(Kind);
}

// The map as it was painted last, over a file that is there.
void SaveScreenshot(Workspace& workspace) {
    FileAnswer answer;
    try {
        answer = workspace.Platform().Dialogs.SaveFile(
            {.Title = {}, .Filter = "Bitmap (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"});
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return;
        throw;
    }
    const ImageSession session;
    ImageSaveOptions options;
    options.Format = answer.FilterIndex == 2 ? PictureFormat::Jpeg : PictureFormat::Bmp;
    options.ColorDepth = 24;
    ImageSaveEx(PictureToBitmap(workspace.Map().Picture2().Pixels()), answer.Path,
                options);
}

void OpenHelp(Workspace& workspace) {
    OpenPage(workspace.Platform().Processes, workspace.Platform().Dialogs,
             workspace.State().Configuration.OnlineHelp);
}

// Where an installed program has it; empty for one that was only built.
std::string ManualPage(const Subsystems& all) {
    const std::string page =
        all.Workspace.State().Folders.ShippedPath + "manual\\manual.html";
    return FileExists(page) ? RealPath(page, PathKind::File).string() : std::string();
}

void ShowAbout(Workspace& workspace) {
    FrmAbout dialog(workspace.Platform(), QApplication::activeWindow());
    dialog.exec();
}

constexpr auto Tools = std::to_array<Command>({
    {.Id = "mnumkMEA",
     .Text = "Make MEA F&ile",
     .Tip = "Highest elevation of every 8 by 8 posts",
     .Menu = "mnuTools",
     .Do = Make<DerivedFile::MEA>},
    {.Id = "mnumkTHR",
     .Text = "Ma&ke THR File",
     .Tip = "Does nothing: there is no such file to make",
     .Menu = "mnuTools"},
    {.Id = "mnumktc",
     .Text = "Make t&c File",
     .Tip = "How often each tile is used",
     .Menu = "mnuTools",
     .Do = Make<DerivedFile::TC>},
    {.Id = "mnumktm",
     .Text = "Make t&m File",
     .Tip = "The tile number of every post",
     .Menu = "mnuTools",
     .Do = Make<DerivedFile::TM>},
    {.Id = "mnusearchTiles",
     .Text = "&Search Tiles...",
     .Keys = "Ctrl+F",
     .Menu = "mnuTools",
     .Line = true,
     .Do = [](Subsystems& all) { all.Search.ShowOptions(); }},
    {.Id = "mnuReplaceTiles",
     .Text = "R&eplace Tiles...",
     .Keys = "Ctrl+R",
     .Tip = "Gives all posts of a tile another one",
     .Menu = "mnuTools",
     .Do = [](Subsystems& all) { all.Search.ShowReplace(std::nullopt); }},
    {.Id = "mnuRebuildTheater",
     .Text = "Re&build Entire Theater...",
     .Menu = "mnuTools",
     .Do = [](Subsystems& all) { all.Builder.Open(); }},
    {.Id = "mnuThStats",
     .Text = "Theater Sta&tistics...",
     .Tip = "What the terrain is made of",
     .Menu = "mnuTools",
     .Do = [](Subsystems& all) { all.Search.ShowStatistics(); }},
    {.Id = "mnuSaveScreeshot",
     .Text = "Sa&ve Map Screenshot...",
     .Keys = "Ctrl+P",
     .Menu = "mnuTools",
     .Line = true,
     .Do = [](Subsystems& all) { SaveScreenshot(all.Workspace); }},
});

constexpr auto Help = std::to_array<Command>({
    {.Id = "mnuOnlineHelp",
     .Text = "O&nline Help",
     .Keys = "F1",
     .Menu = "mnuHelp",
     .Do = [](Subsystems& all) { OpenHelp(all.Workspace); },
     .WhileLocked = true},
    {.Id = "mnuManual",
     .Text = "&Manual",
     .Tip = "The manual that is installed with the program",
     .Menu = "mnuHelp",
     .Can = [](const Subsystems& all) { return !ManualPage(all).empty(); },
     .Do =
         [](Subsystems& all) {
             OpenPage(all.Workspace.Platform().Processes,
                      all.Workspace.Platform().Dialogs, ManualPage(all));
         },
     .WhileLocked = true},
    {.Id = "mnuAbout",
     .Text = "&About...",
     .Menu = "mnuHelp",
     .Do = [](Subsystems& all) { ShowAbout(all.Workspace); }},
});

} // namespace

std::span<const Command> ToolCommands() { return Tools; }

std::span<const Command> HelpCommands() { return Help; }

} // namespace vardenix
