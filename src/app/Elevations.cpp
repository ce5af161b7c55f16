#include "app/Elevations.h"

#include "app/BusyWhile.h"
#include "app/TellErrors.h"
#include "files/FileNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "workspace/PendingPosts.h"
#include "workspace/StatusLine.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "world/windows/FrmImportElevations.h"

namespace vardenix {

namespace {

constexpr const char* MapFilter =
    "Maps of heights | *.tif; *.tiff; *.hgt; *.asc; *.img; *.png | All files | *.*";
constexpr const char* ExportFilter = "GeoTIFF | *.tif | ASCII grid | *.asc | PNG of 16 "
                                     "bits | *.png";

PostBox Finer(const PostBox& box, int32_t finer) {
    return {box.X1 * finer, box.Y1 * finer, (box.X2 + 1) * finer - 1,
            (box.Y2 + 1) * finer - 1};
}

// The squares of a box, `finer` to a post's side, that lie on selected posts; none for an
// empty selection.
std::vector<RowSpan> Within(const Selection& selected, const PostBox& box, int32_t width,
                            int32_t finer) {
    if (selected.Empty())
        return {};
    return CommonSquares(SelectedBox(box, width), selected, finer).Spans();
}

// While it lives, the window shows that its work goes on.
class WorkingWindow {
public:
    explicit WorkingWindow(FrmImportElevations& window) : window_(window) {
        window_.SetWorking(true);
    }
    WorkingWindow(const WorkingWindow&) = delete;
    WorkingWindow& operator=(const WorkingWindow&) = delete;
    ~WorkingWindow() { window_.SetWorking(false); }

private:
    FrmImportElevations& window_;
};

} // namespace

Elevations::Elevations(Workspace& workspace, const Earth& earth)
    : workspace_(workspace), earth_(earth),
      ghost_(workspace.State().Terrain, workspace.State().Configuration) {
    workspace.Join(*this);
}

Elevations::~Elevations() = default;

FrmImportElevations& Elevations::Window() {
    if (!window_) {
        window_ = std::make_unique<FrmImportElevations>(workspace_.State().Terrain);
        KeepOverMap(*window_, workspace_.Windows());
        PlaceTool(*window_, {}, workspace_.Windows(), Standing::Seen);
        FrmImportElevations* window = window_.get();
        OnSignal(window, &FrmImportElevations::BrowseWanted, window,
                 [this] { TellErrors(workspace_, [this] { Browse(); }); });
        OnSignal(window, &FrmImportElevations::PreviewWanted, window,
                 [this] { TellErrors(workspace_, [this] { Preview(); }); });
        OnSignal(window, &FrmImportElevations::ImportWanted, window,
                 [this] { TellErrors(workspace_, [this] { Import(); }); });
        OnSignal(window, &FrmImportElevations::WishChanged, window,
                 [this] { ForgetPlan(); });
    }
    return *window_;
}

void Elevations::WindowsMade() {
    // A selection changes with the tools.
    OnSignal(&workspace_.Map(), &FrmVXMap::ToolsShown, &workspace_.Map(), [this] {
        const Selection& selected = workspace_.Interaction().Hand.Selected;
        if (window_ && window_->isVisible() && !(selected == planned_)) {
            planned_ = selected;
            window_->SetSelection(selected.Empty() ? std::nullopt
                                                   : std::optional(selected.Bounds()));
        }
    });
}

void Elevations::ShowImport() {
    FrmImportElevations& window = Window();
    planned_ = workspace_.Interaction().Hand.Selected;
    window.SetSelection(planned_.Empty() ? std::nullopt
                                         : std::optional(planned_.Bounds()));
    window.SetPlace(QString::fromStdString(earth_.PlaceWords()));
    window.show();
    window.raise();
    window.activateWindow();
}

void Elevations::Browse() {
    const FileAnswer answer = workspace_.Platform().Dialogs.OpenFile(
        {"Import elevations", MapFilter, Window().Wish().Map});
    Window().SetMap(QString::fromStdString(answer.Path));
}

WorldRaster Elevations::Read(const HeightsWish& wish, const PostBox& box) {
    RasterWish raster;
    raster.Columns = box.X2 - box.X1 + 1;
    raster.Rows = box.Y2 - box.Y1 + 1;
    raster.How = wish.How;
    raster.MapSystem = wish.MapSystem;
    raster.NoData = wish.NoData;
    if (!wish.Over) {
        const TheaterPlace place = earth_.Place();
        raster.Place = RasterWish::Where{
            place.System,
            EdgesOf(place, box, wish.Into == Layer::Heights ? HeightsPerPost : 1)};
    }
    const BusyWhile busy(workspace_);
    const WorkingWindow working(Window());
    WorldHelper helper = earth_.Helper();
    helper.Watch([this] {
        workspace_.Panel().LetEventsThrough();
        return !Window().IsStopped();
    });
    return helper.ReadRaster(wish.Map, raster);
}

const HeightsPlan* Elevations::PlanOfWish() {
    if (!plan_) {
        const HeightsWish wish = Window().Wish();
        const Terrain& terrain = workspace_.State().Terrain;
        const int32_t finer = wish.Into == Layer::Heights ? HeightsPerPost : 1;
        const int32_t last = terrain.MapWidth - 1;
        const PostBox posts = wish.Over          ? *wish.Over
                              : planned_.Empty() ? PostBox{0, 0, last, last}
                                                 : planned_.Bounds();
        const PostBox box = Finer(posts, finer);
        const std::vector<RowSpan> within =
            Within(planned_, box, finer * terrain.MapWidth, finer);
        if (!planned_.Empty() && within.empty()) // which would stand for all of the box
            throw RuntimeError(
                ErrorNumber::InvalidCall,
                "The rectangle has none of the selected posts. Select none "
                "(Ctrl+D), or take another rectangle");
        plan_ = PlanHeights(Read(wish, box), {box.X1, box.Y1}, wish, within);
    }
    Window().Tell(QString::fromStdString(PlanWords(*plan_, Window().Wish().Without)));
    return &*plan_;
}

void Elevations::Preview() {
    ghost_.Show(PlanOfWish());
    workspace_.RefreshPicArray();
}

void Elevations::Import() {
    const HeightsPlan* plan = PlanOfWish();
    const std::string map = AfterLastSlash(Window().Wish().Map);
    const std::string words = PlanWords(*plan, Window().Wish().Without);
    if (plan->Taken.Set == 0 && Window().Wish().Without == WithoutData::Leave)
        return Window().Tell("The map has no height there. Look at the place of the "
                             "theater in the menu File.");
    ghost_.Show(nullptr);
    Apply(*plan, "Import elevations from " + map);
    workspace_.Tell(words);
    Window().Tell(QString::fromStdString("Done: " + words));
}

void Elevations::Apply(const HeightsPlan& plan, const std::string& name) {
    ProgramState& state = workspace_.State();
    workspace_.PaintOnce([&] {
        if (plan.Into == Layer::Posts) {
            if (ChangePosts(state.Terrain, state.Changes, workspace_,
                            PostsChangedBy(plan, state.Terrain), name))
                workspace_.RemakePreview();
        } else {
            HeightDelta delta = HeightsChangedBy(plan, state.Terrain);
            if (!delta.Empty()) {
                WriteNew(state.Terrain.Elevations.L0ElvArr, delta);
                state.Changes.Add({.Name = name, .Heights = std::move(delta)});
                workspace_.L0NeedSave();
            }
        }
        workspace_.RefreshPicArray();
    });
}

void Elevations::ForgetPlan() {
    if (!plan_)
        return;
    plan_.reset();
    ghost_.Show(nullptr);
    workspace_.RefreshPicArray();
}

void Elevations::Export() {
    TellErrors(workspace_, [this] {
        const ProgramState& state = workspace_.State();
        const Terrain& terrain = state.Terrain;
        const bool finest = workspace_.View().L0Mode;
        const int32_t width = finest ? terrain.Elevations.EMapWidth : terrain.MapWidth;
        const RasterWish::Where where = earth_.Whole(earth_.Place());
        const std::string path =
            workspace_.Platform()
                .Dialogs.SaveFile({"Export elevations", ExportFilter})
                .Path;
        const BusyWhile busy(workspace_);
        std::vector<int16_t> heights;
        heights.reserve(static_cast<size_t>(width) * static_cast<size_t>(width));
        if (finest)
            for (const int16_t feet : terrain.Elevations.L0ElvArr.Values())
                heights.push_back(feet);
        else
            for (const TerrainPost& post : terrain.LxArr.Values())
                heights.push_back(int16_t{post.Elevation});
        WorldHelper helper = earth_.Helper();
        helper.Watch([this] {
            workspace_.Panel().LetEventsThrough();
            return true;
        });
        helper.WriteRaster(path, heights, width, where);
        workspace_.Tell(ExportedWords(path));
    });
}

void Elevations::ShowWindows(bool workspaceShown) {
    if (window_ && !workspaceShown)
        window_->hide();
}

} // namespace vardenix
