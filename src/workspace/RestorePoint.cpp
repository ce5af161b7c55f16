#include "workspace/RestorePoint.h"

#include "platform/BinaryReader.h"
#include "platform/FileNames.h"
#include "platform/OwnFolders.h"
#include "platform/RuntimeError.h"
#include "platform/StagedFile.h"

#include <algorithm>

namespace vardenix {

namespace {

// What clears the system's temporary folder may have taken ours along.
std::string PathOfPoint(const std::string& systemTempPath) {
    if (systemTempPath.empty())
        throw RuntimeError(ErrorNumber::PathNotFound,
                           "there is no folder for temporary files");
    KeepOwnTemporaryFolder(systemTempPath);
    return systemTempPath + "VXUndo.tmp";
}

} // namespace

void CreateRestorePoint(const Terrain& terrain, const std::string& systemTempPath) {
    StagedFile file(PathOfPoint(systemTempPath));
    file.Write(std::as_bytes(terrain.LxArr.Values()));
    file.Commit();
}

Restored RestoreFromPoint(Terrain& terrain, const std::string& systemTempPath) {
    const std::string path = PathOfPoint(systemTempPath);
    if (!FileExists(path))
        return Restored::NoPoint;
    const auto posts = std::as_writable_bytes(terrain.LxArr.Values());
    if (FileLength(path) != posts.size())
        return Restored::WrongSize;
    const FileBytes file = ReadWholeFile(path);
    if (file.size() != posts.size())
        return Restored::WrongSize;
    std::ranges::copy(file.Span(), posts.begin());
    return Restored::Done;
}

bool MayRestoreOldNumbers(Dialogs& dialogs) {
    return dialogs.MessageBox(
               "Tile numbers have changed in the BIN editor since the restore point was "
               "made, so its posts would show other tiles. Do you want to restore it all "
               "the same?",
               "Attention", BoxIcon::Warning, BoxButtons::YesNo) == BoxAnswer::Yes;
}

std::string RestoreMessage(Restored result) {
    switch (result) {
    case Restored::NoPoint:
        return "You must first create an Undo Point";
    case Restored::WrongSize:
        return "The restore point belongs to a theater of another size.";
    case Restored::Done:
        break;
    }
    return {};
}

} // namespace vardenix
