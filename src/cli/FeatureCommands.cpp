// features info, export and import: what feature files hold, the part of it that lies in
// a region, and features from maps of the real world and as such maps.
#include "cli/Commands.h"
#include "cli/GivenPlace.h"
#include "cli/Printing.h"
#include "cli/ScratchFolder.h"
#include "features/FeatureExport.h"
#include "features/FeatureFile.h"
#include "files/FileNames.h"
#include "texts/RuntimeError.h"
#include "world/WorldHelper.h"

#include <algorithm>
#include <map>
#include <memory>

namespace vardenix {

namespace {

struct InfoOptions {
    std::vector<std::string> Files;
    bool AsJson = false;
};

struct FeatureOptions {
    explicit FeatureOptions(Command& command, TheaterFiles::Wanted wanted)
        : Theater(command, wanted) {}

    TheaterFiles Theater;
    std::vector<std::string> Files;
    PostBox Corners;
    std::string Out;
    bool Overwrite = false;
    ShapeWish Wish;
    std::vector<std::string> Kinds; // WORD=KIND
};

// "Airports" and so on.
std::string PluralOf(FeatureKind kind) {
    const std::string file = ExportedFile(kind);
    return file.substr(0, file.find('.'));
}

JsonObject InfoOf(const FeatureSet& features) {
    JsonObject counts;
    for (const FeatureKind kind : FeatureKinds)
        counts.emplace_back(PluralOf(kind), features.Of(kind).size() - 1);
    size_t points = 0;
    for (const FeatureKind kind : FeatureKinds)
        for (const Feature& feature : features.Of(kind))
            points += feature.Points.size();
    counts.emplace_back("points", points);
    return counts;
}

// A folder that is there, or a name that can only be a folder's.
bool IsFolder(const std::string& out) {
    return FolderExists(out) || out.ends_with('/') || out.ends_with('\\');
}

void RequireNoneThere(const std::vector<std::string>& files,
                      const FeatureOptions& options) {
    std::string names;
    for (const std::string& file : FilesThere(files))
        names += (names.empty() ? "" : ", ") + file;
    if (!options.Overwrite && !names.empty())
        throw UsageError("--out", names + ": already there; name another place, or give "
                                          "--overwrite to replace what is there");
}

void AddFeaturesInfo(Command& family) {
    Command command = family.AddCommand("info", "Count the features of files");
    const auto options = std::make_shared<InfoOptions>();
    command.Texts("FILE", options->Files, "Feature files").Required();
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext& context) {
        LoadFeatures(context.State.Features, options->Files);
        PrintValues(InfoOf(context.State.Features), options->AsJson);
        return ExitDone;
    });
}

void WriteTold(const FoundFeatures& found, const FeatureOptions& options) {
    const bool intoFolder = IsFolder(options.Out);
    const std::vector<std::string> files =
        intoFolder ? FilesOfExport(found, options.Out) : std::vector{options.Out};
    RequireNoneThere(files, options);
    if (intoFolder)
        WriteFeatureFiles(found, options.Out);
    else
        WriteFeatures(found, options.Out);
    for (const std::string& file : files)
        Print(NameOnDisk(file));
}

void WriteMap(CommandContext& context, const FoundFeatures& found,
              const FeatureOptions& options) {
    context.Open(options.Theater);
    const TheaterPlace place = PlaceOfTheater(context);
    std::vector<WorldShape> shapes;
    for (const FeatureKind kind : FeatureKinds)
        for (const Feature* feature : found.ByKind[static_cast<size_t>(kind) - 1])
            if (auto shape = ShapeOf(*feature, kind, place))
                shapes.push_back(std::move(*shape));
    const ScratchFolder scratch;
    const auto maps = OwnWorldHelper(scratch.Path())
                          .WriteShapes(options.Out, shapes, place.System,
                                       [&options](const std::vector<std::string>& files) {
                                           RequireNoneThere(files, options);
                                           return true;
                                       });
    for (const std::string& map : maps)
        Print(NameOnDisk(map));
}

void AddFeaturesExport(Command& family) {
    Command command = family.AddCommand(
        "export", "Write the features with a point in a rectangle of posts, corners "
                  "included; exit 1 if there are none");
    const auto options =
        std::make_shared<FeatureOptions>(command, TheaterFiles::Wanted::Perhaps);
    PostBox& corners = options->Corners;
    command.Number("X1", corners.X1, "Column, from 0 at the left").Required();
    command.Number("Y1", corners.Y1, "Row, from 0 at the bottom").Required();
    command.Number("X2", corners.X2, "Column of the opposite corner").Required();
    command.Number("Y2", corners.Y2, "Row of the opposite corner").Required();
    command.Texts("FILE", options->Files, "Feature files").Required();
    command
        .Output(
            "--out", options->Out,
            "The file to write; or a folder, which gets a file for each kind; a "
            ".geojson, .gpkg or .shp is a map, and wants a theater, which tells where")
        .Required();
    command.Flag("--overwrite", options->Overwrite, "Replace files that are there");
    command.Check([options] {
        if (IsMapOfShapes(options->Out) && !options->Theater.AreNamed())
            throw UsageError("--out",
                             "a map wants the theater that tells where the posts "
                             "lie; name it by --theater");
    });
    command.Run([options](CommandContext& context) {
        FeatureSet& features = context.State.Features;
        LoadFeatures(features, options->Files);
        const FoundFeatures found = FeaturesInside(features, options->Corners);
        if (found.None()) {
            Tell("No features where found in the area.");
            return ExitFound;
        }
        if (IsMapOfShapes(options->Out))
            WriteMap(context, found, *options);
        else
            WriteTold(found, *options);
        return ExitDone;
    });
}

// "highway=road", or "highway=-" for what is left out.
KindsOfWords ToldKinds(const FeatureOptions& options) {
    KindsOfWords kinds;
    for (const std::string& pair : options.Kinds) {
        const size_t sign = std::min(pair.rfind('='), pair.size());
        const std::string word = pair.substr(std::min(sign + 1, pair.size()));
        const auto kind = KindOfWord(word);
        if (sign == pair.size() || (!kind && word != "-"))
            throw UsageError("--kind", pair +
                                           " is not WORD=KIND: a kind is airport, city, "
                                           "coast, label, river or road, or - for what "
                                           "is left out");
        kinds[pair.substr(0, sign)] = kind;
    }
    return kinds;
}

void RequireKinds(const std::map<std::string, int64_t>& unknown) {
    constexpr size_t most = 20;
    std::string words;
    size_t told = 0;
    for (const auto& [word, count] : unknown)
        if (++told <= most)
            words += (words.empty() ? "\"" : ", \"") + word + "\" (" +
                     std::to_string(count) + ")";
    if (unknown.size() > most)
        words += " and " + std::to_string(unknown.size() - most) + " more";
    if (!unknown.empty())
        throw UsageError("these kinds are none of a theater's: " + words +
                         "; say what each is, as by --kind \"" + unknown.begin()->first +
                         "=road\", or leave it out, by \"" + unknown.begin()->first +
                         "=-\"");
}

int ImportFeatures(CommandContext& context, const FeatureOptions& options) {
    context.Open(options.Theater);
    const TheaterPlace place = PlaceOfTheater(context);
    ShapeWish wish = options.Wish;
    wish.System = place.System;
    FeatureSet& features = context.State.Features;
    std::map<std::string, int64_t> unknown;
    for (const std::string& map : options.Files) {
        const ScratchFolder scratch;
        AddShapes(OwnWorldHelper(scratch.Path()).ReadShapes(map, wish), place,
                  ToldKinds(options), features, unknown);
    }
    RequireKinds(unknown);
    context.Progress.HideBar();
    const int32_t last = context.State.Terrain.MapWidth - 1;
    const FoundFeatures found = FeaturesInside(features, {0, 0, last, last});
    size_t inside = 0;
    for (const auto& list : found.ByKind)
        inside += list.size();
    if (features.Count() > inside)
        Tell(std::to_string(features.Count() - inside) +
             " without a point on the theater were left out");
    if (found.None()) {
        Tell("No feature lies on the theater; look at \"place show\".");
        return ExitFound;
    }
    WriteTold(found, options);
    return ExitDone;
}

void AddFeaturesImport(Command& family) {
    Command command = family.AddCommand(
        "import",
        "Write the features of maps that have a point on the theater as feature "
        "files; exit 1 if there are none");
    const auto options =
        std::make_shared<FeatureOptions>(command, TheaterFiles::Wanted::Always);
    command.Texts("MAP", options->Files, "GeoJSON, GeoPackages and Shapefiles")
        .Required();
    command
        .Output("--out", options->Out,
                "The file to write; or a folder, which gets a file for each kind",
                {".SHP", ".DBF", ".SHX", ".PRJ", ".GPKG", ".GEOJSON", ".JSON"})
        .Required();
    command.Texts("--kind", options->Kinds,
                  "WORD=KIND: features with this word are airport, city, coast, label, "
                  "river or road; - leaves them out");
    command.Text("--kind-field", options->Wish.KindField,
                 "The attribute with the kind; without it the name of the layer is it");
    command.Text("--name-field", options->Wish.NameField, "The attribute with the name");
    command.Text("--map-system", options->Wish.MapSystem,
                 "Reference system of maps that do not tell their own");
    command.Flag("--overwrite", options->Overwrite, "Replace files that are there");
    command.Check([options] { ToldKinds(*options); });
    command.Run(
        [options](CommandContext& context) { return ImportFeatures(context, *options); });
}

} // namespace

void LoadFeatures(FeatureSet& features, const std::vector<std::string>& files) {
    MendAndTell(files);
    for (const std::string& file : files)
        LoadFeatureFile(file, features);
}

void AddFeatures(Command& all) {
    Command family = all.AddCommand("features", "Feature files, from maps and as maps");
    AddFeaturesInfo(family);
    AddFeaturesExport(family);
    AddFeaturesImport(family);
}

} // namespace vardenix
