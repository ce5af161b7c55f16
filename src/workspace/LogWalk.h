#pragma once

#include "levels/Posts.h"
#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"

#include <cstdint>
#include <optional>

namespace vardenix {

// One step through the log of changes, back or on: the line under the map tells which,
// and what lies out of view is scrolled to. Nothing where there is no such step. The
// place of the step, in posts counted from 0, to be framed for a moment.
std::optional<PostBox> WalkBack(ChangeLog& changes, const MapView& view, int32_t mapWidth,
                                WorkspaceCommands& workspace);
std::optional<PostBox> WalkAgain(ChangeLog& changes, const MapView& view,
                                 int32_t mapWidth, WorkspaceCommands& workspace);

// "Taken back: Paint 25 posts"
std::string WalkWords(const Change& change, Walk walk);

// The frame round the place of a step, above the map.
class StepFrame : public MarkLayer {
public:
    std::optional<PostBox> Box; // posts counted from 0; none is drawn at first

    void DrawMarks(DrawingSurface& surface, const MapView& view) override;
};

} // namespace vardenix
