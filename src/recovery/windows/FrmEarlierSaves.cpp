#include "recovery/windows/FrmEarlierSaves.h"

#include "platform/Clock.h"
#include "platform/windows/RunTimeBarrier.h"
#include "recovery/EarlierSaves.h"
#include "recovery/Restoring.h"
#include "ui_FrmEarlierSaves.h"

namespace vardenix {

namespace {

constexpr int PaperRole = Qt::UserRole;
constexpr int NumberRole = Qt::UserRole + 1;
constexpr uint64_t BytesInKiB = 1024;

} // namespace

FrmEarlierSaves::FrmEarlierSaves(ProgramState& state)
    : state_(state), ui_(std::make_unique<Ui::FrmEarlierSaves>()) {
    ui_->setupUi(this);
    setModal(true);
    ui_->treeSaves->setColumnWidth(0, 160);
    ui_->treeSaves->setColumnWidth(1, 190);
    OnSignal(ui_->cmdClose, &QAbstractButton::clicked, this, [this] { accept(); });
    OnSignal(ui_->cmdBringBack, &QAbstractButton::clicked, this,
             [this] { cmdBringBack_Click(); });
    OnSignal(ui_->treeSaves, &QTreeWidget::itemSelectionChanged, this, [this] {
        ui_->cmdBringBack->setEnabled(!ui_->treeSaves->selectedItems().isEmpty());
    });
}

FrmEarlierSaves::~FrmEarlierSaves() = default;

void FrmEarlierSaves::ShowSaves() {
    List();
    show();
    activateWindow();
}

void FrmEarlierSaves::List() {
    ui_->treeSaves->clear();
    QList<QTreeWidgetItem*> rows;
    for (const Paper paper : AllPapers) {
        int number = 0;
        for (const EarlierSave& save :
             EarlierSavesOf(state_, paper, state_.Folders.SavesFolder)) {
            const LocalTime then = LocalTimeOf(save.Time);
            auto row = std::make_unique<QTreeWidgetItem>(
                QStringList{QString::fromStdString(NameOfPaper(paper)),
                            QString::fromStdString(ShortMonthDate(then) + " " +
                                                   HoursMinutesSeconds(then)),
                            QString::number((save.Bytes + BytesInKiB - 1) / BytesInKiB)});
            row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
            row->setData(0, PaperRole, static_cast<int>(paper));
            row->setData(0, NumberRole, number++);
            rows.append(row.release());
        }
    }
    ui_->treeSaves->addTopLevelItems(rows);
    ui_->cmdBringBack->setEnabled(false);
    if (!rows.isEmpty())
        ui_->treeSaves->setCurrentItem(rows.front());
    ui_->treeSaves->setFocus();
}

void FrmEarlierSaves::cmdBringBack_Click() {
    const QTreeWidgetItem* row = ui_->treeSaves->currentItem();
    if (row == nullptr)
        return;
    BringBack(state_, static_cast<Paper>(row->data(0, PaperRole).toInt()),
              static_cast<size_t>(row->data(0, NumberRole).toInt()),
              state_.Folders.SavesFolder);
    accept();
    emit BroughtBack();
}

} // namespace vardenix

#include "moc_FrmEarlierSaves.cpp"
