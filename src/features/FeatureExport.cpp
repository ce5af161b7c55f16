#include "features/FeatureExport.h"

#include "features/FeatureFile.h"
#include "files/FileNames.h"
#include "files/Transaction.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <optional>

namespace vardenix {

namespace {

constexpr const char* OneFileQuestion =
    "The tdfs of the selected region will be exported. Do you want a single file for all "
    "tdfs (otherwise a file for each tdf type will be saved)?";
constexpr const char* NoneFound =
    "No features where found in the area or none where loaded...";

struct Rectangle {
    double Left, Bottom, Right, Top;

    bool Holds(const FeaturePoint& point) const {
        return Left <= point.X && point.X <= Right && Bottom <= point.Y && point.Y <= Top;
    }
};

bool AnyPointInside(const Feature& feature, const Rectangle& rectangle) {
    const bool missing = feature.PointCount > static_cast<int64_t>(feature.Points.size());
    return std::ranges::any_of(
               feature.Points,
               [&](const FeaturePoint& point) { return rectangle.Holds(point); }) ||
           (missing && rectangle.Holds({0, 0}));
}

void WriteLines(StagedFile& file, const std::vector<const Feature*>& features,
                FeatureKind kind) {
    for (const Feature* feature : features)
        file.WriteText(FeatureToLine(*feature, kind) + "\r\n");
}

const std::vector<const Feature*>& Of(const FoundFeatures& found, FeatureKind kind) {
    return found.ByKind[static_cast<size_t>(kind) - 1];
}

// Where to write, and what.
struct Target {
    bool OneFile = false;
    std::string Path; // the file or the folder
};

// Nothing when no folder was chosen; the cancel of the file dialog is thrown.
std::optional<Target> AskForTarget(Dialogs& dialogs) {
    if (dialogs.MessageBox(OneFileQuestion, "TDF Export", BoxIcon::Question,
                           BoxButtons::YesNo) == BoxAnswer::Yes)
        return Target{true, dialogs
                                .SaveFile({.Title = "Save Feature File as...",
                                           .Filter = "Feature Files|*.tdf"})
                                .Path};
    const auto folder = dialogs.Folder("Save TDF Files...");
    if (!folder || folder->empty())
        return std::nullopt;
    return Target{false, *folder};
}

bool MayReplace(const std::vector<std::string>& there, Dialogs& dialogs) {
    if (there.empty())
        return true;
    std::string names;
    for (const std::string& file : there)
        names += "\n" + file;
    return dialogs.MessageBox("These files are there already, and only the features of "
                              "the selected region would be left in them:" +
                                  names + "\nDo you want to replace them?",
                              "TDF Export", BoxIcon::Warning,
                              BoxButtons::YesNo) == BoxAnswer::Yes;
}

FoundFeatures Find(const FeatureSet& features, const PostBox& box, Progress& progress) {
    const ShownBar bar(progress);
    FoundFeatures found = FeaturesInside(features, box);
    progress.SetBar(100);
    return found;
}

} // namespace

bool FoundFeatures::None() const {
    return std::ranges::all_of(ByKind, [](const auto& list) { return list.empty(); });
}

FoundFeatures FeaturesInside(const FeatureSet& features, const PostBox& box) {
    const auto [left, bottom, right, top] = Ordered(box);
    const Rectangle rectangle{static_cast<double>(left), static_cast<double>(bottom),
                              static_cast<double>(right), static_cast<double>(top)};
    FoundFeatures found;
    for (const FeatureKind kind : FeatureKinds) {
        const FeatureList& list = features.Of(kind);
        for (size_t i = 1; i < list.size(); ++i)
            if (AnyPointInside(list[i], rectangle))
                found.ByKind[static_cast<size_t>(kind) - 1].push_back(&list[i]);
    }
    return found;
}

std::string ExportedFile(FeatureKind kind) {
    constexpr std::array<const char*, FeatureKinds.size()> names{
        "Airports.tdf", "Cities.tdf", "Coasts.tdf",
        "Labels.tdf",   "Rivers.tdf", "Roads.tdf"};
    return names[static_cast<size_t>(kind) - 1];
}

void WriteFeatures(const FoundFeatures& found, const std::string& path) {
    StagedFile file(path);
    for (const FeatureKind kind : FeatureKinds)
        WriteLines(file, Of(found, kind), kind);
    file.Commit();
}

std::vector<std::string> FilesOfExport(const FoundFeatures& found,
                                       const std::string& folder) {
    std::vector<std::string> files;
    for (const FeatureKind kind : FeatureKinds)
        if (!Of(found, kind).empty())
            files.push_back(WithTrailingSlash(folder) + ExportedFile(kind));
    return files;
}

std::vector<std::string> FilesThere(const std::vector<std::string>& files) {
    std::vector<std::string> there;
    for (const std::string& file : files)
        if (FileExists(file))
            there.push_back(ShownPath(file));
    return there;
}

void WriteFeatureFiles(const FoundFeatures& found, const std::string& folder) {
    Transaction files;
    for (const FeatureKind kind : FeatureKinds)
        if (!Of(found, kind).empty())
            WriteLines(files.Stage(WithTrailingSlash(folder) + ExportedFile(kind)),
                       Of(found, kind), kind);
    files.Commit();
}

std::optional<std::string> SubExportTDFs(const FeatureSet& features, const PostBox& box,
                                         Dialogs& dialogs, Progress& progress) {
    try {
        const auto target = AskForTarget(dialogs);
        if (!target)
            return std::nullopt;
        const FoundFeatures found = Find(features, box, progress);
        if (found.None()) {
            dialogs.Notice(NoneFound, "Info...", BoxIcon::Information);
            return std::nullopt;
        }
        if (target->OneFile)
            WriteFeatures(found, target->Path);
        else if (MayReplace(FilesThere(FilesOfExport(found, target->Path)), dialogs))
            WriteFeatureFiles(found, target->Path);
        else
            return std::nullopt;
        return target->Path;
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        return std::nullopt;
    }
}

} // namespace vardenix
