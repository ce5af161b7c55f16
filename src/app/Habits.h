#pragma once

#include "platform/windows/Theme.h"
#include "program/DeskFile.h"

namespace vardenix {

class Workspace;

// What a user has at hand and sees at the end of a run comes back at the next start.

Scheme SchemeOf(const Desk& desk);

// Tool, brush and palette of the last run; no tile is chosen. And the view of a theater
// that was opened as one of the recent ones.
void TakeUpHabits(Workspace& workspace, const Desk& desk);
// The theater that was opened is the first of the recent ones.
void NoteOpened(const Workspace& workspace, Desk& desk);
// The palette's kind and place belong to windows that have been laid out.
void NoteHabits(const Workspace& workspace, Desk& desk);

} // namespace vardenix
