#include "workspace/GroundTool.h"

#include "grounds/WayStroke.h"
#include "texts/RuntimeError.h"
#include "workspace/FieldPosts.h"
#include "workspace/GridShapes.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

// What is seen at once while the pointer moves; more comes at the release.
constexpr int64_t MostSeenAtOnce = 400; // posts

bool LiesWithin(const std::vector<TileRun>& runs, const Selection& bounds,
                int32_t width) {
    return std::ranges::all_of(runs, [&](const TileRun& run) {
        for (int32_t i = 0; i < run.Count; ++i)
            if (!bounds.Has({(run.Serial + i - 1) % width, (run.Serial + i - 1) / width}))
                return false;
        return true;
    });
}

// From side to side: a step across a corner goes over the post beside it.
std::vector<PostPlace> ChainOf(const std::vector<PostPlace>& line) {
    std::vector<PostPlace> chain;
    for (const PostPlace& place : line) {
        if (!chain.empty() && chain.back().X != place.X && chain.back().Y != place.Y)
            chain.push_back({place.X, chain.back().Y});
        if (chain.empty() || !(chain.back() == place))
            chain.push_back(place);
    }
    return chain;
}

std::string SeamsWords(int64_t count) {
    return std::to_string(count) + (count == 1 ? " seam stays" : " seams stay") + " open";
}

} // namespace

BrushResult PaintWithin(const LearnedLand& land, const Terrain& terrain,
                        const Selection& painted, int32_t tile, BrushOptions options,
                        const Selection& bounds) {
    BrushResult result = PaintGround(land, terrain, painted.Spans(), tile, options);
    if (options.Inside || bounds.Empty() ||
        LiesWithin(result.Runs, bounds, terrain.MapWidth))
        return result;
    options.Inside = true;
    return PaintGround(land, terrain, painted.Spans(), tile, options);
}

std::string BrushWords(const BrushResult& result) {
    std::string words = PostsWords(CountOf<int32_t>(result.Runs)) + " changed";
    words += ", " + std::to_string(result.Outside) + " outside";
    if (result.OpenSeams > 0)
        words += "; " + SeamsWords(result.OpenSeams);
    if (result.Unfilled > 0)
        words += "; " + std::to_string(result.Unfilled) + " without a tile";
    return words;
}

std::optional<PostBox> GroundTool::Begin(double x, double y, GestureKeys keys) {
    if (interaction_.SelectedTile == -1) {
        workspace_.Tell("choose a tile of the ground first");
        return std::nullopt;
    }
    if (land_() == nullptr)
        return std::nullopt;
    goes_ = true;
    from_ = to_ = PostUnderCursor(view_, x, y);
    line_ = {from_};
    if (interaction_.Tool != MapTool::Fill)
        return Show(Painted());
    goes_ = false;
    if (!OnTerrain(from_, terrain_))
        return std::nullopt;
    const int32_t width = terrain_.MapWidth;
    const PostBox limits =
        keys.Shift ? PostBox{0, 0, width - 1, width - 1} : SegmentsInView(view_, width);
    const auto sortAt = [&](int32_t column, int32_t row) {
        const int32_t tile = terrain_.LxArr(row * width + column + 1).TileOffset;
        return interaction_.Hand.SortOf ? interaction_.Hand.SortOf(tile) : tile;
    };
    const int32_t wanted = sortAt(from_.X, from_.Y);
    const auto changed =
        Show(Selection(FilledSpans(limits, from_, [&](int32_t column, int32_t row) {
            return sortAt(column, row) == wanted;
        })));
    Keep();
    return changed;
}

std::optional<PostBox> GroundTool::Move(double x, double y) {
    if (view_.ScrollBusy || !goes_)
        return std::nullopt;
    const PostPlace post = PostUnderCursor(view_, x, y);
    if (post == to_)
        return std::nullopt;
    const std::vector<PostPlace> way = LineBetween(to_, post);
    line_.insert(line_.end(), way.begin(), way.end());
    to_ = post;
    const Selection painted = Painted();
    pending_.TakeBack();
    if (painted.Count() > MostSeenAtOnce)
        return pending_.TakenBack();
    return Show(painted);
}

std::optional<PostBox> GroundTool::End(double x, double y) {
    auto changed = Move(x, y);
    if (!goes_)
        return changed;
    goes_ = false;
    if (const Selection painted = Painted(); painted.Count() > MostSeenAtOnce)
        changed = BoxRound(changed, Show(painted));
    Keep();
    return changed;
}

void GroundTool::Keep() {
    const bool way = interaction_.Hand.Paints == Painting::Way;
    pending_.Keep((way ? "Way over " : "Ground over ") +
                  PostsWords(CountOf(pending_.Delta())));
}

std::optional<PostBox> GroundTool::Cancel() {
    goes_ = false;
    pending_.TakeBack();
    return pending_.TakenBack();
}

Selection GroundTool::Painted() const {
    if (interaction_.Tool == MapTool::Rectangle)
        return SelectedBox({from_.X, from_.Y, to_.X, to_.Y}, terrain_.MapWidth);
    return Selection(BrushedSpans(line_, interaction_.BrushSize, terrain_.MapWidth));
}

std::optional<PostBox> GroundTool::Show(const Selection& painted) {
    const LearnedLand* land = land_();
    if (land == nullptr)
        return Cancel();
    const Selection& bounds = interaction_.Hand.Selected;
    BrushOptions options;
    options.Inside = interaction_.Hand.EdgeInside;
    options.Seed = interaction_.Hand.Seed;
    pending_.TakeBack();
    try {
        BrushResult result =
            interaction_.Hand.Paints == Painting::Way
                ? PaintWay(*land, terrain_, ChainOf(line_), interaction_.SelectedTile)
                : PaintWithin(*land, terrain_,
                              bounds.Empty() ? painted : Common(painted, bounds),
                              interaction_.SelectedTile, options, bounds);
        workspace_.Tell(BrushWords(result));
        return pending_.Show({.Runs = std::move(result.Runs), .Values = {}});
    } catch (const RuntimeError& error) {
        // The tile is not of the land that was learned.
        workspace_.Tell(error.Detail());
        return Cancel();
    }
}

std::optional<PostBox> GroundTool::Frame() const {
    if (!goes_ || interaction_.Tool != MapTool::Rectangle)
        return std::nullopt;
    const PostBox box = CutToGrid({from_.X, from_.Y, to_.X, to_.Y}, terrain_.MapWidth);
    if (box.X2 < box.X1 || box.Y2 < box.Y1)
        return std::nullopt;
    return box;
}

} // namespace vardenix
