#include "app/Earth.h"

#include "app/TellErrors.h"
#include "files/FileNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "world/Degrees.h"
#include "world/KnownPlace.h"
#include "world/PlaceFile.h"
#include "world/windows/FrmTheaterPlace.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

namespace {

constexpr const char* PlaceFilter = "Places of theaters | *.ini";
constexpr const char* ToldByYou = "As you told it; it is kept in your own data.";
constexpr const char* GuessedOfMap =
    "Guessed from theater.map; tell it better, and save it.";

} // namespace

Earth::Earth(Workspace& workspace) : workspace_(workspace) { workspace.Join(*this); }

Earth::~Earth() = default;

// The other program knows paths as the disk has them only.
WorldHelper Earth::Helper() const {
    return OwnWorldHelper(
        (RealPath(workspace_.State().Folders.TempFolder) / "").string());
}

TheaterPlace Earth::Place() const {
    const ProgramState& state = workspace_.State();
    return KnownPlace(state.Terrain.LFilename, state.MapFileRecord);
}

RasterWish::Where Earth::Whole(const TheaterPlace& place) const {
    const int32_t last = workspace_.State().Terrain.MapWidth - 1;
    return {place.System, EdgesOf(place, {0, 0, last, last})};
}

std::string Earth::PlaceWords() const {
    try {
        const TheaterPlace place = Place();
        const auto corners = Helper().CornersOf(Whole(place));
        const auto corner = [&corners](const char* name, size_t i) {
            return name + (" " + DegreesWords(corners.at(i)));
        };
        return std::string(place.IsGuess ? "Guessed from theater.map:"
                                         : "As you told it:") +
               "\n" + corner("NW", 2) + "   " + corner("NE", 3) + "\n" + corner("SW", 0) +
               "   " + corner("SE", 1);
    } catch (const RuntimeError& error) {
        return error.Detail();
    }
}

void Earth::WindowsMade() {
    workspace_.Map().TellPlaces(
        [this](PostPlace place, bool height) { return WordsAt(place, height); });
    workspace_.Panel().TakePlaces([this](const std::string& text) { return Go(text); });
}

void Earth::TheaterOpened() { TakeTold(); }

void Earth::TakeTold() {
    grid_.reset();
    try {
        if (const auto place = ToldPlace(workspace_.State().Terrain.LFilename))
            grid_.emplace(Helper().GridOf(Whole(*place), EarthGrid::Side));
    } catch (const RuntimeError& error) {
        workspace_.Log().WriteLog(error.what());
        workspace_.Tell(error.Detail());
    }
    workspace_.Panel().AllowPlaces(grid_.has_value());
}

std::string Earth::WordsAt(PostPlace place, bool height) const {
    if (!grid_)
        return {};
    const Terrain& terrain = workspace_.State().Terrain;
    const double width = height ? terrain.Elevations.EMapWidth : terrain.MapWidth;
    return DegreesWords(grid_->At({(place.X + 0.5) / width, (place.Y + 0.5) / width}));
}

bool Earth::Go(const std::string& text) {
    const auto point = grid_ ? DegreesOf(text) : std::nullopt;
    if (!point)
        return false;
    const auto part = grid_->Find(*point);
    if (!part) {
        workspace_.Tell(DegreesWords(*point) + " does not lie in this theater");
        return true;
    }
    const int32_t width = workspace_.State().Terrain.MapWidth;
    const auto x = static_cast<int32_t>(part->Across * width);
    const auto y = static_cast<int32_t>(part->Up * width);
    const MapView& view = workspace_.View();
    workspace_.ScrollTo(x - view.ViewColumns() / 2, y - view.ViewRows() / 2);
    workspace_.PositionChanged();
    workspace_.Tell(DegreesWords(*point) + " is post " + std::to_string(x) + ", " +
                    std::to_string(y));
    return true;
}

FrmTheaterPlace& Earth::Window() {
    if (!window_) {
        window_ = std::make_unique<FrmTheaterPlace>(workspace_.State().Terrain);
        KeepOverMap(*window_, workspace_.Windows());
        PlaceTool(*window_, {}, workspace_.Windows(), Standing::Seen);
        FrmTheaterPlace* window = window_.get();
        OnSignal(window, &FrmTheaterPlace::CornersWanted, window,
                 [this] { TellErrors(workspace_, [this] { ShowCorners(); }); });
        OnSignal(window, &FrmTheaterPlace::SaveWanted, window,
                 [this] { TellErrors(workspace_, [this] { Save(); }); });
        OnSignal(window, &FrmTheaterPlace::ImportWanted, window,
                 [this] { TellErrors(workspace_, [this] { ImportPlace(); }); });
        OnSignal(window, &FrmTheaterPlace::ExportWanted, window,
                 [this] { TellErrors(workspace_, [this] { ExportPlace(); }); });
    }
    return *window_;
}

void Earth::ShowPlace() {
    FrmTheaterPlace& window = Window();
    FillWindow();
    window.show();
    window.raise();
    window.activateWindow();
}

// A theater.map that tells nothing leaves the fields to the user.
void Earth::FillWindow() {
    try {
        const TheaterPlace place = Place();
        Window().ShowPlace(place, place.IsGuess ? GuessedOfMap : ToldByYou);
        ShowCorners();
    } catch (const RuntimeError& error) {
        Window().Tell(QString::fromStdString(error.Detail()));
    }
}

void Earth::ShowCorners() {
    const TheaterPlace place = Window().Place();
    RequirePlace(place);
    Window().ShowCorners(Helper().CornersOf(Whole(place)));
}

// A system that nobody knows is not kept.
void Earth::Save() {
    const TheaterPlace place = Window().Place();
    ShowCorners();
    WritePlace(place, PlaceFileOf(workspace_.State().Terrain.LFilename));
    FillWindow();
    Window().Tell("Saved.");
    TakeTold();
    workspace_.Map().ShowPost();
}

void Earth::ImportPlace() {
    const std::string path =
        workspace_.Platform().Dialogs.OpenFile({"Import a place", PlaceFilter}).Path;
    const auto place = ReadPlace(path);
    if (!place)
        throw RuntimeError(ErrorNumber::FileNotFound, ShownPath(path));
    Window().ShowPlace(*place, QString::fromStdString("From " + AfterLastSlash(path) +
                                                      ", not yet saved."));
    ShowCorners();
}

void Earth::ExportPlace() {
    const TheaterPlace place = Place();
    const std::string path =
        workspace_.Platform().Dialogs.SaveFile({"Export the place", PlaceFilter}).Path;
    WritePlace(place, path);
    Window().Tell(QString::fromStdString(AfterLastSlash(path) + " written."));
}

void Earth::ShowWindows(bool workspaceShown) {
    if (window_ && !workspaceShown)
        window_->hide();
}

} // namespace vardenix
