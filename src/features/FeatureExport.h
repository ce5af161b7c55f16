#pragma once

#include "levels/Posts.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"
#include "program/FeatureSet.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// The features with a point inside a box, borders included, by kind in the order
// of FeatureKinds; those that only cross it between two points are not among them.
struct FoundFeatures {
    std::array<std::vector<const Feature*>, FeatureKinds.size()> ByKind;

    bool None() const;
};
FoundFeatures FeaturesInside(const FeatureSet& features, const PostBox& box);

// "Airports.tdf" and so on.
std::string ExportedFile(FeatureKind kind);

// The files that WriteFeatureFiles would write, and those of them that are there.
std::vector<std::string> FilesOfExport(const FoundFeatures& found,
                                       const std::string& folder);
std::vector<std::string> FilesThere(const std::vector<std::string>& files);

// All in one file, kind by kind; or a file for each kind that has some, into a folder.
// Files that are there are replaced, together or not at all. Errors 61, 70, 75, 76 of
// writing.
void WriteFeatures(const FoundFeatures& found, const std::string& path);
void WriteFeatureFiles(const FoundFeatures& found, const std::string& folder);

// Asks whether one file is wanted or one for each kind, asks where, and writes; where
// files of a folder are there, only after a question that names them (the dialog for one
// file asks itself). A cancel ends without a word, an error in a box; a region without
// features is told and nothing is written. The path of the file or folder; nothing when
// none was written.
std::optional<std::string> SubExportTDFs(const FeatureSet& features, const PostBox& box,
                                         Dialogs& dialogs, Progress& progress);

} // namespace vardenix
