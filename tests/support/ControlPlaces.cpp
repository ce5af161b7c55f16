// Prints where the controls of a window lie, "name left top width height" in pixels of
// the window, when it has the size that is given: tests that press real buttons find them
// so, wherever a layout puts them. Nothing comes up on the screen.
#include "bineditor/windows/FrmBINTileDet.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "builder/windows/FrmVXRebiuldTheater.h"
#include "catalogue/TextureBinFile.h"
#include "features/windows/FrmVXFeatures.h"
#include "pictures/ImageLayer.h"
#include "platform/windows/Theme.h"
#include "search/windows/FrmVXReplace.h"
#include "search/windows/FrmVXStatistics.h"
#include "search/windows/frmVXSearchOptions.h"
#include "search/windows/frmVXSearchResults.h"
#include "windows/FrmVXMainTest.h"

#include <cstdlib>
#include <iostream>

namespace {

using namespace vardenix;

class NoEditorVerbs : public EditorVerbs {
public:
    void OpenWorkspace(uint8_t) override {}
    void L2NeedSave() override {}
    void PostsRenumbered(const TileRenumbering&) override {}
    bool SaveBinAndL2() override { return false; }
    void TilesRenumbered(const TileRenumbering&) override {}
    bool LeaveProgram() override { return false; }
};

class NoRebuildVerbs : public RebuildVerbs {
public:
    bool SaveL2() override { return false; }
    bool SaveHeights() override { return false; }
    void ForgetSteps(bool) override {}
    void ReadAnew(bool) override {}
    void LeaveRebuild() override {}
};

// What any of the windows borrows.
struct Borrowed {
    ProgramState State;
    MapView View;
    TilePictures Pictures;
    tests::FakePlatform Platform;
    DebugLog Log{Platform.Clock};
    NoEditorVerbs Verbs;
    NoRebuildVerbs RebuildVerbs;
    tests::ToldWorkspace Workspace;
};

std::unique_ptr<QWidget> Made(const std::string& name, Borrowed& with) {
    ProgramState& state = with.State;
    if (name == "FrmVXMain") {
        auto panel = std::make_unique<FrmVXMain>(state, with.View, with.Workspace);
        panel->Form_Load("places");
        return panel;
    }
    if (name == "FrmBINTileEdit")
        return std::make_unique<FrmBINTileEdit>(FrmBINTileEdit::Parts{
            state, with.Pictures, with.Platform.All, with.Log, with.Verbs});
    if (name == "FrmBINTileDet") { // of a tile of 128 pixels
        TileSet set;
        set.Tiles.emplace_back();
        set.TileCount = 1;
        state.Catalogue.Bin.Sets.push_back(set);
        state.Catalogue.Bin.NumSets = 1;
        NoProgress quiet;
        RebuildTileLookup(state.Catalogue, {}, quiet);
        return std::make_unique<FrmBINTileDet>(
            FrmBINTileDet::Parts{state.Catalogue, state.Configuration,
                                 with.Platform.Dialogs},
            0, AllocateEx(128, 128, 0));
    }
    if (name == "FrmVXFeatures")
        return std::make_unique<FrmVXFeatures>(state, with.Platform.Dialogs,
                                               with.Workspace);
    if (name == "FrmVXRebiuldTheater")
        return std::make_unique<FrmVXRebiuldTheater>(state, with.Platform.All, with.Log,
                                                     with.RebuildVerbs);
    if (name == "frmVXSearchOptions")
        return std::make_unique<frmVXSearchOptions>(state.Search, state.Catalogue.Lookup);
    if (name == "FrmVXReplace")
        return std::make_unique<FrmVXReplace>(state,
                                              [] { return std::span<const RowSpan>(); });
    if (name == "FrmVXStatistics")
        return std::make_unique<FrmVXStatistics>(state,
                                                 [] { return std::optional<int64_t>(); });
    if (name == "frmVXSearchResults")
        return std::make_unique<frmVXSearchResults>(state, with.Workspace);
    return nullptr;
}

void Print(const QWidget& window) {
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        if (control->objectName().isEmpty() || control->objectName().startsWith("qt_"))
            continue;
        const QPoint corner = control->mapTo(&window, QPoint(0, 0));
        std::cout << control->objectName().toStdString() << ' ' << corner.x() << ' '
                  << corner.y() << ' ' << control->width() << ' ' << control->height()
                  << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc != 4)
        return 2;
    ApplyTheme();
    Borrowed borrowed;
    const std::unique_ptr<QWidget> window = Made(argv[1], borrowed);
    if (!window)
        return 2;
    window->setAttribute(Qt::WA_DontShowOnScreen);
    window->show();
    window->resize(std::atoi(argv[2]), std::atoi(argv[3]));
    QCoreApplication::processEvents();
    Print(*window);
}
