#include "cli/BinEditing.h"

#include "bineditor/IntakeRisks.h"
#include "bineditor/LevelTwoPass.h"
#include "catalogue/TextureBinFile.h"
#include "catalogue/TileCheck.h"
#include "catalogue/TileNumbers.h"
#include "cli/Printing.h"
#include "program/PaperSaving.h"

namespace vardenix {

BinEditing::BinEditing(CommandContext& context, const TheaterFiles& files,
                       Purpose purpose)
    : context_(context) {
    if (purpose == Write)
        context.OpenToWrite(files, files.PictureFolder());
    else
        context.Open(files);
    folders_ = context.State.Folders;
    CountTileUse(context.State.Terrain, Bin().Lookup);
}

BinParts BinEditing::Parts() {
    folders_.TempFolder = (scratch_ ? *scratch_ : scratch_.emplace()).Path();
    return {context_.State.Terrain,
            context_.State.Catalogue,
            context_.State.Configuration,
            folders_,
            context_.Dialogs,
            context_.Progress,
            *this,
            &together_};
}

int32_t BinEditing::Set(const std::string& name, int32_t shown) {
    const int32_t sets = Bin().Bin.NumSets;
    if (sets == 0)
        throw UsageError(name, "the catalogue has no sets");
    if (shown < 0 || shown >= sets)
        throw UsageError(name, "there is no set " + std::to_string(shown) +
                                   "; the catalogue has sets 0 to " +
                                   std::to_string(sets - 1));
    return shown + 1;
}

TilePlace BinEditing::Tile(int32_t number) {
    const TilePlace place = PlaceOfNumber(number);
    if (number < 0 || !HasTile(Bin().Bin, place.Set, place.Slot))
        throw UsageError("TILE", "no tile has the number " + std::to_string(number));
    return place;
}

void BinEditing::Follow(const TileRenumbering& numbers, bool keepNumbers) {
    if (!keepNumbers)
        LevelTwoRenumbered(numbers, RenumberLevelTwo(context_.State.Terrain, numbers, {},
                                                     context_.Progress));
}

void BinEditing::RequireNoLoss(const std::vector<std::string>& files,
                               std::optional<int32_t> replaced, bool overwrite) {
    const IntakeRisks risks = RisksOfIntake(Bin(), files, replaced);
    if (!overwrite && !risks.None())
        throw UsageError("FILE", TextOfRisks(risks, Bin()) +
                                     " With --overwrite it is done all the same.");
}

void BinEditing::LevelTwoRenumbered(const TileRenumbering& /*numbers*/, bool changed) {
    levelTwoChanged_ = levelTwoChanged_ || changed;
}

void BinEditing::Save(IfChanged ifChanged) {
    ProgramState& state = context_.State;
    if (levelTwoChanged_)
        RequireNoGap(context_);
    std::vector<Paper> papers{Paper::Catalogue};
    if (levelTwoChanged_)
        papers.push_back(Paper::Level2);
    SavePapersWith(together_, state, papers, context_.Progress, context_.Log, ifChanged);
    context_.Progress.HideBar();
    Print("saved " + NameOnDisk(state.Catalogue.BinPath));
    if (levelTwoChanged_)
        Print("saved " + NameOnDisk(state.Terrain.LFilename));
}

} // namespace vardenix
