#pragma once

#include "app/Workspace.h"
#include "world/EarthGrid.h"

#include <memory>
#include <optional>
#include <string>

namespace vardenix {

class FrmTheaterPlace;

// Where the theater lies on the earth: its window, and what map and panel tell of it once
// the user has told a place.
class Earth : public WorkspacePart {
public:
    // Borrowed.
    explicit Earth(Workspace& workspace);
    ~Earth() override;

    void ShowPlace();
    // As told or guessed; errors of KnownPlace.
    TheaterPlace Place() const;
    // Who has told it and its four corners, on three lines, or why there is none. Nothing
    // is thrown.
    std::string PlaceWords() const;
    // The program that knows maps, with this run's scratch folder.
    WorldHelper Helper() const;
    // The box of all posts in units of the place's system.
    RasterWish::Where Whole(const TheaterPlace& place) const;

private:
    void WindowsMade() override;
    void TheaterOpened() override;
    void ShowWindows(bool workspaceShown) override;

    FrmTheaterPlace& Window();
    void FillWindow();
    void ShowCorners();
    void Save();
    void ImportPlace();
    void ExportPlace();

    // The read-out follows the place that was told.
    void TakeTold();
    std::string WordsAt(PostPlace place, bool height) const;
    bool Go(const std::string& text);

    Workspace& workspace_;
    std::optional<EarthGrid> grid_; // of a place that was told
    std::unique_ptr<FrmTheaterPlace> window_;
};

} // namespace vardenix
