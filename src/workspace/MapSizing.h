#pragma once

#include "mapview/MapView.h"
#include "workspace/FirstLayout.h"

#include <cstdint>

namespace vardenix {

// How the picture of the map and its window follow one another.

// The picture fills a room, as a part of another window or a whole screen has it, or is
// the square of GridCells again. What makes the square stays as it is meanwhile.
class RoomFilling {
public:
    // Borrowed.
    explicit RoomFilling(MapView& view) : view_(view) {}

    // The picture gets as large as the room, at least a pixel. False when it is already.
    bool Fill(WindowSize room);
    // False when the picture is the square already.
    bool End();
    bool Fills() const { return view_.FillsRoom(); }
    // Whether the square is as large as when the room was first filled: a window that
    // comes back to its old size fits round it.
    bool SquareKept() const { return view_.SquareSide() == squareBefore_; }

private:
    MapView& view_;
    int32_t squareBefore_ = 0;
};

// The cells a side that the user means who has drawn the edges of a window so that its
// part for the picture went from `before` to `after`: whole ones, by the direction that
// was drawn farther, and no more than `room` has place for. Nobody means fewer than 2,
// the least: 0 then, and the window shows a part of the picture.
int16_t DrawnCells(const MapView& view, WindowSize before, WindowSize after,
                   WindowSize room);

} // namespace vardenix
