#include "program/DeskFile.h"

#include "files/FileNames.h"
#include "files/ProfileFile.h"
#include "files/StagedFile.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace vardenix {

namespace {

std::string DeskPath(std::string_view appPath) {
    return std::string(appPath) + "Desk.ini";
}

std::string KeyOfRecent(size_t index) { return "THEATER" + std::to_string(index + 1); }

std::string KeyOfView(size_t index) { return "VIEW" + std::to_string(index + 1); }

std::optional<DeskView> ReadView(const std::string& text) {
    std::istringstream words(text);
    DeskView view;
    if (words >> view.X >> view.Y >> view.ZoomPosts && view.X >= 0 && view.Y >= 0 &&
        view.ZoomPosts >= 1)
        return view;
    return std::nullopt;
}

std::string ViewText(const DeskView& view) {
    return std::to_string(view.X) + " " + std::to_string(view.Y) + " " +
           std::to_string(view.ZoomPosts);
}

std::optional<int32_t> ReadNumber(const ProfileFile& file, const char* section,
                                  const char* key) {
    if (!file.Has(section, key))
        return std::nullopt;
    return ClampToInt32(Val(file.Read(section, key)));
}

void ReadHabits(const ProfileFile& file, Desk& desk) {
    desk.PanelHidden = ReadNumber(file, "WINDOWS", "PANEL_HIDDEN").value_or(0) != 0;
    if (const auto dark = ReadNumber(file, "WINDOWS", "DARK"))
        desk.Dark = *dark != 0;
    desk.Tool = file.Read("MAP", "TOOL");
    desk.BrushSize = ReadNumber(file, "MAP", "BRUSH_SIZE").value_or(0);
    desk.PaletteClass = ReadNumber(file, "PALETTE", "CLASS");
    desk.PaletteRow = ReadNumber(file, "PALETTE", "ROW").value_or(0);
    desk.Resume = file.Read("RECENT", "RESUME");
}

void WriteHabits(const Desk& desk, ProfileWriter& file) {
    if (desk.PanelHidden)
        file.Write("WINDOWS", "PANEL_HIDDEN", "-1");
    if (desk.Dark)
        file.Write("WINDOWS", "DARK", *desk.Dark ? "-1" : "0");
    if (!desk.Tool.empty())
        file.Write("MAP", "TOOL", desk.Tool);
    if (desk.BrushSize != 0)
        file.Write("MAP", "BRUSH_SIZE", std::to_string(desk.BrushSize));
    if (desk.PaletteClass) {
        file.Write("PALETTE", "CLASS", std::to_string(*desk.PaletteClass));
        file.Write("PALETTE", "ROW", std::to_string(desk.PaletteRow));
    }
}

// A layout has more characters than a value of such a file.
constexpr size_t LayoutPiece = 700;

std::string KeyOfLayout(size_t index) { return "LAYOUT" + std::to_string(index + 1); }

std::string SectionOfFeatures(size_t index) {
    return "FEATURES" + std::to_string(index + 1);
}

std::string KeyOfFile(size_t index) { return "FILE" + std::to_string(index + 1); }

int32_t NumberIn(const ProfileFile& file, const char* key, int32_t least, int32_t most) {
    return std::clamp(ClampToInt32(Val(file.Read("RELIEF", key))), least, most);
}

std::optional<ReliefLooks> ReadRelief(const ProfileFile& file) {
    if (!file.Has("RELIEF", "STRENGTH"))
        return std::nullopt;
    const auto isOn = [&file](const char* key) {
        return Val(file.Read("RELIEF", key)) != 0;
    };
    return ReliefLooks{.Shown = isOn("SHOWN"),
                       .Alone = isOn("ALONE"),
                       .Strength = NumberIn(file, "STRENGTH", 0, 100),
                       .Contours = isOn("CONTOURS"),
                       .Step = NumberIn(file, "STEP", 1, INT16_MAX)};
}

std::vector<FeaturesOfTheater> ReadFeatures(const ProfileFile& file) {
    std::vector<FeaturesOfTheater> all;
    for (size_t i = 0; i < MostRecent; ++i) {
        const std::string section = SectionOfFeatures(i);
        FeaturesOfTheater features{.Theater = file.Read(section, "THEATER"),
                                   .Files = {},
                                   .Shown = file.Read(section, "SHOWN")};
        for (size_t j = 0; j < MostFeatureFiles; ++j)
            if (const std::string path = file.Read(section, KeyOfFile(j)); !path.empty())
                features.Files.push_back(path);
        if (!features.Theater.empty() && !features.Files.empty())
            all.push_back(std::move(features));
    }
    return all;
}

void WriteRelief(const ReliefLooks& looks, ProfileWriter& file) {
    const auto flag = [&file](const char* key, bool on) {
        file.Write("RELIEF", key, on ? "-1" : "0");
    };
    flag("SHOWN", looks.Shown);
    flag("ALONE", looks.Alone);
    file.Write("RELIEF", "STRENGTH", std::to_string(looks.Strength));
    flag("CONTOURS", looks.Contours);
    file.Write("RELIEF", "STEP", std::to_string(looks.Step));
}

// A value that the file can hold.
bool FitsFile(const std::string& value) {
    return !value.empty() && value.size() <= ProfileValueBytes &&
           value.find_first_of(std::string("\r\n\0", 3)) == value.npos;
}

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
                                         folder) == desk.Recent.end()) {
            desk.Recent.push_back(folder);
            if (const auto view = ReadView(file.Read("RECENT", KeyOfView(i))))
                desk.Views[folder] = *view;
        }
    }
    ReadHabits(file, desk);
    if (file.Has("WINDOWS", "ONE_WINDOW"))
        desk.OneWindow = Val(file.Read("WINDOWS", "ONE_WINDOW")) != 0;
    if (file.Has("WINDOWS", "FOLDED"))
        desk.Folded = file.Read("WINDOWS", "FOLDED");
    if (file.Has("HAND", "CLIP_FIELDS"))
        desk.ClipFields = file.Read("HAND", "CLIP_FIELDS");
    if (file.Has("HAND", "EDGE_INSIDE"))
        desk.EdgeInside = Val(file.Read("HAND", "EDGE_INSIDE")) != 0;
    desk.History = Val(file.Read("WINDOWS", "HISTORY")) != 0;
    for (size_t i = 0; i < MostLayout / LayoutPiece; ++i)
        desk.Layout += file.Read("WINDOWS", KeyOfLayout(i));
    desk.Relief = ReadRelief(file);
    desk.Features = ReadFeatures(file);
    return desk;
}

std::string DeskText(const Desk& desk) {
    ProfileWriter file;
    for (size_t i = 0; i < desk.Recent.size(); ++i)
        file.Write("RECENT", KeyOfRecent(i), desk.Recent[i]);
    for (size_t i = 0; i < desk.Recent.size(); ++i)
        if (const auto view = desk.Views.find(desk.Recent[i]); view != desk.Views.end())
            file.Write("RECENT", KeyOfView(i), ViewText(view->second));
    if (!desk.Resume.empty())
        file.Write("RECENT", "RESUME", desk.Resume);
    if (desk.OneWindow)
        file.Write("WINDOWS", "ONE_WINDOW", *desk.OneWindow ? "-1" : "0");
    if (desk.Folded)
        file.Write("WINDOWS", "FOLDED", *desk.Folded);
    if (desk.ClipFields)
        file.Write("HAND", "CLIP_FIELDS", *desk.ClipFields);
    if (desk.EdgeInside)
        file.Write("HAND", "EDGE_INSIDE", *desk.EdgeInside ? "-1" : "0");
    if (desk.History)
        file.Write("WINDOWS", "HISTORY", "-1");
    WriteHabits(desk, file);
    if (desk.Layout.size() <= MostLayout)
        for (size_t at = 0; at < desk.Layout.size(); at += LayoutPiece)
            file.Write("WINDOWS", KeyOfLayout(at / LayoutPiece),
                       desk.Layout.substr(at, LayoutPiece));
    if (desk.Relief)
        WriteRelief(*desk.Relief, file);
    for (size_t i = 0; i < desk.Features.size(); ++i) {
        const FeaturesOfTheater& features = desk.Features[i];
        file.Write(SectionOfFeatures(i), "THEATER", features.Theater);
        file.Write(SectionOfFeatures(i), "SHOWN", features.Shown);
        for (size_t j = 0; j < features.Files.size(); ++j)
            file.Write(SectionOfFeatures(i), KeyOfFile(j), features.Files[j]);
    }
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
    if (!FitsFile(folder))
        return;
    std::erase(desk.Recent, folder);
    desk.Recent.insert(desk.Recent.begin(), folder);
    desk.Recent.resize(std::min(desk.Recent.size(), MostRecent));
}

void NoteFeatures(Desk& desk, FeaturesOfTheater features) {
    if (!FitsFile(features.Theater))
        return;
    std::erase_if(desk.Features, [&features](const FeaturesOfTheater& each) {
        return each.Theater == features.Theater;
    });
    std::erase_if(features.Files,
                  [](const std::string& path) { return !FitsFile(path); });
    features.Files.resize(std::min(features.Files.size(), MostFeatureFiles));
    if (features.Files.empty())
        return;
    desk.Features.insert(desk.Features.begin(), std::move(features));
    desk.Features.resize(std::min(desk.Features.size(), MostRecent));
}

const FeaturesOfTheater* FeaturesOf(const Desk& desk, const std::string& folder) {
    const auto found =
        std::ranges::find(desk.Features, folder, &FeaturesOfTheater::Theater);
    return found == desk.Features.end() ? nullptr : &*found;
}

} // namespace vardenix
