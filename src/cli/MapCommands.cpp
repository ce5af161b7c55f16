// map: the numbers and the palette of theater.map.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "cli/TheaterFiles.h"
#include "files/FileNames.h"
#include "files/StagedFile.h"
#include "mapeditor/MapFields.h"
#include "mapeditor/MapFile.h"
#include "mapeditor/PaletteFiles.h"
#include "texts/Numbers.h"

#include <cmath>
#include <memory>
#include <optional>

namespace vardenix {

namespace {

// Which theater.map: no other file of the theater is looked at.
class MapChoice {
public:
    explicit MapChoice(Command& command) {
        const std::string group = "Theater";
        Argument folder =
            command.Text("--theater", folder_, "Folder that holds terrain/ and texture/");
        folder.Group(group);
        command.Text("--map", map_, "The theater.map itself")
            .Group(group)
            .Excludes(folder);
        command.Check([this] {
            if (folder_.empty() && map_.empty())
                throw UsageError("name the theater by --theater, or its theater.map by "
                                 "--map");
        });
        command.Keeps([this] { return std::vector{MapFile()}; });
    }
    MapChoice(const MapChoice&) = delete;
    MapChoice& operator=(const MapChoice&) = delete;

    // As the disk has it; of a whole theater with what interrupted saves have left put
    // right.
    std::string Path(CommandContext& context) const {
        if (map_.empty())
            MendTheater(PathsOfTheater(folder_, ""), context.Dialogs, context.Log);
        else
            MendAndTell({map_});
        return TextOfPath(RealPathToRead(MapFile()));
    }

private:
    std::string MapFile() const {
        return map_.empty() ? PathsOfTheater(folder_, "").MapFile : map_;
    }

    std::string folder_;
    std::string map_;
};

struct MapOptions {
    explicit MapOptions(Command& command) : Choice(command) {}

    MapChoice Choice;
    bool AsJson = false;
    bool Overwrite = false;
    std::vector<std::string> Pairs;
    uint8_t Entry = 0;
    MapPaletteEntry Color;
    std::optional<uint8_t> Alpha;
    std::string File;
};

std::shared_ptr<MapOptions> AddFiles(Command& command) {
    return std::make_shared<MapOptions>(command);
}

// Reads, changes and saves it while no other program does.
template <typename Change>
std::string Changed(CommandContext& context, const MapOptions& options, Change change) {
    std::string path = options.Choice.Path(context);
    const auto locks = LockFoldersOf({TargetOf(path)}, FolderLock::Exclusive);
    MapFileRecord record;
    const FileIdentity read = OpenMapAndTell(path, record);
    change(record);
    SaveMapFile(path, record, read, IfChangedOf(options.Overwrite));
    return path;
}

// The decimals that a float's shortest text has, so that both outputs say the same.
// Nothing for what is no number.
Json NumberOf(const MapFileRecord& record, int index) {
    const double value = Val(MapFieldText(record, index));
    const bool number = std::isfinite(value) &&
                        MapFieldText(record, index).find('n') == std::string::npos;
    if (!number)
        return {};
    if (value == std::floor(value) && std::abs(value) < 1e15)
        return static_cast<int64_t>(value);
    return value;
}

JsonArray PaletteOf(const MapFileRecord& record) {
    JsonArray palette;
    for (const MapPaletteEntry& entry : record.Palette)
        palette.emplace_back(JsonArray{entry.Red, entry.Green, entry.Blue, entry.Alpha});
    return palette;
}

void Show(const MapFileRecord& record, bool asJson) {
    JsonObject values;
    for (int i = 0; i < MapFieldCount; ++i)
        values.emplace_back(MapFieldName(i),
                            asJson ? NumberOf(record, i) : Json(MapFieldText(record, i)));
    if (asJson)
        values.emplace_back("palette", PaletteOf(record));
    PrintValues(values, asJson);
    for (int i = 0; i < PaletteSize && !asJson; ++i) {
        const EntryTexts texts = EntryTextsOf(record.Palette[i]);
        Print("color " + std::to_string(i) + ": " + texts[0] + " " + texts[1] + " " +
              texts[2] + " " + texts[3]);
    }
}

std::string FieldNames() {
    std::string names;
    for (int i = 0; i < MapFieldCount; ++i)
        names += (i == 0 ? "" : ", ") + std::string(MapFieldName(i));
    return names;
}

void TakePairs(const std::vector<std::string>& pairs, MapFileRecord& record) {
    for (size_t i = 0; i + 1 < pairs.size(); i += 2)
        TakeMapField(record, *MapFieldOfName(pairs[i]), pairs[i + 1]);
}

void CheckPairs(const std::vector<std::string>& pairs) {
    for (size_t i = 0; i < pairs.size(); i += 2)
        if (!MapFieldOfName(pairs[i]))
            throw UsageError("'" + pairs[i] + "' is none of " + FieldNames());
    if (pairs.size() % 2 != 0)
        throw UsageError("'" + pairs.back() + "' has no value behind it");
    try {
        MapFileRecord none;
        TakePairs(pairs, none);
    } catch (const MapFieldError& error) {
        throw UsageError(error.Detail());
    }
}

void AddShow(Command& map) {
    Command command = map.AddCommand("show", "Tell the numbers and the palette");
    const auto options = AddFiles(command);
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext& context) {
        MapFileRecord record;
        OpenMapAndTell(options->Choice.Path(context), record);
        Show(record, options->AsJson);
        return ExitDone;
    });
}

void AddMapSet(Command& map) {
    Command command = map.AddCommand("set", "Change numbers, and save");
    const auto options = AddFiles(command);
    command
        .Texts("FIELD-VALUE", options->Pairs,
               "A field and its value, and so on: " + FieldNames())
        .Required();
    AddOverwrite(command, options->Overwrite);
    command.Check([options] { CheckPairs(options->Pairs); });
    command.Run([options](CommandContext& context) {
        const std::string path = Changed(context, *options, [&](MapFileRecord& record) {
            TakePairs(options->Pairs, record);
        });
        const size_t count = options->Pairs.size() / 2;
        Print(std::to_string(count) + (count == 1 ? " field" : " fields") + " set in " +
              path);
        return ExitDone;
    });
}

void AddColor(Command& map) {
    Command command =
        map.AddCommand("color", "Change one entry of the palette, and save");
    const auto options = AddFiles(command);
    command.Number("N", options->Entry, "Entry of the palette").Required();
    command.Number("R", options->Color.Red, "Red").Required();
    command.Number("G", options->Color.Green, "Green").Required();
    command.Number("B", options->Color.Blue, "Blue").Required();
    command.Number("A", options->Alpha, "Alpha; stays when it is not given");
    AddOverwrite(command, options->Overwrite);
    command.Run([options](CommandContext& context) {
        const std::string path = Changed(context, *options, [&](MapFileRecord& record) {
            MapPaletteEntry& entry = record.Palette[options->Entry];
            const uint8_t alpha = options->Alpha.value_or(entry.Alpha);
            entry = options->Color;
            entry.Alpha = alpha;
        });
        Print("color " + std::to_string(options->Entry) + " set in " + path);
        return ExitDone;
    });
}

constexpr const char* PaletteFileHelp = "A file whose name ends in .act, .pal or .bmp";

void CheckPaletteFile(Command& command, const std::shared_ptr<MapOptions>& options,
                      const char* name) {
    command.Check([options, name] {
        if (!PaletteKindOf(options->File))
            throw UsageError(name,
                             options->File + " ends in none of .act, .pal and .bmp");
    });
}

void AddExportPalette(Command& map) {
    Command command =
        map.AddCommand("export-palette", "Write the palette as an ACT, PAL or BMP file");
    const auto options = AddFiles(command);
    command.Output("OUT", options->File, PaletteFileHelp).Required();
    CheckPaletteFile(command, options, "OUT");
    command.Run([options](CommandContext& context) {
        const std::string path = options->Choice.Path(context);
        MapFileRecord record;
        OpenMapAndTell(path, record);
        SavePalette(*PaletteKindOf(options->File), options->File, record.Palette);
        Print(NameOnDisk(options->File));
        return ExitDone;
    });
}

void AddImportPalette(Command& map) {
    Command command = map.AddCommand(
        "import-palette", "Take the palette of an ACT, PAL or BMP file, and save");
    const auto options = AddFiles(command);
    command.Text("FILE", options->File, PaletteFileHelp).Required();
    CheckPaletteFile(command, options, "FILE");
    AddOverwrite(command, options->Overwrite);
    command.Run([options](CommandContext& context) {
        const std::string path = Changed(context, *options, [&](MapFileRecord& record) {
            LoadPalette(*PaletteKindOf(options->File), options->File, record.Palette);
        });
        Print("256 colors of " + NameOnDisk(options->File) + " taken into " + path);
        return ExitDone;
    });
}

} // namespace

void AddMap(Command& all) {
    Command map = all.AddCommand("map", "The numbers and the palette of theater.map");
    AddShow(map);
    AddMapSet(map);
    AddColor(map);
    AddExportPalette(map);
    AddImportPalette(map);
}

} // namespace vardenix
