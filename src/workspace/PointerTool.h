#pragma once

#include "levels/Posts.h"
#include "mapview/DrawingSurface.h"

#include <optional>
#include <vector>

namespace vardenix {

// Held while the left button was pressed.
struct GestureKeys {
    bool Shift = false;
    bool Alt = false;
    bool Control = false;
};

// A tool that has the left button from its press to its release. Positions are pixels on
// the picture; the mouse may leave it while the button is held. What is given back are
// posts of level 2, from 0, that are to be painted anew; nothing when there are none.
class PointerTool {
public:
    PointerTool() = default;
    PointerTool(const PointerTool&) = delete;
    PointerTool& operator=(const PointerTool&) = delete;
    virtual ~PointerTool() = default;

    virtual std::optional<PostBox> Begin(double x, double y, GestureKeys keys) = 0;
    virtual std::optional<PostBox> Move(double x, double y) = 0;
    virtual std::optional<PostBox> End(double x, double y) = 0;
    // Given up: what the log does not know of yet is taken back.
    virtual std::optional<PostBox> Cancel() = 0;
    // It goes on with the button held; or waits for another click.
    virtual bool Goes() const = 0;
    virtual bool Waits() const { return false; }

    // What a release would take: posts, or a line that is drawn on the picture.
    virtual std::optional<PostBox> Frame() const { return std::nullopt; }
    virtual std::vector<PicturePoint> Line() const { return {}; }
};

} // namespace vardenix
