#include "workspace/windows/FrmVXTileDetails.h"

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/WindowPlace.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"
#include "ui_FrmVXTileDetails.h"
#include "workspace/MapInteraction.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>

namespace vardenix {

namespace {

// One more than the longest number that fits, so that too large a one can be typed and is
// told of.
constexpr int MaxKeys = 11;

std::string TextOf(const QLineEdit* box) { return box->text().toStdString(); }

} // namespace

FrmVXTileDetails::FrmVXTileDetails(const TerrainPost& post, const Helpers& helpers,
                                   QWidget* parent)
    : FrmVXTileDetails(Layer::Posts, TextsOf(post), helpers, parent) {
    details_.Entered = post;
}

FrmVXTileDetails::FrmVXTileDetails(int16_t elevation, const Helpers& helpers,
                                   QWidget* parent)
    : FrmVXTileDetails(Layer::Heights, TextsOf(elevation), helpers, parent) {
    details_.Entered.Elevation = elevation;
}

FrmVXTileDetails::FrmVXTileDetails(Layer layer, const DetailTexts& texts,
                                   const Helpers& helpers, QWidget* parent)
    : QDialog(parent), helpers_(helpers), layer_(layer),
      ui_(std::make_unique<Ui::FrmVXTileDetails>()) {
    ui_->setupUi(this);
    Show(texts);
    for (const DetailField field :
         {DetailField::TileOffset, DetailField::Elevation, DetailField::Palette,
          DetailField::X1, DetailField::X2})
        Join(field);
    for (NumberBox* box : {ui_->Text1, ui_->Text3, ui_->Text4, ui_->Text5})
        box->setEnabled(layer == Layer::Posts);
    ui_->lblTile->setMinimumWidth(
        fontMetrics().horizontalAdvance("Not Specified in BIN File"));
    ui_->lblPlace->setText(tr("X %1   Y %2").arg(helpers.Place.X).arg(helpers.Place.Y));
    ui_->PicTile->setVisible(layer == Layer::Posts && helpers.Picture != nullptr);
    ShowTileName();
    (layer == Layer::Heights ? ui_->Text2 : ui_->Text1)->setFocus();
    OnSignal(ui_->Command2, &QAbstractButton::clicked, this,
             [this] { Command2_Click(); });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this, [this] { reject(); });
}

FrmVXTileDetails::~FrmVXTileDetails() = default;

void FrmVXTileDetails::Show(const DetailTexts& texts) {
    ui_->Text1->setText(QString::fromStdString(texts.TileOffset));
    ui_->Text2->setText(QString::fromStdString(texts.Elevation));
    ui_->Text3->setText(QString::fromStdString(texts.Palette));
    ui_->Text4->setText(QString::fromStdString(texts.X1));
    ui_->Text5->setText(QString::fromStdString(texts.X2));
}

DetailTexts FrmVXTileDetails::Entered() const {
    return {TextOf(ui_->Text1), TextOf(ui_->Text2), TextOf(ui_->Text3),
            TextOf(ui_->Text4), TextOf(ui_->Text5)};
}

NumberBox* FrmVXTileDetails::BoxOf(DetailField field) const {
    switch (field) {
    case DetailField::TileOffset:
        return ui_->Text1;
    case DetailField::Elevation:
        return ui_->Text2;
    case DetailField::Palette:
        return ui_->Text3;
    case DetailField::X1:
        return ui_->Text4;
    case DetailField::X2:
        break;
    }
    return ui_->Text5;
}

void FrmVXTileDetails::Join(DetailField field) {
    NumberBox* box = BoxOf(field);
    box->TakeKeys([field](char32_t key) { return KeepsDetailKey(field, key); }, MaxKeys);
    OnSignal(box, &QLineEdit::textChanged, this, [this, box, field](const QString& text) {
        const std::string typed = text.toStdString();
        const std::string left = AfterDetailChange(field, typed);
        if (left != typed)
            box->setText(QString::fromStdString(left));
        if (field == DetailField::TileOffset)
            ShowTileName();
    });
}

void FrmVXTileDetails::ShowTileName() {
    if (layer_ == Layer::Heights)
        return;
    const int32_t number = ClampToInt32(Val(TextOf(ui_->Text1)));
    ui_->lblTile->setText(
        QString::fromStdString(Utf8FromBytes(TileNameOf(number, helpers_.Lookup))));
    ShowPicture(number);
}

void FrmVXTileDetails::ShowPicture(int32_t tile) {
    if (!helpers_.Picture)
        return;
    const qreal dots = devicePixelRatioF();
    QPixmap picture =
        QPixmap::fromImage(helpers_.Picture(tile, qRound(ui_->PicTile->width() * dots)));
    picture.setDevicePixelRatio(dots);
    ui_->PicTile->setPixmap(picture);
}

void FrmVXTileDetails::PlaceItself() {
    if (helpers_.Uncovered.isNull())
        return;
    adjustSize();
    const QScreen* under = QGuiApplication::screenAt(helpers_.Uncovered.center());
    const QRect room = (under != nullptr ? under : screen())->availableGeometry();
    move(PlaceBeside(size() + FrameSize(*this), helpers_.Uncovered, room));
}

void FrmVXTileDetails::Command2_Click() {
    try {
        ReadDetails(Entered(), details_);
    } catch (const RuntimeError& error) {
        helpers_.Boxes.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        NumberBox* wrong = BoxOf(details_.Reading);
        wrong->setFocus();
        wrong->selectAll();
        return;
    }
    if (layer_ == Layer::Heights)
        helpers_.Workspace.L0NeedSave();
    else
        helpers_.Workspace.L2NeedSave();
    accept();
}

void FrmVXTileDetails::reject() {
    details_.DetailsUpdated = false;
    QDialog::reject();
}

namespace {

std::optional<TerrainPost> Ask(FrmVXTileDetails& dialog) {
    dialog.PlaceItself();
    dialog.exec();
    if (!dialog.Details().DetailsUpdated)
        return std::nullopt;
    return dialog.Details().Entered;
}

} // namespace

std::optional<TerrainPost> AskForPost(const TerrainPost& post,
                                      const FrmVXTileDetails::Helpers& helpers) {
    FrmVXTileDetails dialog(post, helpers, QApplication::activeWindow());
    return Ask(dialog);
}

std::optional<int16_t> AskForElevation(int16_t elevation,
                                       const FrmVXTileDetails::Helpers& helpers) {
    FrmVXTileDetails dialog(elevation, helpers, QApplication::activeWindow());
    const auto entered = Ask(dialog);
    if (!entered)
        return std::nullopt;
    return entered->Elevation;
}

} // namespace vardenix

#include "moc_FrmVXTileDetails.cpp"
