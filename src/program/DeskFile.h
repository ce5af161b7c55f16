#pragma once

#include "program/TheaterOpening.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

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
};

constexpr size_t MostRecent = 9;
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

} // namespace vardenix
