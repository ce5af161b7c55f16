#include "workspace/LogWalk.h"

#include "mapview/PictureBox.h"
#include "workspace/ChangedPosts.h"

namespace vardenix {

namespace {

constexpr uint32_t FrameColor = 0x00FFFF; // yellow

} // namespace

bool WalkLog(ChangeLog& changes, Walk walk, const MapView& view, int32_t mapWidth,
             StepFrame& frame, WorkspaceCommands& workspace) {
    const bool back = walk == Walk::Back;
    if ((back ? changes.NextBack() : changes.NextAgain()) == nullptr)
        return false;
    const Change& change =
        changes.Whole(back ? changes.Position() - 1 : changes.Position());
    const auto place = PlaceOf(change, mapWidth, InView(view));
    const std::string words = WalkWords(change, walk);
    frame.Box.reset();
    if (place)
        frame.Box = place->Box;
    back ? changes.Back() : changes.Again();
    ScrollToHidden(place, workspace);
    workspace.Tell(words);
    return true;
}

std::string WalkWords(const Change& change, Walk walk) {
    return (walk == Walk::Back ? "Taken back: " : "Done again: ") + change.Name;
}

void StepFrame::DrawMarks(DrawingSurface& surface, const MapView& view) {
    if (!Box)
        return;
    const PictureBox frame = BoxOnPicture(view, *Box);
    surface.SetPen(FrameColor, 2);
    surface.SetFill(FillStyle::None, 0);
    surface.Rectangle({frame.LowerLeft.X, frame.UpperRight.Y},
                      {frame.UpperRight.X, frame.LowerLeft.Y});
}

} // namespace vardenix
