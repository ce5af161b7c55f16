#include "search/windows/FrmVXStatistics.h"

#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmVXStatistics.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <set>

namespace vardenix {

namespace {

enum StatisticsColumn { What, Count, Share };
// The share of all posts, 0 to 1, behind its text.
constexpr int ShareRole = Qt::UserRole;
constexpr int BarWidth = 180; // pixels

class ShareBar : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const double share = index.data(ShareRole).toDouble();
        QRect bar = option.rect.adjusted(1, 2, -1, -2);
        bar.setWidth(static_cast<int>(bar.width() * std::clamp(share, 0.0, 1.0)));
        QColor color = option.palette.color(QPalette::Highlight);
        color.setAlpha(110); // the text is read on it
        painter->fillRect(bar, color);
        QStyledItemDelegate::paint(painter, option, index);
    }
};

// Titles of the groups whose rows are seen.
std::set<QString> OpenGroups(const QTreeWidget& list) {
    std::set<QString> open;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        if (list.topLevelItem(i)->isExpanded())
            open.insert(list.topLevelItem(i)->data(What, Qt::UserRole).toString());
    return open;
}

} // namespace

FrmVXStatistics::FrmVXStatistics(const ProgramState& state, SeamPosts seams)
    : state_(state), seams_(std::move(seams)),
      ui_(std::make_unique<Ui::FrmVXStatistics>()) {
    ui_->setupUi(this);
    QTreeWidget& list = *ui_->lstRows;
    list.setItemDelegateForColumn(Share, new ShareBar(&list));
    list.installEventFilter(this);
    QHeaderView& header = *list.header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(What, QHeaderView::Stretch);
    header.resizeSection(Count, fontMetrics().horizontalAdvance("000000000") + 16);
    header.resizeSection(Share, BarWidth);
    OnSignal(&list, &QTreeWidget::itemClicked, this,
             [this](const QTreeWidgetItem* item, int) { Want(item); });
    OnSignal(ui_->cmdCount, &QAbstractButton::clicked, this, [this] { CountAnew(); });
}

FrmVXStatistics::~FrmVXStatistics() = default;

void FrmVXStatistics::CountAnew() {
    const TileLookup& lookup = state_.Catalogue.Lookup;
    const Statistics told = StatisticsOf(state_.Terrain, lookup);
    groups_ = GroupsOf(told, lookup);
    groups_.push_back(SeamsOf(seams_()));
    ui_->lblSummary->setText(QString::fromStdString(StatisticsInWords(told)));
    Show(groups_, told.Posts);
}

// Groups that were open stay so; at first those of few rows are.
void FrmVXStatistics::Show(const std::vector<StatisticsGroup>& groups, int64_t all) {
    QTreeWidget& list = *ui_->lstRows;
    const std::set<QString> open =
        list.topLevelItemCount() == 0
            ? std::set<QString>{"Sea", "Kinds", "Heights", "Seams"}
            : OpenGroups(list);
    list.clear();
    int groupIndex = 0;
    for (const StatisticsGroup& group : groups) {
        auto* top = new QTreeWidgetItem(&list);
        const QString title = QString::fromStdString(group.Title);
        top->setText(What, tr("%1 (%2)").arg(title).arg(group.Rows.size()));
        top->setData(What, Qt::UserRole, title);
        top->setFlags(Qt::ItemIsEnabled);
        top->setFirstColumnSpanned(true);
        int rowIndex = 0;
        for (const StatisticsRow& row : group.Rows) {
            auto* item = new QTreeWidgetItem(top);
            item->setText(What, QString::fromStdString(row.What));
            item->setData(What, Qt::UserRole, QPoint(groupIndex, rowIndex));
            if (row.Posts < 0) {
                item->setToolTip(What, tr("Counted once the land has been learned, which "
                                          "a click here begins"));
                ++rowIndex;
                continue;
            }
            item->setData(Count, Qt::DisplayRole, static_cast<qlonglong>(row.Posts));
            item->setTextAlignment(Count, Qt::AlignRight | Qt::AlignVCenter);
            item->setText(Share, QString::fromStdString(ShareOf(row.Posts, all)));
            item->setTextAlignment(Share, Qt::AlignRight | Qt::AlignVCenter);
            item->setData(Share, ShareRole,
                          all == 0 ? 0.0
                                   : static_cast<double>(row.Posts) /
                                         static_cast<double>(all));
            ++rowIndex;
        }
        top->setExpanded(open.count(title) != 0);
        ++groupIndex;
    }
}

void FrmVXStatistics::Want(const QTreeWidgetItem* item) {
    if (item == nullptr || item->parent() == nullptr)
        return;
    const QPoint place = item->data(What, Qt::UserRole).toPoint();
    emit RowWanted(groups_.at(static_cast<size_t>(place.x()))
                       .Rows.at(static_cast<size_t>(place.y())));
}

bool FrmVXStatistics::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Want(ui_->lstRows->currentItem());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FrmVXStatistics::showEvent(QShowEvent* event) {
    CountAnew();
    QWidget::showEvent(event);
}

} // namespace vardenix

#include "moc_FrmVXStatistics.cpp"
