#include "program/DeskFile.h"

#include "files/FileNames.h"
#include "files/ProfileFile.h"
#include "files/StagedFile.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"

#include <algorithm>

namespace vardenix {

namespace {

std::string DeskPath(std::string_view appPath) {
    return std::string(appPath) + "Desk.ini";
}

std::string KeyOfRecent(size_t index) { return "THEATER" + std::to_string(index + 1); }

// A layout has more characters than a value of such a file.
constexpr size_t LayoutPiece = 700;

std::string KeyOfLayout(size_t index) { return "LAYOUT" + std::to_string(index + 1); }

// As one text for all ways to write the same path.
std::string Compared(const std::string& path) {
    std::string text = UpperCase(ReplaceAll(path, "\\", "/"));
    while (text.ends_with('/'))
        text.pop_back();
    return text;
}

} // namespace

Desk ReadDesk(std::string_view appPath) {
    Desk desk;
    const std::string path = DeskPath(appPath);
    if (!FileExists(path))
        return desk;
    const ProfileFile file = ReadProfileFile(path);
    for (size_t i = 0; i < MostRecent; ++i) {
        const std::string folder = file.Read("RECENT", KeyOfRecent(i));
        if (!folder.empty() && std::find(desk.Recent.begin(), desk.Recent.end(),
                                         folder) == desk.Recent.end())
            desk.Recent.push_back(folder);
    }
    if (file.Has("WINDOWS", "ONE_WINDOW"))
        desk.OneWindow = Val(file.Read("WINDOWS", "ONE_WINDOW")) != 0;
    if (file.Has("WINDOWS", "FOLDED"))
        desk.Folded = file.Read("WINDOWS", "FOLDED");
    if (file.Has("HAND", "CLIP_FIELDS"))
        desk.ClipFields = file.Read("HAND", "CLIP_FIELDS");
    if (file.Has("HAND", "EDGE_INSIDE"))
        desk.EdgeInside = Val(file.Read("HAND", "EDGE_INSIDE")) != 0;
    for (size_t i = 0; i < MostLayout / LayoutPiece; ++i)
        desk.Layout += file.Read("WINDOWS", KeyOfLayout(i));
    return desk;
}

std::string DeskText(const Desk& desk) {
    ProfileWriter file;
    for (size_t i = 0; i < desk.Recent.size(); ++i)
        file.Write("RECENT", KeyOfRecent(i), desk.Recent[i]);
    if (desk.OneWindow)
        file.Write("WINDOWS", "ONE_WINDOW", *desk.OneWindow ? "-1" : "0");
    if (desk.Folded)
        file.Write("WINDOWS", "FOLDED", *desk.Folded);
    if (desk.ClipFields)
        file.Write("HAND", "CLIP_FIELDS", *desk.ClipFields);
    if (desk.EdgeInside)
        file.Write("HAND", "EDGE_INSIDE", *desk.EdgeInside ? "-1" : "0");
    if (desk.Layout.size() <= MostLayout)
        for (size_t at = 0; at < desk.Layout.size(); at += LayoutPiece)
            file.Write("WINDOWS", KeyOfLayout(at / LayoutPiece),
                       desk.Layout.substr(at, LayoutPiece));
    return file.Text();
}

void WriteDesk(std::string_view appPath, const Desk& desk) {
    StagedFile file(DeskPath(appPath));
    file.WriteText(DeskText(desk));
    file.Commit();
}

std::string FolderOfTheater(const TheaterPaths& paths) {
    const std::string terrain = UpToLastSlash(paths.L2File);
    if (terrain.size() < 2)
        return {};
    const std::string folder = UpToLastSlash(terrain.substr(0, terrain.size() - 1));
    if (folder.size() < 2)
        return {};
    const auto stands = [&folder](const std::string& path, const char* where) {
        return Compared(path) == Compared(folder + where);
    };
    return stands(paths.L2File, "terrain/theater.l2") &&
                   stands(paths.BinFile, "texture/texture.bin") &&
                   stands(paths.MapFile, "terrain/theater.map") &&
                   stands(paths.DDSFolder, "texture/texture")
               ? folder.substr(0, folder.size() - 1)
               : std::string();
}

void NoteTheater(Desk& desk, const std::string& folder) {
    const bool oneLine = folder.find_first_of(std::string("\r\n\0", 3)) == folder.npos;
    if (folder.empty() || folder.size() > ProfileValueBytes || !oneLine)
        return;
    std::erase(desk.Recent, folder);
    desk.Recent.insert(desk.Recent.begin(), folder);
    desk.Recent.resize(std::min(desk.Recent.size(), MostRecent));
}

} // namespace vardenix
