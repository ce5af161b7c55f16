#pragma once

#include "program/TheaterOpening.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// What the map shows: its lower left post, from 0, and posts a cell.
struct DeskView {
    int32_t X = 0;
    int32_t Y = 0;
    int16_t ZoomPosts = 1;

    friend bool operator==(const DeskView&, const DeskView&) = default;
};

// The relief and the contour lines of the map, as the user has left them.
struct ReliefLooks {
    bool Shown = false;
    bool Alone = false;
    int32_t Strength = 60; // percent, 0 to 100
    bool Contours = false;
    int32_t Step = 500; // feet, at least 1

    bool operator==(const ReliefLooks&) const = default;
};

// Feature files that are loaded again when a theater opens, and what is shown of them.
struct FeaturesOfTheater {
    std::string Theater; // its folder, as in Desk::Recent
    std::vector<std::string> Files;
    std::string Shown; // the kinds, by their words in feature files, with blanks between
};

// What the program remembers beside the settings, in a file of its own: older versions
// write VX.ini whole, and would lose what they do not know.
struct Desk {
    // Folders of the theaters opened last, UTF-8 without a slash at the end, the newest
    // first; each is there once.
    std::vector<std::string> Recent;
    // All windows of the workspace in one; nothing until a run has stored it. And how its
    // parts lie, as letters and digits of the toolkit's own, empty until it has been
    // used.
    std::optional<bool> OneWindow;
    std::string Layout;
    // The frames of the panel that are folded, by their names, with a blank between them;
    // nothing until the user has folded one.
    std::optional<std::string> Folded;
    // What comes along with copied posts, a letter for each field (T, E, P, 1, 2), and
    // whether grounds are painted with their edge inside; nothing until a run has stored
    // it.
    std::optional<std::string> ClipFields;
    std::optional<bool> EdgeInside;
    bool History = false;     // its window is open
    bool PanelHidden = false; // in the one window
    std::optional<bool> Dark; // the user's choice; nothing follows the desktop

    // The map's tool as this file calls it ("brush", ...), and posts along a side of the
    // brush; 0 where none was stored.
    std::string Tool;
    int32_t BrushSize = 0;
    // The kind of tiles in the palette, and the row that it was scrolled to.
    std::optional<int32_t> PaletteClass;
    int32_t PaletteRow = 0;

    // What was seen last of those theaters, by their folders.
    std::map<std::string, DeskView> Views;
    // The folder of the theater that this view is wanted of at the next opening.
    std::string Resume;
    // Nothing until the user has changed one of them.
    std::optional<ReliefLooks> Relief;
    std::vector<FeaturesOfTheater> Features; // the newest first, each theater once
};

constexpr size_t MostRecent = 9;
constexpr size_t MostFeatureFiles = 40; // of a theater
// A longer layout is not kept.
constexpr size_t MostLayout = 5600; // characters

// Desk.ini in the folder `appPath`; nothing remembered without the file. Any bytes are
// accepted. Errors as of ReadWholeFile but 53.
Desk ReadDesk(std::string_view appPath);
// Whole, or not at all: errors as of StagedFile.
void WriteDesk(std::string_view appPath, const Desk& desk);
// The bytes that WriteDesk writes.
std::string DeskText(const Desk& desk);

// The folder that all four files of an opened theater lie in where a theater has them, so
// that it can be opened by that folder; empty when they lie elsewhere. `paths` are real.
std::string FolderOfTheater(const TheaterPaths& paths);

// The theater comes first in the list; the oldest falls out of a list that is full. A
// folder that the file could not hold is passed over.
void NoteTheater(Desk& desk, const std::string& folder);

// The same for its features; without files they are forgotten.
void NoteFeatures(Desk& desk, FeaturesOfTheater features);
// Null for a theater that has none.
const FeaturesOfTheater* FeaturesOf(const Desk& desk, const std::string& folder);

} // namespace vardenix
