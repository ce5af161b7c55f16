#pragma once

#include "app/WorkspacePart.h"
#include "program/ChangeLog.h"
#include "workspace/LogWalk.h"

#include <QTimer>

#include <cstddef>

namespace vardenix {

class Workspace;

// Steps through the log of changes by Ctrl+Z and Ctrl+Y, and what of the workspace
// follows them: the frame round the place, palette and preview.
class Steps : public WorkspacePart, private ChangeFollower {
public:
    // Borrowed.
    explicit Steps(Workspace& workspace);

    bool CanGo(Walk walk) const;
    void Go(Walk walk);
    // To the state after so many changes, however far that is.
    void GoTo(size_t position);
    // Where the change before that state has happened, as a step shows it.
    void ShowPlace(size_t position);

private:
    void AddLayers(MapLayers& layers) override { layers.Marks.push_back(&frame_); }
    void Recorded(const Change& change) override;
    void Walked(const Change& change, Walk walk) override;

    Workspace& workspace_;
    StepFrame frame_;
    QTimer frameShown_; // runs for as long as the frame is seen
};

} // namespace vardenix
