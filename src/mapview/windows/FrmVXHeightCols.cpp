#include "mapview/windows/FrmVXHeightCols.h"

#include "platform/windows/AskColor.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/Numbers.h"
#include "ui_FrmVXHeightCols.h"

#include <QHeaderView>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>

namespace vardenix {

namespace {

enum Column { MinAlt, MaxAlt, RowColor };

int32_t FeetOf(const QLineEdit* box) {
    return ClampToInt32(Val(box->text().toStdString()));
}

QTreeWidgetItem* RowItem(const HeightColorEntry& row) {
    auto* item = new QTreeWidgetItem;
    item->setText(MinAlt, QString::number(row.Min));
    item->setText(MaxAlt, QString::number(row.Max));
    item->setTextAlignment(MinAlt, Qt::AlignRight | Qt::AlignVCenter);
    item->setTextAlignment(MaxAlt, Qt::AlignRight | Qt::AlignVCenter);
    item->setBackground(RowColor, ColorOf(row.Color));
    return item;
}

// Shows the cell's colour also where the bar of the selection would hide it.
class ColorCell : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option,
                   const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 6);
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        painter->fillRect(option.rect.adjusted(0, 0, 0, -1),
                          index.data(Qt::BackgroundRole).value<QBrush>());
    }
};

} // namespace

FrmVXHeightCols::FrmVXHeightCols(Configuration& settings, Dialogs& dialogs,
                                 WorkspaceCommands& commands, QWidget* parent)
    : QDialog(parent), settings_(settings), commands_(commands),
      ui_(std::make_unique<Ui::FrmVXHeightCols>()), rows_(settings.HeightColorList) {
    ui_->setupUi(this);
    ui_->Option1_0->setChecked(settings.UseSingleHeightColor);
    ui_->Option1_1->setChecked(!settings.UseSingleHeightColor);
    ui_->cmdDefCol->SetColor(settings.HeightDefaultColor);
    ui_->ListView1->header()->setSectionResizeMode(QHeaderView::Stretch);
    for (const Column column : {MinAlt, MaxAlt})
        ui_->ListView1->headerItem()->setTextAlignment(column,
                                                       Qt::AlignRight | Qt::AlignVCenter);
    ui_->ListView1->headerItem()->setTextAlignment(RowColor, Qt::AlignCenter);
    ui_->ListView1->setItemDelegateForColumn(RowColor, new ColorCell(this));
    FillListView(-1);
    Connect(dialogs);
}

FrmVXHeightCols::~FrmVXHeightCols() = default;

void FrmVXHeightCols::Connect(Dialogs& dialogs) {
    for (ColorButton* button : {ui_->cmdDefCol, ui_->cmdCol})
        OnSignal(button, &QAbstractButton::clicked, this,
                 [button, &dialogs] { AskColor(*button, dialogs); });
    OnSignal(ui_->ListView1, &QTreeWidget::itemSelectionChanged, this,
             [this] { ListView1_Click(); });
    OnSignal(ui_->ListView1, &QTreeWidget::itemClicked, this,
             [this] { ListView1_Click(); });
    OnSignal(ui_->cmdAdd, &QAbstractButton::clicked, this, [this] {
        const int row = SelectedRow();
        if (AddHeightColor(rows_, row, EnteredRow()))
            FillListView(row + 1);
    });
    OnSignal(ui_->cmdChange, &QAbstractButton::clicked, this, [this] {
        const int row = SelectedRow();
        if (ChangeHeightColor(rows_, row, EnteredRow()))
            FillListView(row);
    });
    OnSignal(ui_->cmdDelete, &QAbstractButton::clicked, this, [this] {
        const int row = SelectedRow();
        if (DeleteHeightColor(rows_, row))
            FillListView(std::min(row, static_cast<int>(rows_.size()) - 1));
    });
    OnSignal(ui_->cmdOK, &QAbstractButton::clicked, this, [this] { cmdOK_Click(); });
    OnSignal(ui_->cmdCancel, &QAbstractButton::clicked, this, [this] { reject(); });
}

void FrmVXHeightCols::FillListView(int selected) {
    {
        const QSignalBlocker quiet(ui_->ListView1);
        ui_->ListView1->clear();
        for (const HeightColorEntry& row : rows_)
            ui_->ListView1->addTopLevelItem(RowItem(row));
        ui_->ListView1->setCurrentItem(ui_->ListView1->topLevelItem(selected));
    }
    ListView1_Click();
}

int FrmVXHeightCols::SelectedRow() const {
    const QList<QTreeWidgetItem*> selected = ui_->ListView1->selectedItems();
    return selected.isEmpty() ? -1 : ui_->ListView1->indexOfTopLevelItem(selected[0]);
}

void FrmVXHeightCols::ListView1_Click() {
    const int row = SelectedRow();
    if (row >= 0) {
        const HeightColorEntry& entry = rows_[static_cast<size_t>(row)];
        ui_->txtMin->setText(QString::fromStdString(Format0(entry.Min)));
        ui_->txtMax->setText(QString::fromStdString(Format0(entry.Max)));
        ui_->cmdCol->SetColor(entry.Color);
    }
    EnableCommands();
}

HeightColorEntry FrmVXHeightCols::EnteredRow() const {
    return {.Color = ui_->cmdCol->Color(),
            .Min = FeetOf(ui_->txtMin),
            .Max = FeetOf(ui_->txtMax)};
}

void FrmVXHeightCols::EnableCommands() {
    const bool selected = SelectedRow() >= 0;
    ui_->cmdAdd->setEnabled(selected || rows_.empty());
    ui_->cmdChange->setEnabled(selected);
    ui_->cmdDelete->setEnabled(selected);
}

void FrmVXHeightCols::cmdOK_Click() {
    settings_.UseSingleHeightColor = ui_->Option1_0->isChecked();
    settings_.HeightDefaultColor = ui_->cmdDefCol->Color();
    settings_.HeightColorList = rows_;
    // The window goes even when the repaint fails.
    accept();
    commands_.RefreshPicArray();
}

} // namespace vardenix

#include "moc_FrmVXHeightCols.cpp"
