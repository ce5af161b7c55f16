#include "world/windows/FrmImportElevations.h"

#include "platform/windows/PinkBox.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmImportElevations.h"

#include <QEvent>

#include <array>

namespace vardenix {

namespace {

// As the list of the window has them.
constexpr std::array Resamplings{Resampling::Bilinear, Resampling::Cubic,
                                 Resampling::Average, Resampling::Nearest};

std::optional<double> RealIn(const QLineEdit& box) {
    bool good = false;
    const double value = QLocale::c().toDouble(box.text().trimmed(), &good);
    return good ? std::optional(value) : std::nullopt;
}

// Pink where it holds no number.
bool TakesReal(QLineEdit& box, bool mayBeEmpty) {
    const bool good = RealIn(box) || (mayBeEmpty && box.text().trimmed().isEmpty());
    SetPink(box, !good);
    return good;
}

} // namespace

FrmImportElevations::FrmImportElevations(const Terrain& terrain)
    : terrain_(terrain), ui_(std::make_unique<Ui::FrmImportElevations>()) {
    ui_->setupUi(this);
    ui_->barWork->hide();
    // Nothing moves when they say more.
    const int line = fontMetrics().lineSpacing();
    ui_->lblPlace->setMinimumHeight(3 * line);
    ui_->lblTold->setMinimumHeight(2 * line);
    Connect();
}

FrmImportElevations::~FrmImportElevations() = default;

void FrmImportElevations::Connect() {
    for (QLineEdit* box :
         {ui_->txtMap, ui_->txtMapSystem, ui_->txtScale, ui_->txtOffset, ui_->txtNoData})
        OnSignal(box, &QLineEdit::textChanged, this, [this] { Follow(); });
    for (QComboBox* list : {ui_->cmbUnit, ui_->cmbHow, ui_->cmbWithout})
        OnSignal(list, &QComboBox::currentIndexChanged, this, [this] { Follow(); });
    for (QSpinBox* box : {ui_->spnX1, ui_->spnX2, ui_->spnY1, ui_->spnY2})
        OnSignal(box, &QSpinBox::valueChanged, this, [this] { Follow(); });
    for (QRadioButton* choice : {ui_->optStretch, ui_->optHeights})
        OnSignal(choice, &QAbstractButton::toggled, this, [this] { Follow(); });
    OnSignal(ui_->cmdWhole, &QAbstractButton::clicked, this, [this] {
        SetBox({0, 0, posts_ - 1, posts_ - 1});
    });
    OnSignal(ui_->cmdSelection, &QAbstractButton::clicked, this, [this] {
        if (selection_)
            SetBox(*selection_);
    });
    OnSignal(ui_->cmdBrowse, &QAbstractButton::clicked, this,
             [this] { emit BrowseWanted(); });
    OnSignal(ui_->cmdPreview, &QAbstractButton::clicked, this,
             [this] { emit PreviewWanted(); });
    OnSignal(ui_->cmdImport, &QAbstractButton::clicked, this,
             [this] { emit ImportWanted(); });
    OnSignal(ui_->cmdClose, &QAbstractButton::clicked, this, [this] { reject(); });
}

HeightsWish FrmImportElevations::Wish() const {
    HeightsWish wish;
    wish.Map = ui_->txtMap->text().trimmed().toStdString();
    wish.Into = ui_->optHeights->isChecked() ? Layer::Heights : Layer::Posts;
    if (ui_->optStretch->isChecked())
        wish.Over = Ordered({ui_->spnX1->value(), ui_->spnY1->value(),
                             ui_->spnX2->value(), ui_->spnY2->value()});
    else
        wish.MapSystem = ui_->txtMapSystem->text().trimmed().toStdString();
    wish.How = Resamplings.at(static_cast<size_t>(ui_->cmbHow->currentIndex()));
    wish.Units = {.Metres = ui_->cmbUnit->currentIndex() == 0,
                  .Scale = RealIn(*ui_->txtScale).value_or(1),
                  .Offset = RealIn(*ui_->txtOffset).value_or(0)};
    wish.Without =
        ui_->cmbWithout->currentIndex() == 0 ? WithoutData::Leave : WithoutData::Zero;
    wish.NoData = RealIn(*ui_->txtNoData);
    return wish;
}

void FrmImportElevations::SetMap(const QString& path) { ui_->txtMap->setText(path); }

void FrmImportElevations::SetPlace(const QString& words) {
    ui_->lblPlace->setText(words);
}

void FrmImportElevations::SetSelection(const std::optional<PostBox>& box) {
    selection_ = box;
    Follow();
}

void FrmImportElevations::Tell(const QString& words) { ui_->lblTold->setText(words); }

void FrmImportElevations::SetWorking(bool working) {
    working_ = working;
    stopped_ = false;
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->FraWhere), static_cast<QWidget*>(ui_->FraValues),
          static_cast<QWidget*>(ui_->FraInto), static_cast<QWidget*>(ui_->txtMap),
          static_cast<QWidget*>(ui_->cmdBrowse)})
        part->setEnabled(!working);
    ui_->barWork->setVisible(working);
    ui_->cmdClose->setText(working ? tr("Stop") : tr("Close"));
    if (working) {
        ui_->cmdPreview->setEnabled(false);
        ui_->cmdImport->setEnabled(false);
        ui_->cmdClose->setFocus();
        Tell({});
    } else {
        Follow();
        ui_->cmdImport->setFocus();
    }
}

// The boxes keep what the user has given while the terrain is as wide as it was.
void FrmImportElevations::FollowTerrain() {
    const bool loaded = terrain_.Elevations.EMapWidth > 0;
    ui_->optHeights->setEnabled(loaded);
    if (!loaded && ui_->optHeights->isChecked())
        ui_->optL2->setChecked(true);
    if (posts_ == terrain_.MapWidth)
        return;
    posts_ = terrain_.MapWidth;
    for (QSpinBox* box : {ui_->spnX1, ui_->spnX2, ui_->spnY1, ui_->spnY2})
        box->setMaximum(posts_ - 1);
    SetBox({0, 0, posts_ - 1, posts_ - 1});
}

void FrmImportElevations::SetBox(const PostBox& box) {
    ui_->spnX1->setValue(box.X1);
    ui_->spnX2->setValue(box.X2);
    ui_->spnY1->setValue(box.Y1);
    ui_->spnY2->setValue(box.Y2);
}

void FrmImportElevations::Follow() {
    if (working_)
        return;
    const bool stretch = ui_->optStretch->isChecked();
    ui_->txtMapSystem->setEnabled(!stretch);
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->spnX1), static_cast<QWidget*>(ui_->spnX2),
          static_cast<QWidget*>(ui_->spnY1), static_cast<QWidget*>(ui_->spnY2),
          static_cast<QWidget*>(ui_->cmdWhole)})
        part->setEnabled(stretch);
    ui_->cmdSelection->setEnabled(stretch && selection_.has_value());
    const bool numbers = int{TakesReal(*ui_->txtScale, false)} &
                         int{TakesReal(*ui_->txtOffset, false)} &
                         int{TakesReal(*ui_->txtNoData, true)};
    const bool possible = numbers && !ui_->txtMap->text().trimmed().isEmpty();
    ui_->cmdPreview->setEnabled(possible);
    ui_->cmdImport->setEnabled(possible);
    Tell({});
    emit WishChanged();
}

void FrmImportElevations::showEvent(QShowEvent* event) {
    FollowTerrain();
    Follow();
    ui_->txtMap->setFocus();
    QDialog::showEvent(event);
}

void FrmImportElevations::hideEvent(QHideEvent* event) {
    emit WishChanged();
    QDialog::hideEvent(event);
}

// Heights may have been loaded while another window was in use.
void FrmImportElevations::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !working_)
        FollowTerrain();
    QDialog::changeEvent(event);
}

// Esc and the close box: work is stopped first, and the window stays.
void FrmImportElevations::reject() {
    stopped_ = working_;
    if (!working_)
        QDialog::reject();
}

} // namespace vardenix

#include "moc_FrmImportElevations.cpp"
