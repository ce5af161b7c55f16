#include "bineditor/windows/FrmBINTileEdit.h"

#include "bineditor/TileLists.h"
#include "bineditor/windows/BinModels.h"
#include "bineditor/windows/TileDialogs.h"
#include "bineditor/windows/TileSlots.h"
#include "catalogue/PictureNames.h"
#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "platform/windows/WindowPlace.h"
#include "program/ProgramVersion.h"
#include "ui_FrmBINTileEdit.h"

#include <QHeaderView>
#include <QScreen>
#include <QShortcut>

#include <algorithm>

namespace vardenix {

namespace {

constexpr uint32_t SlotTipBack = 0xFFFFCC;
constexpr uint32_t ZipTipBack = 0xA1F7FF;
constexpr const char* ZipTip =
    "*PCX files will be added in Texture.zip (including M, L and T tiles), BUT NO DDS "
    "FILES WILL BE PRODUCED (if you provide one, it will be copied to DDS Folder, "
    "otherwise a BMP file will created.. You'll have to convert it)!!!";
constexpr int TerrainTypes = 8;
constexpr int CellMargin = 8; // pixels
// Of the lists, beyond the least that they need on a small screen.
constexpr int RoomForColumns = 120; // pixels

void FitColumns(BinList& list, std::initializer_list<const char*> widest) {
    int column = 0;
    for (const char* text : widest)
        list.header()->resizeSection(
            column++, list.fontMetrics().horizontalAdvance(QString(text)) + CellMargin);
}

} // namespace

FrmBINTileEdit::FrmBINTileEdit(const Parts& parts)
    : state_(parts.State), pictures_(parts.Pictures), platform_(parts.Platform),
      log_(parts.Log), verbs_(parts.Verbs), ui_(std::make_unique<Ui::FrmBINTileEdit>()),
      sets_(std::make_unique<SetModel>(parts.State.Catalogue)),
      tiles_(std::make_unique<TileModel>(parts.State.Catalogue)),
      working_(std::make_unique<WorkingNotice>()) {
    ui_->setupUi(this);
    MarkDanger(*ui_->cmdDeleteSet);
    DressControls();
    MakeToolTips();
    ConnectLists();
    ConnectSlots();
    ConnectButtons();
    ConnectMove();
    ConnectPalette();
    RefreshLists({1, 0});
    if (MayDiffer(state_, Paper::Catalogue))
        NeedSave(); // since before it came up, as a restoring leaves it
}

FrmBINTileEdit::~FrmBINTileEdit() = default;

void FrmBINTileEdit::DressControls() {
    setWindowTitle(QString::fromStdString("BIN Editor v" + ProgramVersion()));
    setAcceptDrops(true);
    ui_->TabStrip1->addTab("Sets");
    ui_->TabStrip1->addTab("Tiles");
    ui_->TabStrip1->setDrawBase(false);
    ui_->ListView1->setModel(sets_.get());
    ui_->ListView2->setModel(tiles_.get());
    FitColumns(*ui_->ListView1, {"Set # 0", "Thick Forest0", "# of Tiles"});
    FitColumns(*ui_->ListView2, {"00000", "Set #", "HMMHH000.PCX", "Areas", "Paths"});
    for (int index = 0; index < TerrainTypes; ++index)
        ui_->ComboSetType->addItem(
            TextOf(TerrainName(static_cast<uint8_t>(TerrainFromIndex(index)))));
    ui_->PB5->hide();
    // The line at the bottom keeps its height when bar or button come up in it.
    ui_->lblStatus->setMinimumHeight(ui_->cmdSaveBoth->sizeHint().height());
    ui_->cmdSaveBoth->hide();
    ui_->cmdCorrectL2->hide();
    // FraMoveSet takes no more room than FraActions.
    ui_->stack->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    resize((sizeHint() + QSize(RoomForColumns, 0))
               .boundedTo(screen()->availableSize() - FrameSize(*this)));
}

void FrmBINTileEdit::MakeToolTips() {
    for (clsToolTip* tip : {&slotTip_, &zipTip_, &paletteTip_}) {
        tip->Create(*this);
        tip->SetMaxTipWidth(360);
    }
    slotTip_.SetBackColor(SlotTipBack);
    for (int slot = 0; slot < TilesPerSet; ++slot)
        slotTip_.AddTool(ui_->PicTiles->At(slot));
    zipTip_.SetBackColor(ZipTipBack);
    for (QPushButton* button : {ui_->cmdAppendSet, ui_->cmdAppendTile}) {
        zipTip_.AddTool(*button);
        button->setToolTip(ZipTip);
    }
    paletteTip_.AddTool(*ui_->picTilePalette);
    ui_->picTilePalette->setToolTip("No Palette loaded...");
}

void FrmBINTileEdit::ConnectLists() {
    OnSignal(ui_->ListView1, &BinList::RowChosen, this,
             [this](int row) { SelectFromSets(row); });
    OnSignal(ui_->ListView2, &BinList::RowChosen, this,
             [this](int row) { SelectFromTiles(row); });
    OnSignal(ui_->TabStrip1, &QTabBar::currentChanged, this,
             [this](int tab) { ui_->pages->setCurrentIndex(tab); });
}

void FrmBINTileEdit::ConnectSlots() {
    OnSignal(ui_->PicTiles, &TileSlots::SlotClicked, this,
             [this](int slot) { SelectSlot(slot); });
    OnSignal(ui_->PicTiles, &TileSlots::SlotOpened, this, [this](int slot) {
        SelectSlot(slot);
        cmdEditTile_Click();
    });
    OnSignal(ui_->PicTiles, &TileSlots::SlotHovered, this,
             [this](int slot) { ShowTip(slot); });
    OnSignal(ui_->PicTiles, &TileSlots::FilesDropped, this,
             [this](int slot, const std::vector<std::string>& files) {
                 Dropped(slot, files);
             });
}

void FrmBINTileEdit::OpenAt(const TilePlace& place) {
    CountUses(state_.Terrain, state_.Catalogue.Lookup);
    RefreshLists(place);
    ShowNumbers();
    show();
    raise();
    activateWindow();
    if (QWidget::focusWidget() == nullptr)
        ui_->ListView1->setFocus();
}

void FrmBINTileEdit::RefreshLists(const TilePlace& selected) {
    CleanTileNames(state_.Catalogue.Bin);
    sets_->Refresh();
    tiles_->Refresh();
    ui_->FraTileSets->setTitle(TextOf(CountersLine(state_.Catalogue)));
    RefreshTilePics(selected);
}

void FrmBINTileEdit::RefreshTilePics(const TilePlace& selected) {
    const int32_t sets = state_.Catalogue.Bin.NumSets;
    SelectedSet = std::clamp(selected.Set, std::min(sets, 1), sets);
    SelectedTile = sets == 0 ? -1 : selected.Slot;
    ui_->ListView1->ShowRow(SelectedSet - 1);
    ui_->ListView2->ShowRow(
        SelectedTile < 0 ? -1 : NumberOfPlace({SelectedSet, SelectedTile}));
    pictures_.BeginRepaint();
    for (int slot = 0; slot < TilesPerSet; ++slot) {
        QImage picture;
        if (sets > 0) {
            const TileInfo& info =
                InfoAt(state_.Catalogue, FirstNumberOf(SelectedSet) + slot);
            const int side = static_cast<int>(TileSlots::Side * devicePixelRatioF());
            picture = QImage(side, side, QImage::Format_RGB32);
            const RasterView view{reinterpret_cast<uint32_t*>(picture.bits()), side, side,
                                  picture.bytesPerLine() / 4};
            const std::string day =
                info.HasImage == 1
                    ? TilePicturePath(state_.Catalogue.DDSFolder, info.DayFile)
                    : std::string();
            if (!PaintWholeTile(pictures_, view, day,
                                state_.Folders.ShippedPath + "NoTile.jpg"))
                picture = {};
        }
        ui_->PicTiles->At(slot).SetPicture(picture);
        ShowTip(slot);
    }
    ShowDetails();
}

void FrmBINTileEdit::ShowDetails() {
    const SlotDetails details = DetailsOf(state_.Catalogue, {SelectedSet, SelectedTile});
    ui_->txtTilename->setText(TextOf(details.TileName));
    ui_->lblAreasPaths->setText(TextOf(details.AreasPaths));
    ui_->lblTileNum->setText(TextOf(details.TileNumber));
    ui_->lblNoPicture->setText(TextOf(details.NoPicture));
    ui_->PicTiles->SetHighlight(SelectedTile,
                                details.UsedInL2 ? QColor(0, 200, 0) : QColor(Qt::red));
    ShowCommands();
}

void FrmBINTileEdit::ShowCommands() {
    const TextureBin& bin = state_.Catalogue.Bin;
    const bool anySet = bin.NumSets > 0;
    for (QWidget* button : std::initializer_list<QWidget*>{
             ui_->cmdDeleteSet, ui_->cmdChangeSet, ui_->cmdMoveSet, ui_->cmdAppendTile})
        button->setEnabled(anySet);
    ui_->cmdEditTile->setEnabled(HasTile(bin, SelectedSet, SelectedTile));
    ui_->cmdDeleteTile->setEnabled(CanDeleteTile(bin, {SelectedSet, SelectedTile}));
}

void FrmBINTileEdit::ShowTip(int slot) {
    const SlotTip tip = TipOf(state_.Catalogue, {SelectedSet, slot});
    TileSlot& picture = ui_->PicTiles->At(slot);
    slotTip_.SetForeColor(tip.Color);
    slotTip_.SetToolText(picture, TextOf(tip.Text));
}

void FrmBINTileEdit::SelectFromSets(int row) {
    RefreshTilePics({row + 1, 0});
    if (MoveSource != 0)
        ShowMovePosition();
}

void FrmBINTileEdit::SelectFromTiles(int row) { RefreshTilePics(PlaceOfNumber(row)); }

void FrmBINTileEdit::SelectSlot(int slot) {
    if (state_.Catalogue.Bin.NumSets == 0)
        return;
    SelectedTile = slot;
    ui_->ListView2->ShowRow(NumberOfPlace({SelectedSet, SelectedTile}));
    ShowDetails();
}

void FrmBINTileEdit::ShowTab(int tab) {
    ui_->TabStrip1->setCurrentIndex(tab);
    ui_->pages->setCurrentIndex(tab);
}

} // namespace vardenix

#include "moc_FrmBINTileEdit.cpp"
