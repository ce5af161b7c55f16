#pragma once

#include "bineditor/windows/BinList.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "catalogue/TextureBinFile.h"
#include "catalogue/TileCheck.h"
#include "support/FakePlatform.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "windows/WindowTest.h"

#include <QAbstractButton>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace vardenix::tests {

class ToldVerbs : public EditorVerbs {
public:
    std::string Story;
    std::function<void()> OnSaveBoth;

    void OpenWorkspace(uint8_t classCode) override {
        Story += " map" + std::to_string(classCode);
    }
    void L2NeedSave() override { Story += " L2"; }
    void PostsRenumbered(const TileRenumbering& numbers) override {
        Story += " late0to" + std::to_string(numbers.Of(0));
    }
    bool SaveBinAndL2() override {
        Story += " both";
        OnSaveBoth();
        return true;
    }
    void TilesRenumbered(const TileRenumbering& numbers) override {
        Story += " 0to" + std::to_string(numbers.Of(0));
    }
    bool LeaveProgram() override {
        Story += " leave";
        return false;
    }
};

// The editor on three sets, of which one tile of the last stands on a post.
class FrmBINTileEditTest : public testing::Test {
protected:
    FrmBINTileEditTest() {
        state_.Catalogue.BinPath = folder_.Write(
            "Texture.bin", CatalogueBytes({{1, {{"SEA.PCX", 1, 2}, {"SHORE.PCX"}}},
                                           {4, {{"LAND.PCX"}}},
                                           {9, {{"TOWN.PCX"}}}}));
        std::filesystem::create_directory(folder_.File("dds"));
        state_.Catalogue.DDSFolder = folder_.File("dds/");
        state_.Catalogue.Bin = ParseBinFile(
            ReadWholeFile(state_.Catalogue.BinPath, uint64_t{1} << 30).Span(), "");
        NoProgress quiet;
        RebuildTileLookup(state_.Catalogue, {}, quiet);
        state_.Terrain.MapWidth = 16;
        state_.Terrain.LxArr = PostArray(256);
        state_.Terrain.LxArr(9).TileOffset = 16;
        CountTileUse(state_.Terrain, state_.Catalogue.Lookup);
        window_ = std::make_unique<FrmBINTileEdit>(
            FrmBINTileEdit::Parts{state_, pictures_, platform_.All, log_, verbs_});
        verbs_.OnSaveBoth = [this] {
            state_.Changes.Saved(Paper::Level2);
            window_->BinSaved();
        };
        window_->Open();
    }

    void Click(const char* name) { Find<QAbstractButton>(*window_, name).click(); }
    bool Enabled(const char* name) { return Find<QWidget>(*window_, name).isEnabled(); }
    bool Shown(const char* name) { return Find<QWidget>(*window_, name).isVisible(); }
    std::string Label(const char* name) {
        return Find<QLabel>(*window_, name).text().toStdString();
    }
    void ClickRow(const char* list, int row) {
        auto& view = Find<BinList>(*window_, list);
        const QModelIndex index = view.model()->index(row, 0);
        view.scrollTo(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          view.visualRect(index).center());
    }
    int Row(const char* list) {
        return Find<BinList>(*window_, list).currentIndex().row();
    }
    std::string Headings(const char* list) {
        const auto* model = Find<BinList>(*window_, list).model();
        std::string text;
        for (int column = 0; column < model->columnCount(); ++column)
            text +=
                model->headerData(column, Qt::Horizontal).toString().toStdString() + "|";
        return text;
    }
    std::string Name() {
        return Find<QLineEdit>(*window_, "txtTilename").text().toStdString();
    }
    std::string Sets() {
        std::string text;
        for (int32_t set = 1; set <= state_.Catalogue.Bin.NumSets; ++set)
            text += std::to_string(state_.Catalogue.Bin.Sets[size_t(set)].Terrain);
        return text;
    }

    // As the toolkit hands it over, up to the end of the other program's part; false when
    // it is not wanted there.
    static bool Drop(const QMimeData& data, QWidget& onto) {
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(&onto, &enter);
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&onto, &event);
        return enter.isAccepted();
    }

    TestFolder folder_;
    ProgramState state_;
    TilePictures pictures_;
    FakePlatform platform_;
    DebugLog log_{platform_.Clock};
    ToldVerbs verbs_;
    std::unique_ptr<FrmBINTileEdit> window_;
};

} // namespace vardenix::tests
