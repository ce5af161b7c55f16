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

// The map with its window up, whose edits repaint it as in the program.
class EditedMap {
public:
    explicit EditedMap(int posts) {
        bench::NeedApplication();
        bench::FillWorld(world_, posts == FewPosts ? bench::Near : bench::Middle);
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
    void Undo() {
        undo_.Undo(false);
        Show();
    }
    void Redo() {
        undo_.Redo(false);
        Show();
    }

private:
    static constexpr int Brushes = 8;

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
