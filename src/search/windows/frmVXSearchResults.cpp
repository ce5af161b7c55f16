#include "search/windows/frmVXSearchResults.h"

#include "levels/TerrainStore.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/KeyFilters.h"
#include "ui_frmVXSearchResults.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace vardenix {

namespace {

constexpr int TileDigits = 9; // any of them fits 32 bits
constexpr int RowsShown = 18;
constexpr int HeadingMargin = 8; // pixels

QString CountText(size_t count, const char* one, const char* many) {
    return QString::number(count) + " " + (count == 1 ? one : many);
}

} // namespace

frmVXSearchResults::frmVXSearchResults(ProgramState& state, WorkspaceCommands& commands)
    : state_(state), commands_(commands), ui_(std::make_unique<Ui::frmVXSearchResults>()),
      model_(state.Terrain, state.Search.Results) {
    ui_->setupUi(this);
    DressList();
    for (size_t field = 0; field < HitFields; ++field)
        JoinField(field);
    OnSignal(ui_->chkSelectAll, &QAbstractButton::clicked, this,
             [this](bool checked) { model_.MarkAll(checked); });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    OnSignal(ui_->cmdRestorePoint, &QAbstractButton::clicked, this,
             [this] { emit RestorePointWanted(); });
    QSizePolicy policy = ui_->PB8->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    ui_->PB8->setSizePolicy(policy);
    ui_->PB8->setMaximumWidth(ui_->Frame2->sizeHint().width());
    ui_->PB8->hide();
    ShowStatus();
}

frmVXSearchResults::~frmVXSearchResults() = default;

std::array<QCheckBox*, HitFields> frmVXSearchResults::Checks() const {
    return {ui_->Check1_0, ui_->Check1_1, ui_->Check1_2, ui_->Check1_3, ui_->Check1_4};
}

std::array<QLineEdit*, HitFields> frmVXSearchResults::Boxes() const {
    return {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3, ui_->Text1_4};
}

void frmVXSearchResults::DressList() {
    QTreeView& list = *ui_->ListRes;
    list.setModel(&model_);
    list.sortByColumn(HitModel::Number, Qt::AscendingOrder);
    list.installEventFilter(this);
    const QFontMetrics metrics = fontMetrics();
    // Looking at every row for its width would take seconds for a million.
    QHeaderView& header = *list.header();
    header.setSectionResizeMode(QHeaderView::Interactive);
    header.setStretchLastSection(true);
    int width = 0;
    for (int column = 0; column < HitModel::Columns; ++column) {
        const QString heading =
            model_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const QString wide = column == HitModel::Number ? "[x]00000000" : "00000";
        const int section = std::max(metrics.horizontalAdvance(heading + "M"),
                                     metrics.horizontalAdvance(wide)) +
                            HeadingMargin;
        header.resizeSection(column, section);
        width += section;
    }
    list.setMinimumWidth(width + 2 * list.frameWidth() + 24);
    list.setMinimumHeight((metrics.height() + 4) * RowsShown);
    OnSignal(&model_, &HitModel::dataChanged, this, [this] { markClicked_ = true; });
    OnSignal(&list, &QAbstractItemView::pressed, this, [this] { markClicked_ = false; });
    OnSignal(&list, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (!markClicked_)
            ItemClick(index);
    });
}

void frmVXSearchResults::JoinField(size_t field) {
    auto* check = Checks()[field];
    auto* box = static_cast<NumberBox*>(Boxes()[field]);
    if (field == 0)
        box->TakeKeys(KeepsDigitKey, TileDigits);
    OnSignal(check, &QAbstractButton::toggled, this, [this] { Check1_Click(); });
    OnSignal(box, &QLineEdit::textChanged, this, [box, field](const QString& text) {
        const QString left =
            QString::fromStdString(HitFieldText(field, text.toStdString()));
        if (left != text) {
            box->setText(left);
            box->selectAll(); // what is typed next takes its place
        }
    });
}

void frmVXSearchResults::Check1_Click() {
    bool any = false;
    for (size_t field = 0; field < HitFields; ++field) {
        const bool checked = Checks()[field]->isChecked();
        Boxes()[field]->setEnabled(checked);
        any = any || checked;
    }
    ui_->Command1->setEnabled(any);
}

void frmVXSearchResults::PopulateResList(const std::function<void()>& search) {
    const auto fill = [this] {
        model_.EndChange();
        ui_->ListRes->header()->setSortIndicator(HitModel::Number, Qt::AscendingOrder);
        ui_->chkSelectAll->setChecked(false);
        ShowStatus();
    };
    model_.BeginChange();
    try {
        search();
    } catch (...) {
        fill();
        throw;
    }
    fill();
}

void frmVXSearchResults::RestorePointMade() {
    ui_->lblHits->setText(tr("The restore point is made."));
}

void frmVXSearchResults::PostsChanged() { ui_->ListRes->viewport()->update(); }

void frmVXSearchResults::ShowStatus() {
    const SearchState& search = state_.Search;
    ui_->lblHits->setText(tr("%1 in %2 ms")
                              .arg(CountText(search.Results.size() - 1, "hit", "hits"))
                              .arg(QString::number(search.Milliseconds, 'f',
                                                   search.Milliseconds < 10 ? 1 : 0)));
    ui_->chkSelectAll->setEnabled(search.Results.size() > 1);
}

void frmVXSearchResults::ItemClick(const QModelIndex& index) {
    if (!index.isValid())
        return;
    const PostXY post = SerialToXY(model_.SerialOf(index), state_.Terrain.MapWidth);
    commands_.ScrollTo(static_cast<int>(post.X) - 1, static_cast<int>(post.Y) - 1);
}

void frmVXSearchResults::Command1_Click() {
    std::array<bool, HitFields> checked{};
    std::array<std::string, HitFields> texts;
    for (size_t field = 0; field < HitFields; ++field) {
        checked[field] = Checks()[field]->isChecked();
        texts[field] = Boxes()[field]->text().toStdString();
    }
    ui_->PB8->show();
    SetPB8(0);
    int64_t count = 0;
    {
        Recording made(state_.Changes, {Paper::Level2}, "Set All Selected");
        count = SetHits(state_.Terrain, state_.Search.Results, model_.Marks(),
                        HitChange(checked, texts));
        made.Rename("Set " +
                    CountText(static_cast<size_t>(count), "post", "posts").toStdString());
    }
    SetPB8(100);
    ui_->PB8->hide();
    if (count == 0) {
        ui_->lblHits->setText(tr("Tick the hits that are to be set."));
        return;
    }
    commands_.L2NeedSave();
    PostsChanged();
    ui_->lblHits->setText(
        tr("%1 set").arg(CountText(static_cast<size_t>(count), "post", "posts")));
    commands_.Tell(CountText(static_cast<size_t>(count), "post changed", "posts changed")
                       .toStdString());
    commands_.RefreshPicArray();
}

void frmVXSearchResults::SetPB8(int value) { ui_->PB8->setValue(value); }

bool frmVXSearchResults::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->ListRes && event->type() == QEvent::KeyPress) {
        const QModelIndex current = ui_->ListRes->currentIndex();
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            ItemClick(current);
            return true;
        case Qt::Key_Space:
            model_.Toggle(current);
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmVXSearchResults::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    hide();
    commands_.WindowHidden("chkShowResults");
}

} // namespace vardenix

#include "moc_frmVXSearchResults.cpp"
