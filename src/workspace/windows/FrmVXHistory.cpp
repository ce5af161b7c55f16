#include "workspace/windows/FrmVXHistory.h"

#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmVXHistory.h"
#include "workspace/windows/HistoryModel.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>

#include <utility>

namespace vardenix {

FrmVXHistory::FrmVXHistory(const ChangeLog& changes)
    : changes_(changes), ui_(std::make_unique<Ui::FrmVXHistory>()),
      model_(std::make_unique<HistoryModel>(changes)) {
    ui_->setupUi(this);
    ui_->lstHistory->setModel(model_.get());
    ui_->lstHistory->installEventFilter(this);
    QHeaderView& header = *ui_->lstHistory->header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(1, QHeaderView::Stretch);
    const auto widthOf = [this](const char* text) {
        return fontMetrics().horizontalAdvance(text) + 16;
    };
    header.resizeSection(0, widthOf("00:00:00"));
    header.resizeSection(2, widthOf("L0/ELV, L2"));
    header.resizeSection(3, widthOf("L0/ELV, L2"));
    OnSignal(ui_->lstHistory, &QAbstractItemView::clicked, this,
             [this](const QModelIndex& index) {
                 if (index.row() >= model_->Earlier())
                     GoToRow(index.row());
             });
    OnSignal(ui_->lstHistory, &QAbstractItemView::doubleClicked, this,
             [this](const QModelIndex& index) {
                 if (index.row() < model_->Earlier())
                     GoToRow(index.row());
             });
    FollowPosition();
}

FrmVXHistory::~FrmVXHistory() = default;

void FrmVXHistory::ChangesChanged() {
    if (!isVisible())
        return;
    model_->Refresh();
    FollowPosition();
}

void FrmVXHistory::FollowPosition() {
    const QModelIndex now =
        model_->index(model_->Earlier() + static_cast<int>(changes_.Position()), 0);
    ui_->lstHistory->setCurrentIndex(now);
    ui_->lstHistory->scrollTo(now);
}

// Rows can be walked with the arrow keys without a change of the papers.
bool FrmVXHistory::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int row = ui_->lstHistory->currentIndex().row();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && row >= 0) {
            ShowRow(row);
            return true;
        }
        if (key == Qt::Key_Space && row >= 0) {
            GoToRow(row);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FrmVXHistory::GoToRow(int row) {
    if (row < model_->Earlier())
        emit EarlierWanted(static_cast<size_t>(row));
    else
        emit StateWanted(static_cast<size_t>(row - model_->Earlier()));
}

void FrmVXHistory::ShowRow(int row) {
    if (row >= model_->Earlier())
        emit PlaceWanted(static_cast<size_t>(row - model_->Earlier()));
}

void FrmVXHistory::ShowEarlier(std::vector<HistoryRow> saves) {
    model_->SetEarlier(std::move(saves));
    FollowPosition();
}

void FrmVXHistory::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    emit Shown();
    ChangesChanged();
}

void FrmVXHistory::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
    emit Closed();
}

} // namespace vardenix

#include "moc_FrmVXHistory.cpp"
