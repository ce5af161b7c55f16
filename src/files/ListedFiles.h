#pragma once

#include "files/FileNames.h"
#include "files/FileStatus.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vardenix {

// Which files one folder has, by one look at the folder instead of one at each of
// thousands of files. Relies on the listing's telling what each name stands for; where it
// does not, and in a folder that may not be both listed and entered, the file itself is
// looked at, as FolderIndex does.
class ListedFiles {
public:
    // A folder that is not there has no files. Errors as of FolderIndex.
    explicit ListedFiles(std::string_view folder);

    // Whether a file had that name, in any case, when the folder was listed.
    bool Has(std::string_view name) const;

private:
    std::unordered_map<std::string, ListedKind> kinds_; // by upper name, files first
    std::optional<FolderIndex> asked_; // for what the listing does not tell
    bool toldAll_ = false;             // the names, and that they are ours to look at
};

} // namespace vardenix
