#include "search/windows/FrmVXReplace.h"

#include "platform/windows/PinkBox.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/Windows1252.h"
#include "ui_FrmVXReplace.h"

#include <QEvent>

namespace vardenix {

namespace {

constexpr int LeastLetters = 34; // of a name that is seen whole

QString Counted(int64_t count, const char* one, const char* many) {
    return QString::number(count) + " " + (count == 1 ? one : many);
}

// "H0100.DDS", "17 tiles", or which word is wrong.
QString Told(const TileLookup& lookup, const std::vector<int32_t>& tiles,
             const std::string& unknown) {
    if (!unknown.empty())
        return QObject::tr("no tile: %1").arg(QString::fromStdString(unknown));
    if (tiles.empty())
        return {};
    const auto index = static_cast<size_t>(tiles.front());
    if (tiles.size() > 1 || index >= lookup.size())
        return Counted(static_cast<int64_t>(tiles.size()), "tile", "tiles");
    return QString::fromStdString(Utf8FromBytes(lookup[index].Name));
}

} // namespace

FrmVXReplace::FrmVXReplace(const ProgramState& state, SelectedPosts selected)
    : state_(state), selected_(std::move(selected)),
      ui_(std::make_unique<Ui::FrmVXReplace>()) {
    ui_->setupUi(this);
    for (QLineEdit* box : {ui_->txtOld, ui_->txtNew}) {
        box->setMinimumWidth(LeastLetters * fontMetrics().averageCharWidth());
        OnSignal(box, &QLineEdit::textChanged, this, [this] { CountAnew(); });
    }
    for (const QRadioButton* where : {ui_->optHits, ui_->optSelection})
        OnSignal(where, &QAbstractButton::toggled, this, [this] { CountAnew(); });
    OnSignal(ui_->cmdReplace, &QAbstractButton::clicked, this,
             [this] { emit ReplaceWanted(); });
    OnSignal(ui_->cmdClose, &QAbstractButton::clicked, this, [this] { hide(); });
}

FrmVXReplace::~FrmVXReplace() = default;

ReplaceWish FrmVXReplace::Wish() const {
    return {.Old = ui_->txtOld->text().toStdString(),
            .New = ui_->txtNew->text().toStdString(),
            .Seed = static_cast<uint32_t>(ui_->spnSeed->value()),
            .Where = ui_->optHits->isChecked()        ? ReplaceWhere::Hits
                     : ui_->optSelection->isChecked() ? ReplaceWhere::Selection
                                                      : ReplaceWhere::Everywhere,
            .Fitting = ui_->chkFitting->isChecked()};
}

void FrmVXReplace::SetOld(int32_t tile) { ui_->txtOld->setText(QString::number(tile)); }

void FrmVXReplace::TileChosen(int32_t tile) {
    if (tile == chosen_)
        return;
    chosen_ = tile;
    if (tile >= 0)
        ui_->txtNew->setText(QString::number(tile));
}

void FrmVXReplace::CountAnew() {
    const SearchResults& hits = state_.Search.Results;
    const auto found = static_cast<int64_t>(hits.size()) - 1;
    ui_->optHits->setText(
        tr("In the &hits of the last search (%1)").arg(Counted(found, "post", "posts")));
    const std::span<const RowSpan> spans = selected_();
    int64_t selected = 0;
    for (const RowSpan& span : spans)
        selected += int64_t{span.X2} - span.X1 + 1;
    ui_->optSelection->setText(
        tr("In the &selection (%1)").arg(Counted(selected, "post", "posts")));
    const TileLookup& lookup = state_.Catalogue.Lookup;
    const ReplacePlan plan = PlanOf(state_.Terrain, lookup, {hits, spans}, Wish());
    SetPink(*ui_->txtOld, !plan.UnknownOld.empty());
    SetPink(*ui_->txtNew, !plan.UnknownNew.empty());
    ui_->lblOld->setText(Told(lookup, plan.Old, plan.UnknownOld));
    ui_->lblNew->setText(Told(lookup, plan.New, plan.UnknownNew));
    ui_->spnSeed->setEnabled(plan.New.size() > 1);
    ui_->chkFitting->setEnabled(plan.New.size() < 2);
    ui_->lblCount->setText(Counted(plan.Posts, "post gives way", "posts give way"));
    ui_->cmdReplace->setEnabled(plan.Possible());
}

void FrmVXReplace::Tell(const QString& words) { ui_->lblCount->setText(words); }

void FrmVXReplace::showEvent(QShowEvent* event) {
    CountAnew();
    QWidget* first = ui_->txtOld->text().isEmpty() ? ui_->txtOld : ui_->txtNew;
    first->setFocus();
    QDialog::showEvent(event);
}

// Posts may have been painted while another window was in use.
void FrmVXReplace::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        CountAnew();
    QDialog::changeEvent(event);
}

} // namespace vardenix

#include "moc_FrmVXReplace.cpp"
