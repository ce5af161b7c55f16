#include "workspace/windows/FrmVXTilePal.h"

#include "catalogue/PictureNames.h"
#include "catalogue/TypeNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "platform/windows/WrappingRow.h"
#include "texts/Windows1252.h"
#include "ui_FrmVXTilePal.h"
#include "workspace/TilePalette.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

namespace vardenix {

namespace {

constexpr int Margin = PixelsOfTwips(PaletteMargin);
constexpr int ButtonPixels = PixelsOfTwips(PaletteButtonSide);
constexpr int LeastColumns = 3;
// Within the border of Frame2, whose line some screens draw half over its inside.
constexpr int BorderGap = 1;
// Letters that are seen of what is looked for.
constexpr int LeastFilter = 16;

} // namespace

FrmVXTilePal::FrmVXTilePal(const ProgramState& state, MapInteraction& interaction,
                           TilePictures& pictures, WorkspaceCommands& commands)
    : state_(state), interaction_(interaction), pictures_(pictures), commands_(commands),
      ui_(std::make_unique<Ui::FrmVXTilePal>()) {
    ui_->setupUi(this);
    // Tiles are picked while the map has the keyboard.
    setAttribute(Qt::WA_AlwaysShowToolTips);
    DressControls();
    OnSignal(ui_->Combo1, &QComboBox::currentIndexChanged, this,
             [this] { Command1_Click(); });
    // The class in use chosen again is seen from its beginning, as another one is.
    OnSignal(ui_->Combo1, &QComboBox::activated, this,
             [this] { ui_->VScroll->setValue(0); });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    OnSignal(ui_->txtFilter, &QLineEdit::textChanged, this, [this] {
        Command1_Click();
        ui_->VScroll->setValue(0);
    });
    OnSignal(ui_->VScroll, &QAbstractSlider::valueChanged, this,
             [this] { VScroll_Change(); });
    OnSignal(ui_->Frame1, &TileGrid::TileClicked, this,
             [this](int tile) { Op2_Click(tile); });
    OnSignal(ui_->Frame1, &TileGrid::TileTaken, this, [this] { emit TileTaken(); });
    OnSignal(ui_->Frame1, &TileGrid::RowReached, this, [this](int row) {
        ui_->VScroll->setValue(ScrollToRow(row, ui_->VScroll->value(), WholeRows()));
    });
    ui_->Frame1->SetPictureSource(
        [this](int32_t tile, int side) { return PictureOf(tile, side); });
    Clear();
}

FrmVXTilePal::~FrmVXTilePal() = default;

void FrmVXTilePal::DressControls() {
    ui_->body->setContentsMargins(Margin, Margin, Margin, Margin);
    ui_->txtFilter->setMinimumWidth(LeastFilter * fontMetrics().averageCharWidth());
    WrappingRow::InPlaceOf(ui_->choice);
    for (const std::string_view text : PaletteClasses)
        ui_->Combo1->addItem(
            QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    const int border = 2 * (ui_->Frame2->frameWidth() + BorderGap);
    ui_->Frame2->setMinimumSize(LeastColumns * ButtonPixels + border,
                                ButtonPixels + border);
    ui_->VScroll->setRange(0, 0);
    // Wherever the wheel is turned, it moves the tiles.
    for (QWidget* part : std::initializer_list<QWidget*>{ui_->Combo1, ui_->VScroll})
        part->installEventFilter(this);
    ui_->Frame2->installEventFilter(this);
}

void FrmVXTilePal::Refresh_Pal(int32_t classCode) {
    {
        const QSignalBlocker quiet(ui_->Combo1);
        ui_->Combo1->setCurrentIndex(PaletteIndex(classCode));
    }
    // Pictures that have changed since are read again.
    pictures_.BeginRepaint();
    Build(ShownTiles(classCode));
    // Another class is seen from its beginning.
    if (shownClass_ != classCode)
        ui_->VScroll->setValue(0);
    shownClass_ = classCode;
}

std::vector<int32_t> FrmVXTilePal::ShownTiles(int32_t classCode) const {
    return TilesToShow(state_.Catalogue.Lookup, classCode,
                       BytesFromUtf8(ui_->txtFilter->text().toStdString()));
}

void FrmVXTilePal::Command1_Click() {
    Refresh_Pal(TerrainFromIndex(ui_->Combo1->currentIndex()));
}

void FrmVXTilePal::Clear() {
    Build({});
    ui_->lblCount->clear();
}

void FrmVXTilePal::Build(const std::vector<int32_t>& tiles) {
    // A window that has not been up yet has its size, but its parts have not.
    layout()->activate();
    FrameResized();
    const PaletteLayout layout =
        LayOutPalette(tiles.size(), TwipsOfPixels(ui_->Frame1->width()));
    ui_->Frame1->Build(tiles, layout, state_.Catalogue.Lookup);
    shownTiles_ = tiles.size();
    PlaceButtons();
    ui_->lblCount->setText(QString::fromStdString(TileCount(tiles.size())));
    ShowSelectedTile();
}

void FrmVXTilePal::ShowTile(int32_t tile) {
    const TileLookup& lookup = state_.Catalogue.Lookup;
    const int32_t classCode = lookup.at(static_cast<size_t>(tile)).Terrain;
    const std::string filter = BytesFromUtf8(ui_->txtFilter->text().toStdString());
    if (TilesNamed(lookup, {tile}, filter).empty())
        ui_->txtFilter->clear();
    if (classCode != shownClass_)
        Refresh_Pal(classCode);
    Select(tile);
    const std::vector<int32_t> tiles = ShownTiles(classCode);
    const auto at = std::find(tiles.begin(), tiles.end(), tile) - tiles.begin();
    const auto row = static_cast<int32_t>(at) / std::max(ui_->Frame1->Columns(), 1);
    ui_->VScroll->setValue(ScrollToRow(row, ui_->VScroll->value(), WholeRows()));
}

int32_t FrmVXTilePal::FirstRow() const { return ui_->VScroll->value(); }

void FrmVXTilePal::ShowFrom(int32_t classCode, int32_t row) {
    if (PaletteIndex(classCode) < 0)
        return;
    Refresh_Pal(classCode);
    ui_->VScroll->setValue(row);
}

void FrmVXTilePal::ShowSelectedTile() {
    const int32_t tile = interaction_.SelectedTile;
    ui_->Frame1->SetChosen(tile);
    ui_->Frame1->SetMore(interaction_.Hand.MoreTiles);
    ui_->StatusBar1->showMessage(QString::fromStdString(
        Utf8FromBytes(PaletteStatus(state_.Catalogue.Lookup, tile))));
}

// Frame1 begins at the top of Frame2, where it was told to begin in a window whose upper
// part had a fixed height.
void FrmVXTilePal::VScroll_Change() {
    const int scrolled =
        PixelsOfTwips(Frame1Top(ui_->VScroll->value()) - PaletteFirstTop);
    ui_->Frame1->move(0, scrolled);
}

void FrmVXTilePal::Op2_Click(int32_t tile) {
    const ChosenTiles chosen{interaction_.SelectedTile, interaction_.Hand.MoreTiles};
    const Qt::KeyboardModifiers keys = QApplication::keyboardModifiers();
    if (keys.testFlag(Qt::ControlModifier))
        Select(ChooseAlso(chosen, tile));
    else if (keys.testFlag(Qt::ShiftModifier))
        Select(ChooseUpTo(chosen, tile, ShownTiles(shownClass_)));
    else
        Select(chosen.More.empty() ? ChooseTile(chosen.First, tile) : tile);
}

void FrmVXTilePal::Select(int32_t tile) { Select(ChosenTiles{tile}); }

void FrmVXTilePal::Select(const ChosenTiles& tiles) {
    interaction_.SelectedTile = tiles.First;
    interaction_.Hand.MoreTiles = tiles.More;
    // A tile is chosen to be painted; grounds and ways are those of a tile.
    if (interaction_.Hand.Paints != Painting::Ground &&
        interaction_.Hand.Paints != Painting::Way)
        interaction_.Hand.Paints = Painting::Tile;
    ShowSelectedTile();
    commands_.SelectionChanged();
}

void FrmVXTilePal::FrameResized() {
    ui_->ground->setGeometry(ui_->Frame2->contentsRect().marginsRemoved(
        {BorderGap, BorderGap, BorderGap, BorderGap}));
    ui_->Frame1->resize(ui_->ground->width(), ui_->Frame1->height());
    ui_->Frame1->SetWholeRows(WholeRows());
    ui_->VScroll->setPageStep(WholeRows());
    PlaceButtons();
    VScroll_Change();
}

void FrmVXTilePal::PlaceButtons() {
    const PaletteLayout layout =
        LayOutPalette(shownTiles_, TwipsOfPixels(ui_->Frame1->width()));
    if (layout.Columns != ui_->Frame1->Columns())
        ui_->Frame1->Place(layout);
    ui_->VScroll->setMaximum(PaletteScrollEnd(layout, WholeRows()));
}

int FrmVXTilePal::WholeRows() const {
    return std::max(1, ui_->ground->height() / ButtonPixels);
}

QImage FrmVXTilePal::PictureOf(int32_t tile, int side) {
    const TileLookup& lookup = state_.Catalogue.Lookup;
    const auto index = static_cast<size_t>(tile);
    QImage picture(side, side, QImage::Format_RGB32);
    if (picture.isNull() || index >= lookup.size())
        return {};
    const RasterView view{reinterpret_cast<uint32_t*>(picture.bits()), side, side,
                          picture.bytesPerLine() / 4};
    if (PaintWholeTile(pictures_, view,
                       TilePicturePath(state_.Catalogue.DDSFolder, lookup[index].DayFile),
                       state_.Folders.ShippedPath + "NoTile.jpg"))
        return picture;
    return {};
}

void FrmVXTilePal::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    // A filter that hides tiles goes before the choice does.
    if (ui_->txtFilter->hasFocus() && !ui_->txtFilter->text().isEmpty())
        ui_->txtFilter->clear();
    else
        Select(-1);
}

// One row a message, however far the wheel went; forward goes up.
void FrmVXTilePal::wheelEvent(QWheelEvent* event) {
    event->accept();
    wheelTurned_ += event->angleDelta().y();
    if (std::abs(wheelTurned_) < QWheelEvent::DefaultDeltasPerStep)
        return;
    ui_->VScroll->setValue(ui_->VScroll->value() + (wheelTurned_ > 0 ? -1 : 1));
    wheelTurned_ %= QWheelEvent::DefaultDeltasPerStep;
}

bool FrmVXTilePal::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == ui_->Frame2)
        FrameResized();
    if (event->type() != QEvent::Wheel || watched == ui_->Frame2)
        return QWidget::eventFilter(watched, event);
    wheelEvent(static_cast<QWheelEvent*>(event));
    return true;
}

void FrmVXTilePal::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    hide();
    commands_.WindowHidden("chkShowTile");
}

} // namespace vardenix

#include "moc_FrmVXTilePal.cpp"
