// features info and features export: what feature files hold, and the part of it that
// lies in a region.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "features/FeatureExport.h"
#include "features/FeatureFile.h"
#include "files/FileNames.h"
#include "texts/RuntimeError.h"

#include <memory>

namespace vardenix {

namespace {

struct FeatureOptions {
    std::vector<std::string> Files;
    bool AsJson = false;
    PostBox Corners;
    std::string Out;
    bool Overwrite = false;
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

void RequireNoneThere(const FoundFeatures& found, const FeatureOptions& options) {
    const auto files = IsFolder(options.Out) ? FilesOfExport(found, options.Out)
                                             : std::vector{options.Out};
    std::string names;
    for (const std::string& file : FilesThere(files))
        names += (names.empty() ? "" : ", ") + file;
    if (!options.Overwrite && !names.empty())
        throw UsageError("--out", names + ": already there; name another place, or give "
                                          "--overwrite to replace what is there");
}

void AddFeaturesInfo(Command& family) {
    Command command = family.AddCommand("info", "Count the features of files");
    const auto options = std::make_shared<FeatureOptions>();
    command.Texts("FILE", options->Files, "Feature files").Required();
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext& context) {
        LoadFeatures(context.State.Features, options->Files);
        PrintValues(InfoOf(context.State.Features), options->AsJson);
        return ExitDone;
    });
}

void AddFeaturesExport(Command& family) {
    Command command = family.AddCommand(
        "export", "Write the features with a point in a rectangle of posts, corners "
                  "included; exit 1 if there are none");
    const auto options = std::make_shared<FeatureOptions>();
    PostBox& corners = options->Corners;
    command.Number("X1", corners.X1, "Column, from 0 at the left").Required();
    command.Number("Y1", corners.Y1, "Row, from 0 at the bottom").Required();
    command.Number("X2", corners.X2, "Column of the opposite corner").Required();
    command.Number("Y2", corners.Y2, "Row of the opposite corner").Required();
    command.Texts("FILE", options->Files, "Feature files").Required();
    command
        .Output("--out", options->Out,
                "The file to write; or a folder, which gets a file for each kind")
        .Required();
    command.Flag("--overwrite", options->Overwrite, "Replace files that are there");
    command.Run([options](CommandContext& context) {
        FeatureSet& features = context.State.Features;
        LoadFeatures(features, options->Files);
        const FoundFeatures found = FeaturesInside(features, options->Corners);
        if (found.None()) {
            Tell("No features where found in the area.");
            return ExitFound;
        }
        RequireNoneThere(found, *options);
        if (!IsFolder(options->Out)) {
            WriteFeatures(found, options->Out);
            Print(NameOnDisk(options->Out));
            return ExitDone;
        }
        WriteFeatureFiles(found, options->Out);
        for (const std::string& file : FilesOfExport(found, options->Out))
            Print(NameOnDisk(file));
        return ExitDone;
    });
}

} // namespace

void LoadFeatures(FeatureSet& features, const std::vector<std::string>& files) {
    MendAndTell(files);
    for (const std::string& file : files)
        LoadFeatureFile(file, features);
}

void AddFeatures(Command& all) {
    Command family = all.AddCommand("features", "Feature files; no theater is opened");
    AddFeaturesInfo(family);
    AddFeaturesExport(family);
}

} // namespace vardenix
