// From the press of the mouse to the painted post in the window, and the same for undo:
// the real map window on a screen in memory, pictures warm.
#include "BenchMap.h"
#include "BenchWindows.h"
#include "support/RecordingCommands.h"
#include "support/ToldMap.h"
#include "workspace/windows/FrmVXMap.h"

#include <QMouseEvent>

#include <memory>
#include <utility>

namespace vardenix {
namespace {

constexpr int FewPosts = 25;
constexpr int ManyPosts = 40000;

// The map with its window up, whose edits repaint it as in the program.
class EditedMap {
public:
    explicit EditedMap(int posts) {
        bench::NeedApplication();
        bench::FillWorld(world_, posts == FewPosts    ? bench::Near
                                 : posts == ManyPosts ? bench::Far
                                                      : bench::Middle);
        if (posts == FewPosts)
            world_.View.GridCells = 5;
        state_.Starting = false;
        state_.Terrain = std::move(world_.Terrain);
        state_.Catalogue.Lookup = world_.Catalogue.Lookup;
        renderer_ = std::make_unique<MapRenderer>(
            MapSources{state_.Terrain, world_.Catalogue, world_.MapFileRecord,
                       world_.Settings, world_.AppPath},
            MapTools{world_.Pictures, world_.PB3, world_.Log, world_.AbortPaint});
        window_ = std::make_unique<FrmVXMap>(FrmVXMap::Parts{
            state_, world_.View, interaction_, *renderer_, undo_, commands_, map_});
        commands_.OnRefresh = [this] { window_->RefreshPicArray(); };
        window_->LoadImageControls();
        window_->show();
        window_->RefreshPicArray();
        QApplication::processEvents();
        picShow_ = window_->findChild<QWidget*>("PicShow");
        // Every tile that will be painted has its picture.
        for (int tile = 0; tile < Brushes; ++tile)
            Click(tile);
    }

    void ClickTheNextTile() { Click(next_ = (next_ + 1) % Brushes); }
    void ShowEveryLayer() {
        MapView& view = world_.View;
        view.ShowGrid = view.ShowHeights = view.ShowSegments = view.ShowAreasPaths = true;
        view.ApplyMAP = true;
        view.Brightness = 10;
        world_.Settings.HeightsFont.Name = "Liberation Sans";
        window_->RefreshPicArray();
    }
    void BeginStroke() {
        interaction_.SelectedTile = next_ = (next_ + 1) % Brushes;
        Mouse(QEvent::MouseButtonPress, StrokeBegin, Qt::LeftButton);
    }
    // Some posts farther on, and what the window system would then ask for.
    void GoOn(int step) {
        Mouse(QEvent::MouseMove,
              StrokeBegin + QPointF(step % 120 * 9.0, step / 120 * 9.0), Qt::NoButton);
        QApplication::processEvents();
    }
    void EndStroke() { Mouse(QEvent::MouseButtonRelease, StrokeBegin, Qt::LeftButton); }
    void Undo() {
        undo_.Undo(Layer::Posts);
        Show();
    }
    void Redo() {
        undo_.Redo(Layer::Posts);
        Show();
    }

private:
    static constexpr int Brushes = 8;
    static constexpr QPointF StrokeBegin{100, 100};

    void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button) {
        QMouseEvent event(type, at, picShow_->mapToGlobal(at), button, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(picShow_, &event);
        commands_.Story.clear();
    }

    void Click(int tile) {
        interaction_.SelectedTile = tile;
        const QPointF at(100, 100);
        QMouseEvent press(QEvent::MouseButtonPress, at, picShow_->mapToGlobal(at),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(picShow_, &press);
        Show();
    }
    // What the window system would ask for next.
    void Show() {
        picShow_->repaint();
        commands_.Story.clear();
        world_.PB3.Forget();
    }

    ProgramState state_;
    tests::MapWorld world_{bench::MapWidth, bench::Tiles().Folder()};
    MapInteraction interaction_;
    tests::RecordingCommands commands_;
    UndoPoints undo_{state_.Terrain, commands_};
    tests::ToldMap map_{commands_.Story};
    std::unique_ptr<MapRenderer> renderer_;
    std::unique_ptr<FrmVXMap> window_;
    QWidget* picShow_ = nullptr;
    int next_ = 0;
};

void ClickToPainted(benchmark::State& state) {
    EditedMap map(static_cast<int>(state.range(0)));
    for (auto _ : state)
        map.ClickTheNextTile();
}
BENCHMARK(ClickToPainted)->Arg(FewPosts)->Arg(2500)->Unit(benchmark::kMillisecond);

// A stroke over 500 posts and more, from one event of the mouse to the painted posts in
// the window; `layers` of the map are shown.
void StrokeToPainted(benchmark::State& state) {
    EditedMap map(static_cast<int>(state.range(0)));
    if (state.range(1) != 0)
        map.ShowEveryLayer();
    int step = 0;
    for (auto _ : state) {
        if (step == 0) {
            state.PauseTiming();
            map.BeginStroke(); // a click, which repaints the whole
            state.ResumeTiming();
        }
        map.GoOn(++step);
        if (step == 500) {
            state.PauseTiming();
            map.EndStroke();
            step = 0;
            state.ResumeTiming();
        }
    }
}
BENCHMARK(StrokeToPainted)
    ->ArgNames({"posts", "layers"})
    ->ArgsProduct({{FewPosts, 2500, ManyPosts}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

// A fill of a theater of 2048 posts a side from edge to edge, 4 million posts, and the
// step back; without the repaint, which is that of any view.
void FillFourMillion(benchmark::State& state) {
    constexpr int32_t side = 2048;
    Terrain terrain;
    terrain.MapWidth = side;
    terrain.LxArr = PostArray(int64_t{side} * side);
    MapView view;
    MapInteraction interaction;
    interaction.Tool = MapTool::Fill;
    interaction.SelectedTile = 7;
    tests::RecordingCommands commands;
    UndoPoints undo(terrain, commands);
    EditGesture gesture(terrain, view, interaction, undo, commands);
    for (auto _ : state) {
        gesture.Begin(100, 100, {.Shift = true});
        undo.Undo(Layer::Posts);
        commands.Story.clear();
    }
}
BENCHMARK(FillFourMillion)->Unit(benchmark::kMillisecond);

// One step back and one forward again.
void UndoAndRedo(benchmark::State& state) {
    EditedMap map(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        map.Undo();
        map.Redo();
    }
}
BENCHMARK(UndoAndRedo)->Arg(FewPosts)->Arg(2500)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix
