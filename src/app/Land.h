#pragma once

#include "app/Search.h"
#include "app/Workspace.h"
#include "grounds/LearnedLand.h"
#include "workspace/SeamMarks.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vardenix {

// What has been learned of the land: which grounds there are and what fits with what. It
// is learned when it is first wanted, and anew when catalogue or pictures have changed.
class Land : public WorkspacePart, private ChangeFollower {
public:
    // Both are borrowed.
    Land(Workspace& workspace, vardenix::Search& search);

    // Null where the land tells nothing; the line under the map says why.
    const LearnedLand* Learned();
    // A number for all tiles that are wholly of one ground; the tile's own otherwise.
    int32_t GroundOfTile(int32_t tile);

    // Other tiles for what is selected, so that its seams fit.
    void Mend();
    bool SeamsShown() const { return marks_.Shown; }
    void ShowSeams(bool shown);
    // The posts whose seams do not fit, as a search has them.
    void FindSeams();
    // How many they are; none while nothing has been learned.
    std::optional<int64_t> SeamPosts() const;

private:
    void AddLayers(MapLayers& layers) override { layers.Marks.push_back(&marks_); }
    void Recorded(const Change& change) override { Forget(change); }
    void Walked(const Change& change, Walk /*walk*/) override { Forget(change); }
    void Forget(const Change& change);
    void ListGrounds();
    std::vector<TileRun> Fitting(std::span<const RowSpan> posts, int32_t tile,
                                 uint32_t seed);

    Workspace& workspace_;
    vardenix::Search& search_;
    std::optional<LearnedLand> land_;
    SeamMarks marks_;
};

} // namespace vardenix
