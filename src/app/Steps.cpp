#include "app/Steps.h"

#include "app/Workspace.h"
#include "platform/windows/RunTimeBarrier.h"
#include "workspace/ChangedPosts.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

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

void Steps::GoTo(size_t position) {
    ChangeLog& changes = workspace_.State().Changes;
    if (position == changes.Position() || position > changes.Count())
        return;
    const Walk walk = position < changes.Position() ? Walk::Back : Walk::Again;
    workspace_.PaintOnce([&] {
        while (position != changes.Position() && CanGo(walk))
            walk == Walk::Back ? changes.Back() : changes.Again();
    });
    workspace_.Tell(position == 0 ? "Before all changes of the history"
                                  : "Back at: " + changes.At(position - 1).Name);
}

void Steps::ShowPlace(size_t position) {
    ChangeLog& changes = workspace_.State().Changes;
    if (position == 0 || position > changes.Count())
        return;
    const auto place =
        PlaceOf(changes.Whole(position - 1), workspace_.State().Terrain.MapWidth,
                InView(workspace_.View()));
    if (!place)
        return workspace_.Tell("This change has no place on the map");
    frame_.Box = place->Box;
    if (place->AnyIn)
        workspace_.RefreshPicArray();
    else
        ScrollToHidden(place, workspace_);
    frameShown_.start();
}

// What can be taken back has changed. Who knows more of it has the last word.
void Steps::Recorded(const Change& change) {
    workspace_.Tell(change.Name);
    workspace_.Map().ShowPost();
    workspace_.CommandsChanged();
}

void Steps::Walked(const Change& change, Walk /*walk*/) {
    if (change.Touches(Paper::Catalogue) || change.Pictures)
        workspace_.CatalogueWalked();
    if (change.OtherHeights)
        workspace_.Panel().SetL0FileName(workspace_.State().Terrain.Elevations.Path);
    // A single edit leaves the preview alone, as the edit itself does.
    if (change.SingleEdit == 0 && change.Touches(Paper::Level2))
        workspace_.RemakePreview();
    workspace_.Map().ShowPost();
    workspace_.CommandsChanged();
}

} // namespace vardenix
