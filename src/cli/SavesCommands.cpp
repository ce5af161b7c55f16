// saves: what the files of a theater were before the editor saved them.
#include "catalogue/TextureBinFile.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "mapeditor/MapFile.h"
#include "recovery/EarlierSaves.h"
#include "recovery/Restoring.h"

#include <memory>
#include <string>
#include <utility>

namespace vardenix {

namespace {

// The heights of a theater are loaded in the editor alone.
constexpr std::array PapersHere{Paper::Level2, Paper::Catalogue, Paper::MapFile};

struct SavesOptions {
    explicit SavesOptions(Command& command) : Files(command) {}

    TheaterFiles Files;
    Paper Which = Paper::Level2;
    size_t Number = 1;
    bool AsJson = false;
    bool Overwrite = false;
};

std::string WordOf(Paper paper) {
    return paper == Paper::Level2 ? "l2" : paper == Paper::Catalogue ? "bin" : "map";
}

void AddSavesList(Command& family) {
    Command command = family.AddCommand("list", "List the earlier saves of a theater");
    const auto options = std::make_shared<SavesOptions>(command);
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        Listing list(options->AsJson);
        for (const Paper paper : PapersHere) {
            size_t number = 0;
            for (const EarlierSave& save :
                 EarlierSavesOf(context.State, paper, SavesFolder())) {
                const std::string time = FullTime(save.Time);
                ++number;
                list.Add({{"paper", WordOf(paper)},
                          {"number", number},
                          {"time", time},
                          {"bytes", save.Bytes}},
                         WordOf(paper) + " " + std::to_string(number) + ": " +
                             NameOfPaper(paper) + " as saved at " + time);
            }
        }
        list.End();
        return ExitDone;
    });
}

void SavePaper(CommandContext& context, Paper paper, bool overwrite) {
    ProgramState& state = context.State;
    if (paper == Paper::Level2)
        SaveLevel2(context, overwrite);
    else if (paper == Paper::Catalogue)
        SaveBinFile(state.Catalogue, context.Log, IfChangedOf(overwrite));
    else
        state.MAPFileRead = SaveMapFile(state.MAPFile, state.MapFileRecord,
                                        state.MAPFileRead, IfChangedOf(overwrite));
    state.Changes.Saved(paper);
}

void AddSavesRestore(Command& family) {
    Command command = family.AddCommand(
        "restore", "Write an earlier save over a file of a theater; what it replaces is "
                   "an earlier save from then on");
    const auto options = std::make_shared<SavesOptions>(command);
    Choices<Paper> papers;
    for (const Paper paper : PapersHere)
        papers.emplace_back(WordOf(paper), paper);
    command.Choice("FILE", options->Which, papers, "Which of its files").Required();
    command
        .Number("NUMBER", options->Number, "Its number in the list",
                {1, static_cast<int64_t>(MostSaves)})
        .Required();
    AddOverwrite(command, options->Overwrite);
    command.Run([options](CommandContext& context) {
        context.OpenToWrite(options->Files);
        const SaveKeeper keeper(context.State, SavesFolder());
        BringBack(context.State, options->Which, options->Number - 1, SavesFolder());
        SavePaper(context, options->Which, options->Overwrite);
        Print(NameOnDisk(FileOfPaper(context.State, options->Which).Path) +
              " is what it was");
        return ExitDone;
    });
}

} // namespace

void AddSaves(Command& all) {
    Command family =
        all.AddCommand("saves", "What the editor's saves of a theater have replaced");
    AddSavesList(family);
    AddSavesRestore(family);
}

} // namespace vardenix
