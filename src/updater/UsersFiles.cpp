#include "updater/UsersFiles.h"

#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr const char* Names[] = {"VX.ini", "Desk.ini", "registry.ini", "Update.log"};

class Saver {
public:
    Saver(const std::string& programFolder, Dialogs& dialogs)
        : from_(WithTrailingSlash(programFolder)), dialogs_(dialogs) {}

    void Save() const {
        while (IsWanted()) {
            const auto chosen = dialogs_.Folder("Select folder to save files.");
            if (chosen && !chosen->empty() && MayBeTaken(*chosen)) {
                SaveTo(WithTrailingSlash(*chosen));
                return;
            }
        }
    }

private:
    bool IsWanted() const {
        return dialogs_.MessageBox("All files in the folder " + ShownPath(from_) +
                                       " are going to be deleted.\nDo you want to back "
                                       "up your files, VX.ini, Desk.ini, registry.ini "
                                       "and Update.log, before?",
                                   "Attention", BoxIcon::Warning,
                                   BoxButtons::YesUnlessNo) == BoxAnswer::Yes;
    }

    bool MayBeTaken(const std::string& folder) const {
        if (!GoesAsWell(folder))
            return MayReplaceIn(folder);
        dialogs_.Notice("The folder " + ShownPath(folder) +
                            " is going to be deleted as well.\nPlease select another "
                            "one.",
                        "Attention", BoxIcon::Warning);
        return false;
    }

    bool GoesAsWell(const std::string& folder) const {
        const fs::path lost = fs::weakly_canonical(RealPath(from_));
        const fs::path place = fs::weakly_canonical(RealPath(folder));
        return std::mismatch(lost.begin(), lost.end(), place.begin(), place.end())
                   .first == lost.end();
    }

    bool MayReplaceIn(const std::string& folder) const {
        std::string there;
        for (const char* name : Names)
            if (FileExists(from_ + name) && FileExists(WithTrailingSlash(folder) + name))
                there.append(name).append("\n");
        return there.empty() ||
               dialogs_.MessageBox(
                   "The folder " + ShownPath(folder) + " has these files already:\n" +
                       there + "Do you want to replace them?",
                   "Confirm", BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes;
    }

    void SaveTo(const std::string& folder) const {
        for (const char* name : Names) {
            if (!FileExists(from_ + name))
                continue;
            const ReadableFile source(from_ + name);
            StagedFile target(folder + name);
            target.WriteRestOf(source, 0);
            target.Commit();
        }
    }

    std::string from_;
    Dialogs& dialogs_;
};

} // namespace

void SaveUsersFiles(const std::string& programFolder, Dialogs& dialogs) {
    Saver(programFolder, dialogs).Save();
}

} // namespace vardenix
