#pragma once

#include "levels/Posts.h"
#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"

#include <cstdint>
#include <optional>

namespace vardenix {

// The frame round the place of a step, above the map.
class StepFrame : public MarkLayer {
public:
    std::optional<PostBox> Box; // posts counted from 0; none is drawn at first

    void DrawMarks(DrawingSurface& surface, const MapView& view) override;
};

// One step through the log of changes, back or on: the line under the map tells which,
// what lies out of view is scrolled to, and the frame lies round its place from then on.
// False, and nothing done, where there is no such step.
bool WalkLog(ChangeLog& changes, Walk walk, const MapView& view, int32_t mapWidth,
             StepFrame& frame, WorkspaceCommands& workspace);

// "Taken back: Paint 25 posts"
std::string WalkWords(const Change& change, Walk walk);

} // namespace vardenix
