#pragma once

#include "files/FolderLock.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// Files of the program's folder that an update replaces, makes and deletes: what was
// there is kept aside in a folder of its own until the last of them has changed, so that
// they can all be put back, by whoever comes next when the program that began it has
// ended in between. Once LetGo has begun, the new files stay.
//
// The folder aside is "UpdateKept"; "kept.lst" in it, the last to be made and the first
// to go, has a line for each file: "+name" for one that was there and now lies aside
// under the number of its line, from 1, and "-name" for one that was not.
//
// What was kept counts only where it is whole and names nothing but files of the
// program's folder, and where it, they and what lies aside belong to this user
// (BelongsHere). Anything else is never put back and keeps no later update from its way:
// the folder gets another name, "UpdateKept.aside", with all that lies in it.
//
// Whoever holds such an object, or makes one and finds files kept, has them to himself:
// error 70 when another program does. The system's refusals go through.
class KeptFiles {
public:
    explicit KeptFiles(const std::string& programFolder);

    // Whether files are kept.
    bool Any() const { return any_; }
    // What has been put out of the way unread, and why, as sentences; empty when nothing.
    const std::string& SetAside() const { return setAside_; }
    // Clears away what was to be kept and never was, or is no more.
    void Clear();
    // Keeps these, each once, whether they are there or not; they are names of the folder
    // as the disk has them. Error 75 when one is no file, 70 when it is another user's.
    void Keep(const std::vector<std::string>& names);
    // A name for a new file while it is written, in the folder aside.
    std::string Scratch() const;
    // Everything is again as it was when it was kept, also after a part of this was done
    // before.
    void PutBack();
    // Keeps nothing any more.
    void LetGo();

private:
    struct Kept {
        std::string Name;
        bool WasThere = false;
    };

    std::string Aside(size_t line) const;
    void ReadList();
    std::string WhyFolderDoesNotCount() const;
    std::string WhyListDoesNotCount();
    std::string WhyFileDoesNotCount(const Kept& file, size_t line) const;
    bool HasMoreAside() const;
    void PutAside(const std::string& why);
    void KeepAll(const std::vector<std::string>& names);
    void KeepOne(const Kept& file, size_t line) const;
    void PutBackOne(const Kept& file, size_t line) const;

    std::string folder_; // both with a slash at their end
    std::string aside_;
    std::optional<FolderLock> lock_;
    std::vector<Kept> files_;
    std::string setAside_;
    bool any_ = false;
};

} // namespace vardenix
