#include "bineditor/RenumberQuestion.h"

#include "catalogue/TileNumbers.h"

#include <algorithm>
#include <string>

namespace vardenix {

namespace {

constexpr const char* Begin = "This action is going to change the tile number order, ";
constexpr const char* OptionOff =
    "but the option to automaticaly correct the L2 file is not enabled. Do you want to "
    "enable it now? (Press Cancel to abort the operation).";
constexpr const char* Recommended =
    "\nIt is recommented to enable the automatic correction of L2 file, otherwise there "
    "might be errors when using the program (in case the selected tile is used in L2 it "
    "will be replaced by tile #0)";

std::string QuestionOf(NumberEdit edit) {
    switch (edit) {
    case NumberEdit::DeleteSet:
        return std::string(Begin) + "or the tiles affected are used by L2 " + OptionOff +
               Recommended;
    case NumberEdit::DeleteTile:
        return std::string(Begin) + "or the tile is used by L2 " + OptionOff +
               Recommended;
    case NumberEdit::AppendSet:
    case NumberEdit::MoveSet:
        break;
    }
    return std::string(Begin) + OptionOff;
}

} // namespace

bool AppendMatters(const TextureBin& bin, int32_t selectedSet, bool insertAfter) {
    return !(insertAfter && selectedSet == bin.NumSets) && bin.NumSets > 0;
}

bool DeleteSetMatters(const Catalogue& catalogue, int32_t set) {
    if (set != catalogue.Bin.NumSets)
        return true;
    const auto first = catalogue.Lookup.begin() + FirstNumberOf(set);
    return std::any_of(first, first + TilesPerSet,
                       [](const TileInfo& info) { return info.UseCount != 0; });
}

bool DeleteTileMatters(const Catalogue& catalogue, int32_t set, int32_t slot) {
    return slot + 1 != SetAt(catalogue.Bin, set).TileCount ||
           InfoAt(catalogue, FirstNumberOf(set) + slot).UseCount != 0;
}

bool MayRenumber(NumberEdit edit, bool matters, bool& autoL2, Dialogs& dialogs) {
    if (autoL2 || !matters)
        return true;
    const BoxAnswer answer = dialogs.MessageBox(
        QuestionOf(edit), "Attention", BoxIcon::Warning, BoxButtons::YesNoCancel);
    if (answer == BoxAnswer::Yes)
        autoL2 = true;
    return answer == BoxAnswer::Yes || answer == BoxAnswer::No;
}

} // namespace vardenix
