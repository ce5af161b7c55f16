#include "bineditor/windows/BinList.h"

#include "platform/windows/RunTimeBarrier.h"

#include <QDateTime>
#include <QHeaderView>
#include <QMouseEvent>

namespace vardenix {

BinList::BinList(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    header()->setStretchLastSection(true);
}

void BinList::ShowRow(int row) {
    quiet_ = true;
    const QModelIndex index = model()->index(row, 0);
    setCurrentIndex(index);
    if (index.isValid())
        scrollTo(index);
    else
        clearSelection();
    quiet_ = false;
}

void BinList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!quiet_ && !pressed_ && current.isValid())
        emit RowChosen(current.row());
}

// A click on the row that is chosen already counts too.
void BinList::mousePressEvent(QMouseEvent* event) {
    pressed_ = true;
    QTreeView::mousePressEvent(event);
    pressed_ = false;
    const QModelIndex clicked = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && clicked.isValid())
        emit RowChosen(clicked.row());
}

bool BinList::RowBegins(int row, const QString& text) const {
    for (int column = 0; column < model()->columnCount(); ++column)
        if (model()
                ->index(row, column)
                .data()
                .toString()
                .startsWith(text, Qt::CaseInsensitive))
            return true;
    return false;
}

void BinList::keyboardSearch(const QString& typed) {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool goesOn = now - lastTyped_ < QApplication::keyboardInputInterval();
    lastTyped_ = now;
    sought_ = goesOn ? sought_ + typed : typed;
    const int rows = model()->rowCount();
    const int current = currentIndex().isValid() ? currentIndex().row() : 0;
    // A word that grows may still fit the row it has found.
    for (int step = goesOn ? 0 : 1; step <= rows; ++step) {
        const int row = (current + step) % std::max(rows, 1);
        if (row < rows && RowBegins(row, sought_)) {
            setCurrentIndex(model()->index(row, 0));
            return;
        }
    }
}

} // namespace vardenix

#include "moc_BinList.cpp"
