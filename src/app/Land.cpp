#include "app/Land.h"

#include "catalogue/PictureNames.h"
#include "grounds/TerrainBrush.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"
#include "workspace/GroundTool.h"
#include "workspace/TilePalette.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"
#include "workspace/windows/HandStrip.h"
#include "workspace/windows/MapToolStrip.h"

#include <QApplication>
#include <QPixmap>

#include <algorithm>

namespace vardenix {

namespace {

constexpr int IconSide = 32;

class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

// By ground, the tile with all corners of it that is used most; -1 for none.
std::vector<int32_t> PlainTileOfGrounds(const LearnedLand& land) {
    std::vector<int32_t> tiles;
    for (int16_t ground = 0; ground < land.GroundCount(); ++ground) {
        const auto& plain = land.TilesWith({ground, ground, ground, ground});
        const auto most = std::ranges::max_element(
            plain, {}, [&land](int32_t tile) { return land.UseOf(tile); });
        tiles.push_back(most == plain.end() ? -1 : *most);
    }
    return tiles;
}

SearchResults HitsAtSeams(const LearnedLand& land, const Terrain& terrain) {
    SearchResults hits(1);
    const int32_t width = terrain.MapWidth;
    for (const auto& [post, how] : BadSeams(land, terrain, {0, 0, width - 1, width - 1}))
        hits.push_back(post.Y * width + post.X + 1);
    hits.erase(std::unique(hits.begin() + 1, hits.end()), hits.end());
    return hits;
}

} // namespace

Land::Land(Workspace& workspace, vardenix::Search& search)
    : workspace_(workspace), search_(search),
      marks_(workspace.State().Terrain, [this] { return Learned(); }) {
    workspace.Join(*this);
    workspace.State().Changes.Follow(*this);
    search.Know({.Fitting = [this](std::span<const RowSpan> posts, int32_t tile,
                                   uint32_t seed) { return Fitting(posts, tile, seed); },
                 .SeamPosts = [this] { return SeamPosts(); },
                 .FindSeams = [this] { FindSeams(); }});
}

const LearnedLand* Land::Learned() {
    if (!land_) {
        const WaitCursor waiting;
        const ProgramState& state = workspace_.State();
        LearnedTiles tiles = TilesToLearn(state.Terrain, state.Catalogue);
        const LandGrid map = GridOf(state.Terrain, tiles);
        land_.emplace(std::move(tiles), map);
        ListGrounds();
    }
    if (land_->Refusal().empty())
        return &*land_;
    workspace_.Tell(land_->Refusal());
    return nullptr;
}

void Land::ListGrounds() {
    std::vector<GroundChoice> choices;
    const std::vector<int32_t> plain =
        land_->Refusal().empty() ? PlainTileOfGrounds(*land_) : std::vector<int32_t>();
    const ProgramState& state = workspace_.State();
    for (const int32_t index : plain) {
        if (index < 0)
            continue;
        const int32_t tile = land_->Tiles().Numbers[static_cast<size_t>(index)];
        const TileInfo& info = state.Catalogue.Lookup[static_cast<size_t>(tile)];
        QImage picture(IconSide, IconSide, QImage::Format_RGB32);
        const RasterView view{reinterpret_cast<uint32_t*>(picture.bits()), IconSide,
                              IconSide, picture.bytesPerLine() / 4};
        PaintWholeTile(workspace_.Pictures(), view,
                       TilePicturePath(state.Catalogue.DDSFolder, info.DayFile),
                       state.Folders.ShippedPath + "NoTile.jpg");
        choices.push_back({tile,
                           QString::fromStdString(Utf8FromBytes(info.Name)) + " (" +
                               QString::number(land_->UseOf(index)) + ")",
                           QIcon(QPixmap::fromImage(picture))});
    }
    workspace_.Map().Strip().Hand().SetGrounds(choices);
}

int32_t Land::GroundOfTile(int32_t tile) {
    const LearnedLand* land = Learned();
    const int32_t index = land == nullptr ? -1 : land->Tiles().IndexOf(tile);
    if (index < 0)
        return tile;
    const GroundsOfTile& grounds = land->GroundsOf(index);
    const bool plain = std::ranges::all_of(
        grounds, [&grounds](int16_t ground) { return ground == grounds[0]; });
    // Below all tile numbers.
    return plain ? -1 - grounds[0] : tile;
}

void Land::Mend() {
    const LearnedLand* land = Learned();
    if (land == nullptr)
        return;
    Terrain& terrain = workspace_.State().Terrain;
    const Selection& selected = workspace_.Interaction().Hand.Selected;
    BrushResult result = [&] {
        const WaitCursor waiting;
        return MendSeams(*land, terrain, selected.Spans());
    }();
    const std::string words = BrushWords(result);
    const int64_t count = CountOf<int32_t>(result.Runs);
    if (ChangePosts(terrain, workspace_.State().Changes, workspace_,
                    {.Runs = std::move(result.Runs), .Values = {}},
                    "Mend seams of " + PostsWords(count)))
        workspace_.RefreshPicArray();
    workspace_.Tell(words);
}

void Land::ShowSeams(bool shown) {
    marks_.Shown = shown && Learned() != nullptr;
    workspace_.RefreshPicArray();
}

void Land::FindSeams() {
    const LearnedLand* land = Learned();
    if (land == nullptr)
        return;
    search_.ShowFound([&](SearchResults& hits) {
        hits = HitsAtSeams(*land, workspace_.State().Terrain);
    });
}

std::optional<int64_t> Land::SeamPosts() const {
    if (!land_ || !land_->Refusal().empty())
        return {};
    return static_cast<int64_t>(HitsAtSeams(*land_, workspace_.State().Terrain).size()) -
           1;
}

std::vector<TileRun> Land::Fitting(std::span<const RowSpan> posts, int32_t tile,
                                   uint32_t seed) {
    const LearnedLand* land = Learned();
    if (land == nullptr)
        return {};
    const WaitCursor waiting;
    return PaintGround(*land, workspace_.State().Terrain, posts, tile, {.Seed = seed})
        .Runs;
}

void Land::Forget(const Change& change) {
    if (!change.Touches(Paper::Catalogue) && !change.Pictures)
        return;
    land_.reset();
    marks_.Shown = false;
}

} // namespace vardenix
