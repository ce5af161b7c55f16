#pragma once

#include "platform/ToolRunner.h"
#include "updater/ArchiveListing.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// Archives through the archive program. All: error 53 with the package's name when there
// is no such program.

// Adds files to an archive, made when it is not there; their folders are not kept.
// Returns the exit code of the program, 0 when all went well.
int ZipAddFiles(const ToolRunner& tools, const std::string& archivePath,
                const std::vector<std::string>& newTilesList);
// Takes everything out of an archive into one folder, over what is there, without the
// archive's own folders. Exit code as above.
int ZipExtract(const ToolRunner& tools, const std::string& archivePath,
               const std::string& targetFolder);
// What an archive says that it holds; nothing when it cannot be read.
std::optional<ArchiveListing> ZipList(const std::string& archivePath);

} // namespace vardenix
