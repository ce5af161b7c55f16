#pragma once

#include "files/SystemFile.h"

#include <filesystem>
#include <optional>

namespace vardenix {

// A file that a living program holds by a lock, from its making on: whoever can take it
// knows that its owner has ended, however that was. Closing lets go of it.
class HeldFile {
public:
    // Made new, for its user alone; nothing where something has that name already. The
    // system's refusals go through. On a file system that knows no locks it is held in
    // name only.
    static std::optional<HeldFile> Make(const std::filesystem::path& path);
    // One that an ended program has left. Nothing where its owner lives, where that
    // cannot be known, and where no plain file of this user's own is there.
    static std::optional<HeldFile> Take(const std::filesystem::path& path);

    int Handle() const { return file_.Handle(); }
    const std::filesystem::path& Path() const { return path_; }
    // Still held until this goes; what cannot be deleted stays, nobody's.
    void Delete() const;

private:
    HeldFile(std::filesystem::path path, SystemFile file)
        : path_(std::move(path)), file_(std::move(file)) {}

    std::filesystem::path path_;
    SystemFile file_;
};

} // namespace vardenix
