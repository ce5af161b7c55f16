#pragma once

#include "bineditor/BinCommands.h"
#include "cli/Commands.h"
#include "cli/ScratchFolder.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vardenix {

// The theater that a command of the family "bin" edits: opened, with the uses of its
// tiles counted, and written back.
class BinEditing : private BinWindow {
public:
    enum Purpose { Look, Write };
    BinEditing(CommandContext& context, const TheaterFiles& files, Purpose purpose);

    // What an intake of pictures works on, with a scratch folder of its own. The pictures
    // take their places with the catalogue, by Save.
    BinParts Parts();
    Progress& Bar() { return context_.Progress; }
    Catalogue& Bin() { return context_.State.Catalogue; }

    // A set as the lists show it, from 0, to one of the catalogue, from 1; a usage error
    // for one that is not there.
    int32_t Set(const std::string& name, int32_t shown);
    // The place of a tile's number; a usage error where no tile has it.
    TilePlace Tile(int32_t number);

    // The edit's numbers are passed on to level 2, unless they are to be kept.
    void Follow(const TileRenumbering& numbers, bool keepNumbers);
    // A usage error for pictures that cost others theirs (IntakeRisks.h), unless what is
    // there is to be overwritten.
    void RequireNoLoss(const std::vector<std::string>& files,
                       std::optional<int32_t> replaced, bool overwrite);
    // Pictures, catalogue and, when its numbers changed, level 2, as one.
    void Save(IfChanged ifChanged);

private:
    void PrepareForm(bool) override {}
    void NeedSave() override {}
    void LevelTwoRenumbered(const TileRenumbering&, bool changed) override;
    bool StopWanted() override { return false; }

    CommandContext& context_;
    std::optional<ScratchFolder> scratch_;
    Transaction together_;
    ProgramFolders folders_;
    bool levelTwoChanged_ = false;
};

// The two families of commands on one tile's areas and paths.
void AddBinAreas(Command& bin);
void AddBinPaths(Command& bin);

} // namespace vardenix
