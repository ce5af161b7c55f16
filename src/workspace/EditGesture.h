#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "mapview/PictureBox.h"
#include "program/WorkspaceCommands.h"
#include "workspace/HeightShaping.h"
#include "workspace/MapInteraction.h"
#include "workspace/PointerTool.h"
#include "workspace/UndoPoints.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// What the left button does with the tool in hand, from its press to its release: a
// stroke of the brush, a rectangle, a fill, a pick. Each is one step of undo. Positions
// are pixels on the picture; the mouse may leave it while the button is held.
class EditGesture {
public:
    // All are borrowed.
    EditGesture(Terrain& terrain, const MapView& view, MapInteraction& interaction,
                UndoPoints& undo, WorkspaceCommands& workspace)
        : terrain_(terrain), view_(view), interaction_(interaction), undo_(undo),
          workspace_(workspace) {}

    // A brush one post wide edits the post as a click always has. The tile number that
    // was picked, when that is what the press did.
    std::optional<int32_t> Begin(double x, double y, GestureKeys keys);
    // The posts of level 2 that have changed and are to be painted anew, from 0; nothing
    // when none has. While the program moves the view nothing is done.
    std::optional<PostBox> Move(double x, double y);
    void End(double x, double y);
    // The button is let go where nothing more shall come of it: no rectangle then.
    void Cancel();
    // A button is held for one of the tools that go on with it.
    bool Goes() const { return stroke_ || corner_; }

    // What a release would fill: posts from 0, or heights; and on the picture.
    std::optional<PostBox> Squares() const;
    std::optional<PictureBox> Preview() const;

private:
    struct Position {
        double X = 0;
        double Y = 0;
    };

    int32_t GridWidth() const;
    PostPlace SquareAt(Position position) const;
    bool CanEdit() const {
        return heights_ || interaction_.SelectedTile != -1 ||
               interaction_.Tool == MapTool::Eraser;
    }
    // Of some squares those that the selection lets be changed.
    std::vector<RowSpan> Bounded(const std::vector<RowSpan>& spans) const;
    bool MayChange(PostPlace post) const {
        return interaction_.Hand.Selected.Empty() || interaction_.Hand.Selected.Has(post);
    }
    std::optional<int32_t> Pick(Position position);
    void PaintPost(PostPlace post);
    std::optional<PostBox> Brush(const std::vector<PostPlace>& line, bool begins);
    void Fill(PostPlace start, bool everywhere);
    void FillRectangle(PostPlace opposite);
    PostBox FillLimits(bool everywhere) const;
    // Carries out what the tool makes of some squares. The posts that have changed.
    std::optional<PostBox> Edit(const std::vector<RowSpan>& spans, bool goesOn);
    std::optional<PostBox> EditTiles(const std::vector<RowSpan>& spans, bool goesOn);
    std::optional<PostBox> EditHeights(const std::vector<RowSpan>& spans, bool goesOn);
    void TellChanged();

    Terrain& terrain_;
    const MapView& view_;
    MapInteraction& interaction_;
    UndoPoints& undo_;
    WorkspaceCommands& workspace_;

    bool heights_ = false; // what this gesture edits
    bool stroke_ = false;
    Position last_;                   // of the stroke
    std::optional<PostPlace> corner_; // of the rectangle
    PostPlace opposite_;
    HeightsBefore before_; // the stroke
    int64_t changed_ = 0;  // squares, by this gesture
};

// The outline of posts, or of heights, on the picture.
PictureBox SquaresOnPicture(const MapView& view, const PostBox& squares, bool heights);

// The part of a line from one position of the mouse to another that lies on the picture
// of a view; false when none does.
bool CutToPicture(const MapView& view, double& x1, double& y1, double& x2, double& y2);

} // namespace vardenix
