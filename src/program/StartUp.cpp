#include "program/StartUp.h"

#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "files/RunFolders.h"
#include "platform/Processes.h"
#include "program/ConfigurationFile.h"
#include "program/ProgramVersion.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

namespace vardenix {

namespace {

constexpr const char* UpdateQuestion =
    "This program has an autoupdate feature. Since the usage or not of this feature is "
    "not "
    "defined in the ini file, you have the option to enable or disable it. Do you want "
    "to "
    "enable the autoupdate feature? (You can enable/disable it later from the startup "
    "window)";

std::string TempOfAllRuns(const ProgramFolders& folders) {
    return folders.AppPath + "Temp\\";
}

// Ending must not fail for a file that cannot be deleted or written: the user is told,
// and the program ends all the same.
void TellFailure(Dialogs& dialogs, const std::function<void()>& work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        dialogs.Notice(ReportText(error), "Vardenix", BoxIcon::Critical);
    }
}

} // namespace

std::string AppPathOf(const std::string& folder) { return WithTrailingSlash(folder); }

void BeginProgram(ProgramState& state, const std::string& ownFolder,
                  const std::string& programFolder) {
    state.Starting = true;
    state.AbortPaint = false;
    state.Exiting = false;
    state.Folders.ShippedPath = AppPathOf(programFolder);
    if (ownFolder.empty()) {
        state.Configuration = {};
        return;
    }
    state.Folders.AppPath = AppPathOf(ownFolder);
    state.Configuration = ReadConfiguration(state.Folders.AppPath);
}

void DecideUpdateCheck(Configuration& configuration, Dialogs& dialogs) {
    if (configuration.AutoCheckForUpdates <= AutoCheckOn)
        return;
    // Nobody agrees to what is not shown.
    const BoxAnswer answer = dialogs.MessageBox(
        UpdateQuestion + ("\n\nThe address that is asked: " + configuration.VersionCheck),
        "Confirm", BoxIcon::Question, BoxButtons::YesNo);
    configuration.AutoCheckForUpdates =
        answer == BoxAnswer::Yes ? AutoCheckOn : AutoCheckOff;
}

std::string StartUpCaption() {
    return "Vardenix v" + ProgramVersion() + " - for those who shape theaters";
}

void FindSystemTempPath(ProgramFolders& folders) {
    folders.SystemTempPath = WithTrailingSlash(OwnTemporaryFolder());
}

void PrepareFolders(ProgramState& state) {
    ProgramFolders& folders = state.Folders;
    const std::string temp = TempOfAllRuns(folders);
    const std::string updateTemp = folders.AppPath + "UpdateTemp\\";
    ClearRunFolders(updateTemp, temp);
    ClearRunFolders(temp, temp);
    state.Run.emplace(temp);
    folders.TempFolder = temp + state.Run->Text() + "\\";
    folders.UpdateTempFolder = updateTemp + state.Run->Text() + "\\";
    MakeScratchFolder(folders.TempFolder);
}

std::vector<std::string> TheaterChoices(const Discovery& discovery) {
    std::vector<std::string> choices{"MANUALLY OPEN PATH"};
    if (discovery.FalconState == FalconListed)
        for (size_t i = 1; i < discovery.TheaterList.size(); ++i)
            choices.push_back(Utf8FromBytes(discovery.TheaterList[i].Name));
    return choices;
}

int StoredTheaterIndex(Configuration& configuration, size_t entries) {
    const int16_t index = configuration.OptionTheaterListIndex;
    if (index < 0 || static_cast<size_t>(index) >= entries)
        configuration.OptionTheaterListIndex = 0;
    return configuration.OptionTheaterListIndex;
}

TheaterPaths ChooseTheater(int index, const Discovery& discovery,
                           Configuration& configuration) {
    configuration.OptionTheaterListIndex = static_cast<int16_t>(index);
    if (index <= 0)
        return {configuration.L2File, configuration.BinFile, configuration.MapFile,
                configuration.DdsPath};
    const TheaterInfo& theater = discovery.TheaterList.at(static_cast<size_t>(index));
    return PathsOfTheater(discovery.FalconBaseDir, Utf8FromBytes(theater.TerrainDir));
}

void ExitProgram(ProgramState& state, const std::string& commandLine,
                 const Platform& platform, DebugLog& log, ProgramEnd& end) {
    log.StopDebugLog();
    state.Exiting = true;
    TellFailure(platform.Dialogs, [&] {
        state.Run.reset();
        if (!state.Folders.TempFolder.empty()) // it was prepared
            ClearRunFolders(TempOfAllRuns(state.Folders), TempOfAllRuns(state.Folders));
    });
    TellFailure(platform.Dialogs, [&] {
        // The restore point lies in SystemTempPath and outlives the run; this finds one
        // only where somebody put it.
        const std::string restorePoint = state.Folders.AppPath + "VXUndo.tmp";
        if (FileExists(restorePoint))
            DeleteFile(restorePoint);
    });
    TellFailure(platform.Dialogs,
                [&] { WriteConfiguration(state.Folders.AppPath, state.Configuration); });
    end.UnloadWindows();
    if (!commandLine.empty())
        TellFailure(platform.Dialogs, [&] { platform.Processes.Start(commandLine); });
    platform.Processes.Sleep(1000);
    end.EndProcess();
}

} // namespace vardenix
