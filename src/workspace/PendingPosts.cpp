#include "workspace/PendingPosts.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

// A stretch may go on over the ends of rows, and is as wide as the terrain then.
PostBox BoxOfStretch(int32_t serial, int32_t count, int32_t width) {
    const int32_t y1 = (serial - 1) / width;
    const int32_t y2 = (serial + count - 2) / width;
    if (y1 != y2)
        return {0, y1, width - 1, y2};
    const int32_t x = (serial - 1) % width;
    return {x, y1, x + count - 1, y1};
}

} // namespace

std::optional<PostBox> BoxRound(const std::optional<PostBox>& a,
                                const std::optional<PostBox>& b) {
    if (!a || !b)
        return a ? a : b;
    return PostBox{std::min(a->X1, b->X1), std::min(a->Y1, b->Y1), std::max(a->X2, b->X2),
                   std::max(a->Y2, b->Y2)};
}

int64_t CountOf(const PostDelta& delta) {
    int64_t count = static_cast<int64_t>(delta.Values.New.size());
    for (const TileRun& run : delta.Runs)
        count += run.Count;
    return count;
}

std::optional<PostBox> BoxOf(const PostDelta& delta, int32_t width) {
    std::optional<PostBox> box;
    for (const auto& [serial, count] : delta.Values.Stretches)
        box = BoxRound(box, BoxOfStretch(serial, count, width));
    for (const TileRun& run : delta.Runs)
        box = BoxRound(box, BoxOfStretch(run.Serial, run.Count, width));
    return box;
}

std::optional<PostBox> PendingPosts::Show(PostDelta delta) {
    TakeBack();
    delta_ = std::move(delta);
    WriteNew(terrain_.LxArr, delta_);
    return BoxRound(TakenBack(), BoxOf(delta_, terrain_.MapWidth));
}

void PendingPosts::TakeBack() {
    WriteOld(terrain_.LxArr, delta_);
    stale_ = BoxRound(stale_, BoxOf(delta_, terrain_.MapWidth));
    delta_ = {};
}

std::optional<PostBox> PendingPosts::TakenBack() {
    return std::exchange(stale_, std::nullopt);
}

bool PendingPosts::Keep(const std::string& name) {
    if (delta_.Empty())
        return false;
    changes_.Add({.Name = name, .Posts = std::exchange(delta_, {})});
    workspace_.L2NeedSave();
    return true;
}

bool ChangePosts(Terrain& terrain, ChangeLog& changes, WorkspaceCommands& workspace,
                 PostDelta delta, const std::string& name) {
    if (delta.Empty())
        return false;
    WriteNew(terrain.LxArr, delta);
    changes.Add({.Name = name, .Posts = std::move(delta)});
    workspace.L2NeedSave();
    return true;
}

std::string PostsWords(int64_t count) {
    return std::to_string(count) + (count == 1 ? " post" : " posts");
}

} // namespace vardenix
