// bin: the sets and tiles of the catalogue. Sets count from 0, as the lists show them.
#include "bineditor/RenumberQuestion.h"
#include "bineditor/TileIntake.h"
#include "bineditor/TileLists.h"
#include "bineditor/UnusedPictures.h"
#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "cli/BinEditing.h"
#include "cli/Printing.h"
#include "files/FileNames.h"
#include "texts/Cutting.h"
#include "texts/Windows1252.h"

#include <memory>
#include <optional>

namespace vardenix {

namespace {

// What the commands are told; each uses its part.
struct BinOptions {
    explicit BinOptions(Command& command) : Files(command) {}

    TheaterFiles Files;
    int32_t Set = 0; // as shown, from 0
    int32_t Tile = 0;
    std::optional<int32_t> Before;
    std::optional<int32_t> After;
    bool Last = false;
    uint8_t Type = TerrainWater;
    std::vector<std::string> Pictures;
    std::string Picture;
    bool KeepNumbers = false;
    bool AsJson = false;
    bool Delete = false;
    bool Overwrite = false;
};
using BinArguments = std::shared_ptr<BinOptions>;

constexpr NumberRange FromZero{0, FittingField<int32_t>.Max};

Choices<uint8_t> TerrainTypes() {
    Choices<uint8_t> choices;
    for (int index = 0; index < 8; ++index) {
        const auto code = static_cast<uint8_t>(TerrainFromIndex(index));
        choices.emplace_back(TerrainName(code), code);
    }
    return choices;
}

void AddKeepNumbers(Command& command, BinOptions& options) {
    command.Flag("--keep-numbers", options.KeepNumbers,
                 "Leave the tile numbers of level 2 as they are");
}

void RequireDds(const std::string& file) {
    if (!NameOfDds(file))
        throw UsageError("FILE", NotAnImage(AfterLastSlash(file)));
}

// One of --before and --after must be given, or --last where there is that.
void RequireOnePlace(const BinOptions& options, const char* all) {
    const int given =
        (options.Before ? 1 : 0) + (options.After ? 1 : 0) + (options.Last ? 1 : 0);
    if (given != 1)
        throw UsageError(std::string("give one of ") + all);
}

Argument AddBeforeAndAfter(Command& command, BinOptions& options) {
    command.Number("--before", options.Before, "In front of this set", FromZero);
    return command.Number("--after", options.After, "Behind this set", FromZero);
}

// Where a new set goes, from 1.
int32_t PlaceOf(BinEditing& editing, const BinOptions& options) {
    if (options.Before)
        return editing.Set("--before", *options.Before);
    if (options.After)
        return editing.Set("--after", *options.After) + 1;
    return editing.Bin().Bin.NumSets + 1;
}

// A command that opens the theater, edits it by `edit` and saves it.
template <typename Edit>
void RunEdit(Command& command, const BinArguments& options, Edit edit) {
    AddOverwrite(command, options->Overwrite);
    command.Run([options, edit](CommandContext& context) {
        BinEditing editing(context, options->Files, BinEditing::Write);
        edit(editing, *options);
        editing.Save(IfChangedOf(options->Overwrite));
        return ExitDone;
    });
}

Json TileJson(const Catalogue& catalogue, int32_t set, int32_t slot) {
    const TileRecord& tile = TileAt(catalogue.Bin, set, slot);
    const int32_t number = FirstNumberOf(set) + slot;
    const bool known = static_cast<size_t>(number) < catalogue.Lookup.size();
    return JsonObject{
        {"number", number},
        {"name", Utf8FromBytes(TrimBlanks(tile.TileName))},
        {"areas", tile.NumAreas},
        {"paths", tile.NumPaths},
        {"used", known ? catalogue.Lookup[static_cast<size_t>(number)].UseCount : 0}};
}

void PrintSetsAsJson(const Catalogue& catalogue) {
    JsonArray sets;
    for (int32_t set = 1; set <= catalogue.Bin.NumSets; ++set) {
        JsonArray tiles;
        for (int32_t slot = 0; slot < SetAt(catalogue.Bin, set).TileCount; ++slot)
            tiles.push_back(TileJson(catalogue, set, slot));
        sets.emplace_back(
            JsonObject{{"set", ShownSet(set)},
                       {"type", TerrainName(SetAt(catalogue.Bin, set).Terrain)},
                       {"tiles", tiles}});
    }
    PrintJson(JsonObject{{"sets", sets}});
}

void PrintSets(const Catalogue& catalogue) {
    Print(CountersLine(catalogue));
    for (int32_t set = 1; set <= catalogue.Bin.NumSets; ++set) {
        const auto columns = SetColumns(catalogue.Bin, ShownSet(set));
        Print("set " + columns[0] + ": " + columns[1] + ", tiles: " + columns[2]);
        for (int32_t slot = 0; slot < TilesPerSet; ++slot) {
            const int32_t number = FirstNumberOf(set) + slot;
            const TileRow row = TileRowOf(catalogue, number);
            if (row.Look != TileRowLook::Empty)
                Print("  " + row.Columns[0] + "  " + Utf8FromBytes(row.Columns[2]) +
                      "  areas: " + row.Columns[3] + "  paths: " + row.Columns[4] +
                      "  used: " + std::to_string(InfoAt(catalogue, number).UseCount));
        }
    }
}

void AddList(Command& bin) {
    Command command = bin.AddCommand("list", "List the sets and their tiles");
    const auto options = std::make_shared<BinOptions>(command);
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext& context) {
        BinEditing editing(context, options->Files, BinEditing::Look);
        if (options->AsJson)
            PrintSetsAsJson(editing.Bin());
        else
            PrintSets(editing.Bin());
        return ExitDone;
    });
}

void AddAppendSet(Command& bin) {
    Command command = bin.AddCommand(
        "append-set", "Make a set of up to 16 DDS pictures; night pictures come along");
    const auto options = std::make_shared<BinOptions>(command);
    command.Texts("FILE", options->Pictures, "DDS pictures, in the order of the tiles")
        .Required();
    command.Choice("--type", options->Type, TerrainTypes(), "Type of the set").Required();
    AddBeforeAndAfter(command, *options);
    command.Flag("--last", options->Last, "Behind all sets");
    AddKeepNumbers(command, *options);
    command.Check([options] {
        RequireOnePlace(*options, "--before, --after and --last");
        if (options->Pictures.size() > TilesPerSet)
            throw UsageError("FILE", "a new set has at most 16 tiles; " +
                                         std::to_string(options->Pictures.size()) +
                                         " pictures are given");
        for (const std::string& file : options->Pictures)
            RequireDds(file);
    });
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        const int32_t place = PlaceOf(editing, told);
        editing.RequireNoLoss(told.Pictures, {}, told.Overwrite);
        AppendSet(editing.Parts(), place, told.Type, told.Pictures, !told.KeepNumbers);
        Print("set " + std::to_string(ShownSet(place)) + " has the numbers " +
              std::to_string(FirstNumberOf(place)) + " to " +
              std::to_string(FirstNumberOf(place) + TilesPerSet - 1));
    });
}

void AddDeleteSet(Command& bin) {
    Command command = bin.AddCommand("delete-set", "Take a set out of the catalogue");
    const auto options = std::make_shared<BinOptions>(command);
    command.Number("N", options->Set, "Set, from 0", FromZero).Required();
    AddKeepNumbers(command, *options);
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        const int32_t set = editing.Set("N", told.Set);
        const bool matters = DeleteSetMatters(editing.Bin(), set);
        editing.Follow(DeleteSet(editing.Bin(), set), told.KeepNumbers || !matters);
    });
}

void AddMoveSet(Command& bin) {
    Command command = bin.AddCommand("move-set", "Move a set to another place");
    const auto options = std::make_shared<BinOptions>(command);
    command.Number("N", options->Set, "Set, from 0", FromZero).Required();
    AddBeforeAndAfter(command, *options);
    AddKeepNumbers(command, *options);
    command.Check([options] {
        RequireOnePlace(*options, "--before and --after");
        if (options->Set == (options->Before ? *options->Before : *options->After))
            throw UsageError("N", "a set cannot be moved before or behind itself");
    });
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        const int32_t source = editing.Set("N", told.Set);
        const int32_t target = told.Before ? editing.Set("--before", *told.Before)
                                           : editing.Set("--after", *told.After);
        editing.Follow(MoveSet(editing.Bin(), source, target, told.Before.has_value(),
                               editing.Bar()),
                       told.KeepNumbers);
    });
}

void AddSetType(Command& bin) {
    Command command = bin.AddCommand("set-type", "Change the type of a set");
    const auto options = std::make_shared<BinOptions>(command);
    command.Number("N", options->Set, "Set, from 0", FromZero).Required();
    command.Choice("NAME", options->Type, TerrainTypes(), "Type").Required();
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        ChangeSetType(editing.Bin(), editing.Set("N", told.Set), told.Type);
    });
}

void AddPicture(Command& command, const BinArguments& options) {
    command.Text("FILE", options->Picture, "DDS picture").Required();
    command.Check([options] { RequireDds(options->Picture); });
}

void AddAppendTile(Command& bin) {
    Command command =
        bin.AddCommand("append-tile", "Add a DDS picture as the next tile of a set");
    const auto options = std::make_shared<BinOptions>(command);
    command.Number("SET", options->Set, "Set, from 0", FromZero).Required();
    AddPicture(command, options);
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        const int32_t set = editing.Set("SET", told.Set);
        const int32_t slot = SetAt(editing.Bin().Bin, set).TileCount;
        if (slot >= TilesPerSet)
            throw UsageError("SET", "set " + std::to_string(told.Set) +
                                        " is full; see replace-tile");
        editing.RequireNoLoss({told.Picture}, {}, told.Overwrite);
        TakeInTile(editing.Parts(), {set, slot}, told.Picture);
        Print("tile " + std::to_string(FirstNumberOf(set) + slot));
    });
}

void AddReplaceTile(Command& bin) {
    Command command = bin.AddCommand(
        "replace-tile", "Give a tile another DDS picture; its areas and paths stay");
    const auto options = std::make_shared<BinOptions>(command);
    command.Number("TILE", options->Tile, "Tile number", FromZero).Required();
    AddPicture(command, options);
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        const TilePlace place = editing.Tile(told.Tile);
        editing.RequireNoLoss({told.Picture}, told.Tile, told.Overwrite);
        TakeInTile(editing.Parts(), place, told.Picture);
    });
}

void AddDeleteTile(Command& bin) {
    Command command = bin.AddCommand("delete-tile", "Take a tile out of its set");
    const auto options = std::make_shared<BinOptions>(command);
    command.Number("TILE", options->Tile, "Tile number", FromZero).Required();
    AddKeepNumbers(command, *options);
    RunEdit(command, options, [](BinEditing& editing, const BinOptions& told) {
        const TilePlace place = editing.Tile(told.Tile);
        if (!CanDeleteTile(editing.Bin().Bin, place))
            throw UsageError("TILE", "the only tile of a set cannot be deleted; see "
                                     "delete-set");
        const bool matters = DeleteTileMatters(editing.Bin(), place.Set, place.Slot);
        editing.Follow(DeleteTile(editing.Bin(), place.Set, place.Slot),
                       told.KeepNumbers || !matters);
    });
}

void AddUnusedPictures(Command& bin) {
    Command command = bin.AddCommand(
        "unused-pictures",
        "List the files of the picture folder that no tile uses, whatever their kind");
    const auto options = std::make_shared<BinOptions>(command);
    command.Flag("--delete", options->Delete, "Delete them; there is no undo");
    command.Run([options](CommandContext& context) {
        BinEditing editing(context, options->Files,
                           options->Delete ? BinEditing::Write : BinEditing::Look);
        const std::vector<std::string> names = UnusedPictures(editing.Bin());
        for (const std::string& name : names)
            Print(name);
        if (!options->Delete)
            return ExitDone;
        const size_t deleted =
            DeletePictures(editing.Bin().DDSFolder, names, context.Dialogs);
        return deleted == names.size() ? ExitDone : ExitRunTimeError;
    });
}

} // namespace

void AddBin(Command& all) {
    Command bin =
        all.AddCommand("bin", "List and edit the sets and tiles of Texture.bin");
    AddList(bin);
    AddAppendSet(bin);
    AddDeleteSet(bin);
    AddMoveSet(bin);
    AddSetType(bin);
    AddAppendTile(bin);
    AddReplaceTile(bin);
    AddDeleteTile(bin);
    AddBinAreas(bin);
    AddBinPaths(bin);
    AddUnusedPictures(bin);
}

} // namespace vardenix
