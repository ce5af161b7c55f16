#include "app/Steps.h"

#include "app/Workspace.h"
#include "platform/windows/RunTimeBarrier.h"

namespace vardenix {

namespace {

constexpr int FrameMilliseconds = 1500;

} // namespace

Steps::Steps(Workspace& workspace) : workspace_(workspace) {
    workspace.Join(*this);
    workspace.State().Changes.Follow(*this);
    frameShown_.setSingleShot(true);
    frameShown_.setInterval(FrameMilliseconds);
    OnSignal(&frameShown_, &QTimer::timeout, &frameShown_, [this] {
        frame_.Box.reset();
        workspace_.RefreshPicArray();
    });
}

bool Steps::CanGo(Walk walk) const {
    const ChangeLog& changes = workspace_.State().Changes;
    return (walk == Walk::Back ? changes.NextBack() : changes.NextAgain()) != nullptr;
}

void Steps::Go(Walk walk) {
    if (WalkLog(workspace_.State().Changes, walk, workspace_.View(),
                workspace_.State().Terrain.MapWidth, frame_, workspace_))
        frameShown_.start();
}

// What can be taken back has changed.
void Steps::Recorded(const Change& /*change*/) { workspace_.CommandsChanged(); }

void Steps::Walked(const Change& change, Walk /*walk*/) {
    if (change.Touches(Paper::Catalogue) || change.Pictures)
        workspace_.CatalogueWalked();
    // A single edit leaves the preview alone, as the edit itself does.
    if (change.SingleEdit == 0 && change.Touches(Paper::Level2))
        workspace_.RemakePreview();
    workspace_.CommandsChanged();
}

} // namespace vardenix
