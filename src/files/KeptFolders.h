#pragma once

#include "files/FileIdentity.h"
#include "files/FileNames.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace vardenix {

// Indexes of folders, kept for as long as their folders' times stand. Relies on the
// system's setting the time of a folder whenever a name in it comes, goes or changes; a
// time so young that a later change could leave the same one is not relied on.
class KeptFolders {
public:
    // From here on every folder is looked at again, at its first use.
    void LookAgain() { ++round_; }

    // As the folder was when it was looked at last. Errors as of FolderIndex. Good until
    // the next call.
    const FolderIndex& Of(const std::string& folder);

    // How often a folder's names have been read.
    uint64_t Readings() const { return readings_; }

private:
    struct Kept {
        FolderIndex Index;
        std::filesystem::path Folder;
        FileIdentity Identity;
        uint64_t Round = 0;
        bool Settled = false; // what is read again would be the same
    };

    std::map<std::string, Kept> kept_;
    uint64_t round_ = 1;
    uint64_t readings_ = 0;
};

} // namespace vardenix
