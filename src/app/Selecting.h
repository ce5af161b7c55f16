#pragma once

#include "app/Land.h"
#include "app/Workspace.h"

#include <cstdint>

namespace vardenix {

// What is selected by other means than the mouse, and what the tools give to posts.
class Selecting : public WorkspacePart {
public:
    // Both are borrowed.
    Selecting(Workspace& workspace, Land& land);

    void All();
    void None();
    void Invert();
    void Hits();
    // Asks for the two heights.
    void BetweenHeights();
    // All that hangs together with the post of the last right click, in its tile or in
    // its kind of terrain.
    void ConnectedTile();
    void ConnectedKind();

    // Brush, rectangle and fill give grounds (or heights) from now on, or tiles again.
    void TogglePainting(Painting what);
    // The eraser leaves the tile of the post of the last right click.
    void EraseToPost();

private:
    void WindowsMade() override;
    void StorePlaces() override;
    template <typename SortOf>
    void Connected(SortOf sortOf);
    void FollowTools();

    Workspace& workspace_;
    Land& land_;
    FillLike like_ = FillLike::Tile; // that SortOf of the hand is for
};

} // namespace vardenix
