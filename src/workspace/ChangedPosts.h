#pragma once

#include "levels/Posts.h"
#include "levels/ValueRuns.h"
#include "mapview/MapView.h"
#include "program/Change.h"
#include "program/WorkspaceCommands.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace vardenix {

// Finest elevations along a side of a post.
constexpr int32_t HeightsPerPost = 4;

// Where a step has changed something, in posts counted from 0, also of the finest
// elevations.
struct ChangedPosts {
    PostBox Box;
    // Whether one of them lies in a part of the terrain, in the same coordinates.
    bool AnyIn = false;
};

// Adds up what stretches of a grid `width` squares a side have changed.
class ChangedPostsSum {
public:
    ChangedPostsSum(int32_t width, int32_t squaresPerPost, const PostBox& part)
        : width_(width), perPost_(squaresPerPost), part_(part) {}

    // A stretch may go on over the ends of rows.
    void Add(int32_t serial, int32_t count);
    template <typename Value>
    void Add(const std::vector<ValueRun<Value>>& runs) {
        for (const ValueRun<Value>& run : runs)
            Add(run.Serial, run.Count);
    }
    const ChangedPosts& Result() const { return changed_; }

private:
    static constexpr int32_t Far = std::numeric_limits<int32_t>::max();

    int32_t width_;
    int32_t perPost_;
    PostBox part_;
    ChangedPosts changed_{{Far, Far, -1, -1}, false};
};

// Where a change has changed posts or heights, on a terrain `mapWidth` posts a side;
// nothing for one that has changed none.
std::optional<ChangedPosts> PlaceOf(const Change& change, int32_t mapWidth,
                                    const PostBox& part);

// The posts of the view.
PostBox InView(const MapView& view);

// A place of which nothing is in view is scrolled to: its lower left post comes where
// every command puts its post.
void ScrollToHidden(const std::optional<ChangedPosts>& changed,
                    WorkspaceCommands& workspace);

} // namespace vardenix
