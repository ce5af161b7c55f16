// bin areas and bin paths: what lies on one tile, in feet.
#include "bineditor/TileDetail.h"
#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "cli/BinEditing.h"
#include "cli/Printing.h"
#include "texts/Cutting.h"

#include <memory>

namespace vardenix {

namespace {

struct DetailOptions {
    explicit DetailOptions(Command& command) : Files(command) {}

    TheaterFiles Files;
    int32_t Tile = 0;
    std::string Add;
    int32_t Delete = 0; // row, from 1; 0 is none
    bool Overwrite = false;

    bool Edits() const { return !Add.empty() || Delete > 0; }
};

// "TYPE,NUMBER,...": the type by its name, then as many numbers as `fields`; of the last
// `optional` ones those at the end may be left out.
int ReadNew(const std::string& text, const std::vector<float*>& fields, size_t optional,
            int entries, std::string (*nameAt)(int)) {
    std::vector<std::string> parts;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find(',', begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    if (parts.size() > fields.size() + 1 || parts.size() + optional < fields.size() + 1)
        throw UsageError("--add", "a type and " + std::to_string(fields.size()) +
                                      " numbers are wanted, parted by commas");
    for (size_t i = 1; i < parts.size(); ++i)
        if (WriteFields({fields[i - 1]}, {parts[i]}))
            throw UsageError("--add", "\"" + parts[i] + "\" is no number");
    for (int index = 0; index < entries; ++index)
        if (UpperCase(nameAt(index)) == UpperCase(parts.front()))
            return index;
    throw UsageError("--add", "there is no type \"" + parts.front() + "\"");
}

TileArea NewArea(const std::string& text) {
    TileArea area;
    const int type = ReadNew(text, AreaFields(area), 0, 2, [](int index) {
        return AreaTypeName(AreaTypeFromIndex(index));
    });
    area.Type = AreaTypeFromIndex(type);
    return area;
}

TilePath NewPath(const std::string& text) {
    TilePath path = PathOf({}, {1, 1}, 0);
    const int type = ReadNew(text, PathFields(path), 1, 4, [](int index) {
        return PathTypeName(PathTypeFromIndex(index));
    });
    path.Type = PathTypeFromIndex(type);
    return path;
}

void PrintRow(int32_t row, const std::vector<std::string>& columns) {
    std::string line = std::to_string(row) + "  " + columns.front();
    for (size_t i = 1; i < columns.size(); ++i)
        line += "  " + columns[i];
    Print(line);
}

// The command of one kind of record: `rows` prints them, `add` and `erase` change the
// tile.
struct DetailKind {
    const char* Name;
    const char* Help;
    const char* AddHelp;
    int32_t (*Count)(const TileRecord&);
    std::vector<std::string> (*Columns)(const WorkingTile&, int32_t row);
    void (*CheckNew)(const std::string&);
    void (*Add)(WorkingTile&, const std::string&);
    void (*Delete)(WorkingTile&, int32_t row);
};

void EditTile(BinEditing& editing, const DetailOptions& told, const DetailKind& kind) {
    const TilePlace place = editing.Tile(told.Tile);
    WorkingTile tile(TileAt(editing.Bin().Bin, place.Set, place.Slot));
    const int32_t rows = kind.Count(tile.Tile());
    if (told.Delete > rows)
        throw UsageError("--delete", "there is no row " + std::to_string(told.Delete) +
                                         "; the tile has " + std::to_string(rows));
    if (told.Delete > 0)
        kind.Delete(tile, told.Delete);
    if (!told.Add.empty())
        kind.Add(tile, told.Add);
    for (int32_t row = 1; row <= kind.Count(tile.Tile()); ++row)
        PrintRow(row, kind.Columns(tile, row));
    if (!told.Edits())
        return;
    TileAt(editing.Bin().Bin, place.Set, place.Slot) = tile.Tile();
    editing.Save(IfChangedOf(told.Overwrite));
}

void AddDetail(Command& bin, const DetailKind& kind) {
    Command command = bin.AddCommand(kind.Name, kind.Help);
    const auto options = std::make_shared<DetailOptions>(command);
    command.Number("TILE", options->Tile, "Tile number", {0, FittingField<int32_t>.Max})
        .Required();
    command.Text("--add", options->Add, kind.AddHelp);
    command.Number("--delete", options->Delete, "Row to delete, from 1",
                   {1, FittingField<int32_t>.Max});
    AddOverwrite(command, options->Overwrite);
    command.Check([options, check = kind.CheckNew] {
        if (!options->Add.empty())
            check(options->Add);
    });
    command.Run([options, kind](CommandContext& context) {
        BinEditing editing(context, options->Files,
                           options->Edits() ? BinEditing::Write : BinEditing::Look);
        EditTile(editing, *options, kind);
        return ExitDone;
    });
}

} // namespace

void AddBinAreas(Command& bin) {
    AddDetail(
        bin,
        {"areas", "List, add or delete the areas of a tile",
         "TYPE,CENTERX,CENTERY,RADIUS in feet; Water or Thick Forest",
         [](const TileRecord& tile) { return tile.NumAreas; },
         [](const WorkingTile& tile, int32_t row) { return AreaColumns(tile.Area(row)); },
         [](const std::string& text) { NewArea(text); },
         [](WorkingTile& tile, const std::string& text) { tile.Add(NewArea(text)); },
         [](WorkingTile& tile, int32_t row) { tile.DeleteArea(row); }});
}

void AddBinPaths(Command& bin) {
    AddDetail(
        bin,
        {"paths", "List, add or delete the paths of a tile",
         "TYPE,STARTX,STARTY,ENDX,ENDY[,WIDTH] in feet; River, Road, RailRoad or "
         "Bridge",
         [](const TileRecord& tile) { return tile.NumPaths; },
         [](const WorkingTile& tile, int32_t row) { return PathColumns(tile.Path(row)); },
         [](const std::string& text) { NewPath(text); },
         [](WorkingTile& tile, const std::string& text) { tile.Add(NewPath(text)); },
         [](WorkingTile& tile, int32_t row) { tile.DeletePath(row); }});
}

} // namespace vardenix
