#pragma once

#include "levels/PostDelta.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vardenix {

// Posts of level 2 that a gesture shows as they are to become, while its button is held:
// the log does not know of them until they are kept.
class PendingPosts {
public:
    // All are borrowed.
    PendingPosts(Terrain& terrain, ChangeLog& changes, WorkspaceCommands& workspace)
        : terrain_(terrain), changes_(changes), workspace_(workspace) {}

    // In place of what was shown before, which TakeBack has to take back before the
    // delta is computed. What has changed on the terrain since the last look.
    std::optional<PostBox> Show(PostDelta delta);
    // The posts are as the gesture has found them.
    void TakeBack();
    // What TakeBack has changed and no Show has given yet.
    std::optional<PostBox> TakenBack();
    // One named entry of the log; false for nothing.
    bool Keep(const std::string& name);

    const PostDelta& Delta() const { return delta_; }

private:
    Terrain& terrain_;
    ChangeLog& changes_;
    WorkspaceCommands& workspace_;
    PostDelta delta_;
    std::optional<PostBox> stale_; // on the screen
};

// How many posts a delta changes, and the box round them.
int64_t CountOf(const PostDelta& delta);
std::optional<PostBox> BoxOf(const PostDelta& delta, int32_t width);
std::optional<PostBox> BoxRound(const std::optional<PostBox>& a,
                                const std::optional<PostBox>& b);

// Carries out a delta as one named entry of the log; false, and nothing done, for an
// empty one.
bool ChangePosts(Terrain& terrain, ChangeLog& changes, WorkspaceCommands& workspace,
                 PostDelta delta, const std::string& name);

// "1 post", "25 posts".
std::string PostsWords(int64_t count);

} // namespace vardenix
