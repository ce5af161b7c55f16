#include "program/Browsing.h"

#include "files/FileNames.h"
#include "texts/RuntimeError.h"

#include <utility>

namespace vardenix {

namespace {

// The files of a theater's folder as the disk has them.
TheaterPaths PathsOnDisk(const std::string& folder) {
    TheaterPaths paths = PathsOfTheater(folder, "");
    for (std::string* path : {&paths.L2File, &paths.BinFile, &paths.MapFile})
        *path = TextOfPath(RealPathToRead(*path));
    paths.DDSFolder = TextOfPath(RealPath(paths.DDSFolder, PathKind::Folder)) + "/";
    return paths;
}

std::string FolderAbove(const std::string& path) {
    std::string above = UpToLastSlash(path);
    while (above.size() > 1 && (above.back() == '/' || above.back() == '\\'))
        above.pop_back();
    return above;
}

// A folder that may not be looked at suggests nothing.
bool IsThere(bool (*there)(std::string_view), const std::string& path) {
    try {
        return there(path);
    } catch (const RuntimeError&) {
        return false;
    }
}

// Where the dialogs behind the first one begin.
TheaterPaths Suggested(const std::string& l2File, const TheaterPaths& shown) {
    TheaterPaths suggested = shown;
    try {
        const TheaterPaths found = PathsOnDisk(FolderAbove(FolderAbove(l2File)));
        if (IsThere(FileExists, found.BinFile))
            suggested.BinFile = found.BinFile;
        if (IsThere(FileExists, found.MapFile))
            suggested.MapFile = found.MapFile;
        if (IsThere(FolderExists, found.DDSFolder))
            suggested.DDSFolder = found.DDSFolder;
    } catch (const RuntimeError&) {
        return shown;
    }
    return suggested;
}

} // namespace

void BrowseTheaterPaths(TheaterPaths& paths, Configuration& configuration,
                        Dialogs& dialogs, const std::function<void()>& show) {
    const auto take = [&show](std::string& shown, std::string& stored,
                              const std::string& path) {
        shown = path;
        stored = path;
        show();
    };
    const auto open = [&dialogs](const char* title, const char* filter,
                                 const std::string& current) {
        return dialogs.OpenFile({title, filter, current}).Path;
    };
    try {
        const std::string oldL2 = paths.L2File;
        take(paths.L2File, configuration.L2File,
             open("Open theater's L2 file...", "L2 Files | *.l2", oldL2));
        const TheaterPaths begin =
            paths.L2File == oldL2 ? paths : Suggested(paths.L2File, paths);
        take(paths.BinFile, configuration.BinFile,
             open("Open theater's Texture.bin file...", "Bin Files | *.bin",
                  begin.BinFile));
        take(paths.MapFile, configuration.MapFile,
             open("Open theater's MAP file...", "MAP Files | *.map", begin.MapFile));
        const auto folder = dialogs.Folder("Select the DDS folder.", begin.DDSFolder);
        if (folder && !folder->empty())
            take(paths.DDSFolder, configuration.DdsPath, WithTrailingSlash(*folder));
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            throw;
    }
}

std::string TheaterFolderOf(const std::string& dropped) {
    const std::string folder = FolderExists(dropped) ? TextOfPath(PathAsItStands(dropped))
                                                     : FolderAbove(dropped);
    for (const std::string& each : {folder, FolderAbove(folder)})
        if (FileExists(PathsOnDisk(each).L2File))
            return each;
    throw RuntimeError(ErrorNumber::FileNotFound,
                       "There is no theater in " + dropped +
                           ": a theater's folder holds terrain and texture, and "
                           "terrain a theater.L2.");
}

void TakeTheaterFolder(const std::string& dropped, TheaterPaths& paths,
                       Configuration& configuration, const std::function<void()>& show) {
    paths = PathsOnDisk(TheaterFolderOf(dropped));
    configuration.L2File = paths.L2File;
    configuration.BinFile = paths.BinFile;
    configuration.MapFile = paths.MapFile;
    configuration.DdsPath = paths.DDSFolder;
    show();
}

} // namespace vardenix
