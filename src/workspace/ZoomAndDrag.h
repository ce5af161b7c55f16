#pragma once

#include "mapview/MapLayout.h"
#include "mapview/MapView.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vardenix {

// Where the view begins when ZoomPosts becomes `zoomPosts` and the post under a place of
// the picture stays there, as far as the edges of the terrain allow.
PostPlace ZoomedAt(const MapView& view, int16_t zoomPosts, double x, double y,
                   int32_t mapWidth);
// ZoomedAt the middle of the view; there and back again leads to the same place.
PostPlace ZoomedAtMiddle(const MapView& view, int16_t zoomPosts, int32_t mapWidth);

// ZoomPosts after notches of the wheel, `backward` negative for forward ones, which lead
// nearer: one post each, and beyond the end of ZoomScroll a quarter more; from 1 to
// `most`.
int16_t ZoomAfterWheel(int16_t zoomPosts, int32_t backward, int32_t most);
// ZoomPosts that show a whole theater at once; no fewer than ZoomScroll has.
int16_t MostZoomPosts(const MapView& view, int32_t mapWidth);
// The fewest that do, from its lower left corner on.
int16_t ZoomOfWhole(const MapView& view, int32_t mapWidth);

// Where the view begins when the picture has been drawn along by some pixels, to the
// right and down, since `view` was shown.
PostPlace Dragged(const MapView& view, double right, double down, int32_t mapWidth);

// Pixels that a button may slip without being a drag.
constexpr double ClickSlip = 4;

// The map goes along with the pointer while a button is held. Positions are pixels of
// anything that stands still, as the screen does.
class MapPanning {
public:
    MapPanning(const MapView& view, double x, double y) : from_(view), x_(x), y_(y) {}

    // Where the view begins with the pointer there; nothing as long as the button may
    // only have slipped.
    std::optional<PostPlace> To(double x, double y, int32_t mapWidth);
    bool Moved() const { return moved_; }

private:
    MapView from_;
    double x_;
    double y_;
    bool moved_ = false;
};

// Turns of a wheel or a touchpad, which come in parts of a notch.
class WheelSum {
public:
    static constexpr int32_t Notch = 120; // eighths of a degree

    // The whole notches that have come together with `eighths` more; the rest is kept.
    int32_t NotchesWith(int32_t eighths);

private:
    int32_t rest_ = 0;
};

// "3 posts a cell".
std::string ZoomWords(int32_t zoomPosts);

} // namespace vardenix
