#include "bineditor/windows/FrmBINTileDet.h"

#include "bineditor/windows/TileDialogs.h"
#include "bineditor/windows/TilePicture.h"
#include "bineditor/windows/TypeList.h"
#include "catalogue/TileNumbers.h"
#include "pictures/ImageLayer.h"
#include "platform/windows/AskColor.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/Numbers.h"
#include "texts/Windows1252.h"
#include "ui_FrmBINTileDet.h"

#include <QAction>
#include <QHeaderView>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>

#include <cmath>
#include <cstring>

namespace vardenix {

namespace {

constexpr const char* Discard =
    "You have made some changes. Are you sure you want to discard them?\n"
    "Press Yes to discard them.\nPress No to return to the form.";

QImage ImageOfBitmap(const Bitmap& picture) {
    if (!picture) {
        QImage empty(128, 128, QImage::Format_RGB32);
        empty.fill(Qt::gray);
        return empty;
    }
    Raster raster = BitmapToPicture(picture);
    QImage image(raster.Width(), raster.Height(), QImage::Format_RGB32);
    for (int y = 0; y < raster.Height(); ++y)
        std::memcpy(image.scanLine(y), raster.Row(y),
                    static_cast<size_t>(raster.Width()) * sizeof(uint32_t));
    return image;
}

void SetColumns(QTreeWidgetItem& item, const std::vector<std::string>& columns) {
    for (size_t i = 0; i < columns.size(); ++i) {
        item.setText(static_cast<int>(i), QString::fromStdString(columns[i]));
        if (i > 0)
            item.setTextAlignment(static_cast<int>(i), Qt::AlignRight | Qt::AlignVCenter);
    }
}

// The row of a list that is chosen, from 1; 0 is none.
int32_t ChosenRow(const QTreeWidget& list) {
    return list.indexOfTopLevelItem(list.currentItem()) + 1;
}

// `columnsOf(row)` for every row from 1; the row chosen is given back.
template <typename ColumnsOf>
int32_t Fill(QTreeWidget& list, int32_t count, int32_t row, ColumnsOf columnsOf) {
    const QSignalBlocker quiet(list);
    list.clear();
    QList<QTreeWidgetItem*> items;
    for (int32_t each = 1; each <= count; ++each) {
        auto* item = new QTreeWidgetItem;
        SetColumns(*item, columnsOf(each));
        items.push_back(item);
    }
    list.addTopLevelItems(items);
    const int32_t chosen = row == -1 ? std::min(count, 1) : row;
    if (chosen > 0)
        list.setCurrentItem(list.topLevelItem(chosen - 1));
    return chosen;
}

bool Confirmed(Dialogs& dialogs, const char* question) {
    return dialogs.MessageBox(question, "Please Confirm", BoxIcon::Warning,
                              BoxButtons::YesNo) == BoxAnswer::Yes;
}

} // namespace

FrmBINTileDet::FrmBINTileDet(const Parts& parts, int32_t number, const Bitmap& picture,
                             QWidget* parent)
    : QDialog(parent), parts_(parts), number_(number),
      ui_(std::make_unique<Ui::FrmBINTileDet>()), tilePic_(new TilePicture),
      tile_(TileAt(parts.Catalogue.Bin, SetOfNumber(number), SlotOfNumber(number))) {
    ui_->setupUi(this);
    tilePic_->SetImage(ImageOfBitmap(picture));
    setWindowTitle(QString::fromStdString(Utf8FromBytes(
        TileDetailCaption(parts.Catalogue, number, picture.Width(), picture.Height()))));
    DressControls();
    ConnectPicture();
    ConnectLists();
    ConnectZoom();
    OnSignal(ui_->cmdOK, &QAbstractButton::clicked, this, [this] { cmdOK_Click(); });
    OnSignal(ui_->cmdCancel, &QAbstractButton::clicked, this, [this] { reject(); });
    FillAreas(-1);
    FillPaths(-1);
    RefreshForm();
    // The whole picture is seen where the screen has room for it.
    const QSize room = screen()->availableSize() * 9 / 10;
    resize(QSize(tilePic_->width() + ui_->ListPaths->minimumWidth() + 80,
                 std::max(tilePic_->height() + 90, 560))
               .boundedTo(room));
}

FrmBINTileDet::~FrmBINTileDet() = default;

void FrmBINTileDet::DressControls() {
    ui_->ground->setWidget(tilePic_);
    ui_->ground->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    FillAreaTypes(*ui_->ComboAreasType);
    FillPathTypes(*ui_->ComboPathType);
    for (QTreeWidget* list : {ui_->ListAreas, ui_->ListPaths}) {
        for (int column = 0; column < list->columnCount(); ++column)
            list->setColumnWidth(column,
                                 fontMetrics().horizontalAdvance(
                                     column == 0 ? "Thick Forest0" : "03280.840000"));
        list->header()->setStretchLastSection(false);
        list->setMinimumWidth(
            fontMetrics().horizontalAdvance("Thick Forest0" + QString(62, '0')));
    }
    // Their widths are those of what they will show.
    ui_->lblX->setMinimumWidth(fontMetrics().horizontalAdvance("X: -00000.00"));
    ui_->lblY->setMinimumWidth(fontMetrics().horizontalAdvance("Y: -00000.00"));
    JoinColor(ui_->cmdAreaCol, &Configuration::TileAreasColor);
    JoinColor(ui_->CmdAreaColSel, &Configuration::TileAreasSelectedColor);
    JoinColor(ui_->cmdPathCol, &Configuration::TilePathsColor);
    JoinColor(ui_->CmdPathColSel, &Configuration::TilePathsSelectedColor);
    for (QCheckBox* box : {ui_->chkShowAreas, ui_->chkShowPaths})
        OnSignal(box, &QAbstractButton::toggled, this, [this] { Redraw(); });
}

void FrmBINTileDet::JoinColor(ColorButton* button, uint32_t Configuration::*stored) {
    button->setAutoDefault(false);
    button->SetColor(parts_.Settings.*stored);
    OnSignal(button, &QAbstractButton::clicked, this, [this, button, stored] {
        if (!AskColor(*button, parts_.Dialogs))
            return;
        parts_.Settings.*stored = button->Color();
        RefreshForm();
    });
}

void FrmBINTileDet::ConnectPicture() {
    OnSignal(ui_->cmdAddArea, &QAbstractButton::clicked, this,
             [this] { tilePic_->SetPending(true, false); });
    OnSignal(ui_->cmdAddPath, &QAbstractButton::clicked, this,
             [this] { tilePic_->SetPending(false, true); });
    OnSignal(tilePic_, &TilePicture::AreaDrawn, this,
             [this](double startX, double startY, double endX, double endY) {
                 tile_.Add(AreaOf({startX, startY, endX, endY}, tilePic_->Scale(),
                                  ui_->ComboAreasType->currentIndex()));
                 FillAreas(-1);
                 RefreshForm();
                 MarkDirty();
             });
    OnSignal(tilePic_, &TilePicture::PathDrawn, this,
             [this](double startX, double startY, double endX, double endY) {
                 tile_.Add(PathOf({startX, startY, endX, endY}, tilePic_->Scale(),
                                  ui_->ComboPathType->currentIndex()));
                 FillPaths(-1);
                 RefreshForm();
                 MarkDirty();
             });
    OnSignal(tilePic_, &TilePicture::Hovered, this, [this](double x, double y) {
        const TileScale scale = tilePic_->Scale();
        ui_->lblX->setText(
            "X: " + QString::fromStdString(FormatFixed(scale.ScreenToFeetFlipped(y), 2)));
        ui_->lblY->setText("Y: " +
                           QString::fromStdString(FormatFixed(scale.ScreenToFeet(x), 2)));
    });
}

void FrmBINTileDet::ConnectLists() {
    OnSignal(ui_->ListAreas, &QTreeWidget::itemSelectionChanged, this, [this] {
        selectedArea_ = ChosenRow(*ui_->ListAreas);
        Redraw();
    });
    OnSignal(ui_->ListPaths, &QTreeWidget::itemSelectionChanged, this, [this] {
        selectedPath_ = ChosenRow(*ui_->ListPaths);
        Redraw();
    });
    OnSignal(ui_->ListAreas, &QTreeWidget::itemActivated, this,
             [this] { cmdAreaEdit_Click(); });
    OnSignal(ui_->ListPaths, &QTreeWidget::itemActivated, this,
             [this] { cmdPathEdit_Click(); });
    const auto join = [this](QPushButton* button, void (FrmBINTileDet::*work)()) {
        button->setAutoDefault(false);
        OnSignal(button, &QAbstractButton::clicked, this,
                 [this, work] { (this->*work)(); });
    };
    join(ui_->cmdAreaEdit, &FrmBINTileDet::cmdAreaEdit_Click);
    join(ui_->cmdPathEdit, &FrmBINTileDet::cmdPathEdit_Click);
    join(ui_->cmdAreaDelete, &FrmBINTileDet::cmdAreaDelete_Click);
    join(ui_->cmdPathDelete, &FrmBINTileDet::cmdPathDelete_Click);
    ui_->cmdAddArea->setAutoDefault(false);
    ui_->cmdAddPath->setAutoDefault(false);
}

void FrmBINTileDet::ConnectZoom() {
    const auto in = [this] { Zoom(ZoomedIn(zoom_)); };
    const auto out = [this] { Zoom(ZoomedOut(zoom_)); };
    OnSignal(ui_->cmdZoomin, &QAbstractButton::clicked, this, in);
    OnSignal(ui_->cmdZoomOut, &QAbstractButton::clicked, this, out);
    // Both keys that have a plus, both that have a minus, with Shift or without.
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Equal})
        OnSignal(addAction(QString(), QKeySequence(key)), &QAction::triggered, this, in);
    for (const Qt::Key key : {Qt::Key_Minus, Qt::Key_Underscore})
        OnSignal(addAction(QString(), QKeySequence(key)), &QAction::triggered, this, out);
}

// The middle of what is seen stays in the middle.
void FrmBINTileDet::Zoom(double zoom) {
    const auto middle = [](const QScrollBar& bar) {
        return (bar.value() + bar.pageStep() / 2.0) / (bar.maximum() + bar.pageStep());
    };
    const auto show = [](QScrollBar& bar, double share) {
        bar.setValue(static_cast<int>(std::lround(
            share * (bar.maximum() + bar.pageStep()) - bar.pageStep() / 2.0)));
    };
    QScrollBar& across = *ui_->ground->horizontalScrollBar();
    QScrollBar& down = *ui_->ground->verticalScrollBar();
    const double x = middle(across);
    const double y = middle(down);
    zoom_ = zoom;
    RefreshForm();
    show(across, x);
    show(down, y);
}

void FrmBINTileDet::RefreshForm() {
    tilePic_->SetZoom(zoom_);
    ui_->lblZoom->setText(QString::fromStdString(FormatFixed(zoom_, 3)));
    Redraw();
}

void FrmBINTileDet::Redraw() {
    const Configuration& colors = parts_.Settings;
    tilePic_->SetDrawn({.Tile = &tile_.Tile(),
                        .Areas = ui_->chkShowAreas->isChecked(),
                        .Paths = ui_->chkShowPaths->isChecked(),
                        .SelectedArea = selectedArea_,
                        .SelectedPath = selectedPath_,
                        .AreaColor = ColorOf(colors.TileAreasColor),
                        .SelectedAreaColor = ColorOf(colors.TileAreasSelectedColor),
                        .PathColor = ColorOf(colors.TilePathsColor),
                        .SelectedPathColor = ColorOf(colors.TilePathsSelectedColor)});
}

void FrmBINTileDet::FillAreas(int32_t row) {
    selectedArea_ = Fill(*ui_->ListAreas, tile_.Tile().NumAreas, row,
                         [this](int32_t each) { return AreaColumns(tile_.Area(each)); });
}

void FrmBINTileDet::FillPaths(int32_t row) {
    selectedPath_ = Fill(*ui_->ListPaths, tile_.Tile().NumPaths, row,
                         [this](int32_t each) { return PathColumns(tile_.Path(each)); });
}

void FrmBINTileDet::UpdateAreaListItem(int32_t row) {
    SetColumns(*ui_->ListAreas->topLevelItem(row - 1), AreaColumns(tile_.Area(row)));
}

void FrmBINTileDet::UpdatePathListItem(int32_t row) {
    SetColumns(*ui_->ListPaths->topLevelItem(row - 1), PathColumns(tile_.Path(row)));
}

void FrmBINTileDet::cmdAreaEdit_Click() {
    if (selectedArea_ == 0)
        return;
    if (!EditArea(tile_.Area(selectedArea_), this))
        return;
    UpdateAreaListItem(selectedArea_);
    RefreshForm();
    MarkDirty();
}

void FrmBINTileDet::cmdPathEdit_Click() {
    if (selectedPath_ == 0)
        return;
    if (!EditPath(tile_.Path(selectedPath_), this))
        return;
    UpdatePathListItem(selectedPath_);
    RefreshForm();
    MarkDirty();
}

void FrmBINTileDet::cmdAreaDelete_Click() {
    if (selectedArea_ == 0 ||
        !Confirmed(parts_.Dialogs, "Are you sure you want to delete the selected Area?"))
        return;
    tile_.DeleteArea(selectedArea_);
    FillAreas(-1);
    RefreshForm();
    MarkDirty();
}

void FrmBINTileDet::cmdPathDelete_Click() {
    if (selectedPath_ == 0 ||
        !Confirmed(parts_.Dialogs, "Are you sure you want to delete the selected Path?"))
        return;
    tile_.DeletePath(selectedPath_);
    FillPaths(-1);
    RefreshForm();
    MarkDirty();
}

void FrmBINTileDet::MarkDirty() {
    if (!tile_.Dirty())
        setWindowTitle("*" + windowTitle());
    tile_.SetDirty(true);
}

void FrmBINTileDet::cmdOK_Click() {
    TileRecord written = tile_.Tile();
    TileAt(parts_.Catalogue.Bin, SetOfNumber(number_), SlotOfNumber(number_)) =
        std::move(written);
    changed_ = tile_.Dirty();
    tile_.SetDirty(false);
    accept();
}

void FrmBINTileDet::reject() {
    if (tile_.Dirty() &&
        parts_.Dialogs.MessageBox(Discard, "Please Confirm", BoxIcon::Question,
                                  BoxButtons::YesNo) != BoxAnswer::Yes)
        return;
    QDialog::reject();
}

} // namespace vardenix

#include "moc_FrmBINTileDet.cpp"
