#include "bineditor/UnusedPictures.h"

#include "bineditor/TileNames.h"
#include "files/FileNames.h"
#include "files/TransactionJournal.h"
#include "platform/SeveralNotices.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

// A name and what it is compared by, so that a long list is not upper-cased at every
// comparison.
std::vector<std::string> Sorted(const std::vector<std::string>& names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (const std::string& name : names)
        keyed.emplace_back(UpperCase(name), name);
    std::sort(keyed.begin(), keyed.end());
    std::vector<std::string> sorted;
    sorted.reserve(keyed.size());
    for (auto& [key, name] : keyed)
        sorted.push_back(std::move(name));
    return sorted;
}

bool IsOfAnIntake(const std::string& name) {
    const fs::path journal = JournalOf({});
    return name == journal || name == AsideOf(journal) ||
           UpperCase(name).ends_with(".DDSX");
}

// One box for each text, until the user has asked to be spared the rest.
void NoticeAll(const std::vector<std::string>& texts, const std::string& title,
               BoxIcon icon, Dialogs& dialogs) {
    auto* several = dynamic_cast<SeveralNotices*>(&dialogs);
    for (size_t i = 0; i < texts.size(); ++i) {
        if (several == nullptr)
            dialogs.Notice(texts[i], title, icon);
        else if (several->NoticeOfSeveral(texts[i], title, icon, {},
                                          texts.size() - 1 - i))
            return;
    }
}

} // namespace

std::vector<std::string> WantedNames(const TextureBin& bin) {
    std::vector<std::string> names;
    for (const TileSet& set : bin.Sets)
        for (size_t i = 1; i < set.Tiles.size(); ++i)
            for (const std::string& name :
                 WantedPictures(std::string(TrimBlanks(set.Tiles[i].TileName))))
                names.push_back(Utf8FromBytes(name));
    return Sorted(names);
}

std::vector<std::string> PresentNames(const std::string& ddsFolder) {
    std::error_code error;
    std::vector<std::string> names;
    fs::directory_iterator it(RealPath(ddsFolder), error);
    for (const fs::directory_iterator end; !error && it != end; it.increment(error)) {
        std::error_code ignored; // a link that leads nowhere is no folder
        if (!it->is_directory(ignored))
            names.push_back(it->path().filename());
    }
    if (error)
        ThrowSystemError(error.value(), "reading the folder", ddsFolder);
    return Sorted(names);
}

std::vector<std::string> UnusedNames(const std::vector<std::string>& wanted,
                                     const std::vector<std::string>& present) {
    std::vector<std::string> unused;
    auto next = wanted.begin();
    for (const std::string& name : present) {
        const std::string key = UpperCase(name);
        while (next != wanted.end() && UpperCase(*next) < key)
            ++next;
        if (next == wanted.end() || UpperCase(*next) != key)
            unused.push_back(name);
    }
    return unused;
}

std::vector<std::string> UnusedPictures(const Catalogue& catalogue) {
    std::vector<std::string> unused =
        UnusedNames(WantedNames(catalogue.Bin), PresentNames(catalogue.DDSFolder));
    std::erase_if(unused, IsOfAnIntake);
    return unused;
}

size_t DeletePictures(const std::string& ddsFolder, const std::vector<std::string>& names,
                      Dialogs& dialogs) {
    std::vector<std::string> refusals;
    // The disk's own names: "\" in one is a letter here.
    const fs::path folder = RealPath(ddsFolder);
    for (const std::string& name : names) {
        try {
            if (::unlink((folder / name).c_str()) != 0)
                ThrowSystemError(errno, "deleting", ddsFolder + name);
        } catch (const RuntimeError& error) {
            refusals.push_back("File '" + name + "' could not be deleted.\n" +
                               error.Description());
        }
    }
    NoticeAll(refusals, "Error.", BoxIcon::Critical, dialogs);
    return names.size() - refusals.size();
}

void cmdDeleteUnusedDDS(const Catalogue& catalogue, Dialogs& dialogs) {
    const std::string& folder = catalogue.DDSFolder;
    if (!FolderExists(folder)) {
        dialogs.Notice("The folder '" + folder +
                           "' does not exist so no dds files are loaded.",
                       "Attention", BoxIcon::None);
        return;
    }
    const auto confirmed = [&](const std::string& text, const char* title, BoxIcon icon) {
        return dialogs.MessageBox(text, title, icon, BoxButtons::YesNo) == BoxAnswer::Yes;
    };
    if (!confirmed("This will delete all *.dds files from '" + folder +
                       "' that are not used in your BIN file. Are you sure you want to "
                       "do this (no undo available)?",
                   "Confirm", BoxIcon::Warning))
        return;
    const std::vector<std::string> unused = UnusedPictures(catalogue);
    if (unused.empty()) {
        dialogs.Notice("All dds files are used by BIN. No file needs to be deleted.",
                       "Info", BoxIcon::Information);
        return;
    }
    if (confirmed(std::to_string(unused.size()) + " files from '" + folder +
                      "' are going to be deleted. Are you really sure?",
                  "Confirm Again...", BoxIcon::Critical))
        DeletePictures(folder, unused, dialogs);
}

} // namespace vardenix
