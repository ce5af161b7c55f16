#include "workspace/RestorePoint.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/Mending.h"
#include "files/OwnFolders.h"
#include "files/Transaction.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <span>

namespace vardenix {

namespace {

constexpr uint64_t LongestOrigin = 65536;

// What clears the system's temporary folder may have taken ours along.
std::string FolderOfPoint(const std::string& systemTempPath) {
    if (systemTempPath.empty())
        throw RuntimeError(ErrorNumber::PathNotFound,
                           "there is no folder for temporary files");
    KeepOwnTemporaryFolder(systemTempPath);
    return systemTempPath;
}

std::string PathOfPosts(const std::string& folder) { return folder + "VXUndo.tmp"; }
std::string PathOfOrigin(const std::string& folder) { return folder + "VXUndo.txt"; }

bool Ask(Dialogs& dialogs, const std::string& question) {
    return dialogs.MessageBox(question, "Attention", BoxIcon::Warning,
                              BoxButtons::YesNo) == BoxAnswer::Yes;
}

WayOut AskUnmarked(const std::string& why, Dialogs& dialogs) {
    return WayOutOf(
        dialogs.MessageBox(why + " Do you want to leave without saving them?\n"
                                 "Press No to return to the program.",
                           "Attention", BoxIcon::Warning, BoxButtons::YesNoSaveAll));
}

} // namespace

void CreateRestorePoint(const Terrain& terrain, const LocalTime& now,
                        const std::string& systemTempPath) {
    const std::string folder = FolderOfPoint(systemTempPath);
    const std::string origin =
        ShortMonthDate(now) + " - " + HoursMinutes(now) + "\n" + terrain.LFilename;
    Transaction point;
    point.Stage(PathOfPosts(folder)).Write(std::as_bytes(terrain.LxArr.Values()));
    point.Stage(PathOfOrigin(folder)).Write(std::as_bytes(std::span(origin)));
    point.Commit();
}

std::optional<PointOrigin> OriginOfPoint(const std::string& systemTempPath) {
    try {
        const std::string folder = FolderOfPoint(systemTempPath);
        const std::string path = PathOfOrigin(folder);
        const ReadingLock lock({PathOfPosts(folder), path});
        if (!FileExists(PathOfPosts(folder)) || !FileExists(path))
            return std::nullopt;
        const FileBytes file = ReadWholeFile(path, LongestOrigin);
        const std::string text(reinterpret_cast<const char*>(file.data()), file.size());
        const size_t line = text.find('\n');
        if (line == std::string::npos || line + 1 == text.size())
            return std::nullopt;
        return PointOrigin{text.substr(0, line), text.substr(line + 1)};
    } catch (const RuntimeError&) {
        return std::nullopt; // restoring tells what is the matter
    }
}

std::string RestoreTip(const std::optional<PointOrigin>& origin) {
    if (!origin)
        return "Brings all posts back as they were when the restore point was made";
    return "Brings all posts back as they were on " + origin->Time + " in\n" +
           origin->L2File;
}

Restored RestoreFromPoint(Terrain& terrain, const std::string& systemTempPath) {
    const std::string folder = FolderOfPoint(systemTempPath);
    const std::string path = PathOfPosts(folder);
    const ReadingLock lock({path});
    if (!FileExists(path))
        return Restored::NoPoint;
    const auto posts = std::as_writable_bytes(terrain.LxArr.Values());
    if (FileLength(path) != posts.size())
        return Restored::WrongSize;
    const FileBytes file = ReadWholeFile(path, posts.size());
    if (file.size() != posts.size())
        return Restored::WrongSize;
    if (std::ranges::equal(file.Span(), posts))
        return Restored::Unchanged;
    std::ranges::copy(file.Span(), posts.begin());
    return Restored::Done;
}

bool MayRestoreOldNumbers(Dialogs& dialogs) {
    return Ask(dialogs,
               "Tile numbers have changed in the BIN editor since the restore point was "
               "made, so its posts would show other tiles. Do you want to restore it all "
               "the same?");
}

bool MayRestoreOtherTheater(const std::optional<PointOrigin>& origin,
                            const std::string& l2File, Dialogs& dialogs) {
    return !origin || SameFile(origin->L2File, l2File) ||
           Ask(dialogs, "The restore point was made on " + origin->Time + " in\n" +
                            origin->L2File +
                            "\nDo you want to bring its posts into this theater, in\n" +
                            l2File + "\nall the same?");
}

WayOut MayLeaveRestored(Dialogs& dialogs) {
    return AskUnmarked("The posts that were brought back from the restore point are not "
                       "saved: they differ from the L2 file, though nothing is marked.",
                       dialogs);
}

WayOut MayLeaveCopied(Dialogs& dialogs) {
    return AskUnmarked("The posts were saved under another name only: they differ from "
                       "the L2 file that was opened, though nothing is marked.",
                       dialogs);
}

std::string RestoreMessage(Restored result) {
    switch (result) {
    case Restored::NoPoint:
        return "You must first create an Undo Point";
    case Restored::WrongSize:
        return "The restore point belongs to a theater of another size.";
    case Restored::Done:
    case Restored::Unchanged:
        break;
    }
    return {};
}

} // namespace vardenix
