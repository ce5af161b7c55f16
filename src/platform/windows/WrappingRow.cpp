#include "platform/windows/WrappingRow.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace vardenix {

WrappingRow::WrappingRow(Widths widths) : widths_(widths) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(4);
}

WrappingRow::~WrappingRow() { qDeleteAll(items_); }

WrappingRow* WrappingRow::InPlaceOf(QLayout* row, Widths widths) {
    auto* wrapping = new WrappingRow(widths);
    wrapping->setContentsMargins(row->contentsMargins());
    while (QLayoutItem* item = row->takeAt(0))
        if (item->spacerItem() != nullptr)
            delete item;
        else
            wrapping->addItem(item);
    QWidget* owner = row->parentWidget();
    if (owner->layout() == row) {
        delete row;
        owner->setLayout(wrapping);
        return wrapping;
    }
    auto* outer = static_cast<QLayout*>(row->parent());
    const int at = outer->indexOf(row);
    if (auto* column = qobject_cast<QBoxLayout*>(outer)) {
        delete column->takeAt(at);
        column->insertLayout(at, wrapping);
    } else if (auto* grid = qobject_cast<QGridLayout*>(outer)) {
        int line = 0, column0 = 0, lines = 1, columns = 1;
        grid->getItemPosition(at, &line, &column0, &lines, &columns);
        delete grid->takeAt(at);
        grid->addLayout(wrapping, line, column0, lines, columns);
    }
    return wrapping;
}

// What can grow may also be narrower than it would like to be.
int WrappingRow::WidthOf(const QLayoutItem& item) {
    return item.expandingDirections().testFlag(Qt::Horizontal)
               ? item.minimumSize().width()
               : item.sizeHint().width();
}

void WrappingRow::AddLayout(QLayout* part) {
    addChildLayout(part);
    addItem(part);
}

QLayoutItem* WrappingRow::takeAt(int index) {
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

QList<QLayoutItem*> WrappingRow::Seen() const {
    QList<QLayoutItem*> seen;
    for (QLayoutItem* item : items_)
        if (!item->isEmpty())
            seen.append(item);
    return seen;
}

int WrappingRow::LineGap() const {
    return widths_ == Widths::Columns ? 2 : std::max(spacing() / 2, 2);
}

int WrappingRow::heightForWidth(int width) const {
    return LayOut(QRect(0, 0, width, 0), false);
}

int WrappingRow::Widest() const {
    int widest = 1;
    for (const QLayoutItem* item : Seen())
        widest = std::max(widest, item->sizeHint().width());
    return widest;
}

// One line, or two columns.
QSize WrappingRow::sizeHint() const {
    if (widths_ == Widths::Columns) {
        const QMargins round = contentsMargins();
        const int width = 2 * Widest() + spacing() + round.left() + round.right();
        return {width, heightForWidth(width)};
    }
    QSize size(0, 0);
    for (const QLayoutItem* item : Seen()) {
        const QSize hint = item->sizeHint();
        size = {size.width() + hint.width() + (size.width() > 0 ? spacing() : 0),
                std::max(size.height(), hint.height())};
    }
    return size.grownBy(contentsMargins());
}

QSize WrappingRow::minimumSize() const {
    QSize size(0, 0);
    for (const QLayoutItem* item : Seen())
        size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

void WrappingRow::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    LayOut(rect, true);
}

int WrappingRow::LayOut(const QRect& rect, bool place) const {
    const QRect inside = rect.marginsRemoved(contentsMargins());
    const QList<QLayoutItem*> seen = Seen();
    int slot = 0;
    if (widths_ == Widths::Columns) {
        const int columns =
            std::max(1, (inside.width() + spacing()) / (Widest() + spacing()));
        slot = (inside.width() + spacing()) / columns - spacing();
    }
    int y = inside.top();
    for (qsizetype at = 0; at < seen.size();) {
        QList<QLayoutItem*> line;
        int width = 0;
        int height = 0;
        for (; at < seen.size(); ++at) {
            const int wanted = slot > 0 ? slot : WidthOf(*seen[at]);
            if (!line.isEmpty() && width + spacing() + wanted > inside.width())
                break;
            width += wanted + (line.isEmpty() ? 0 : spacing());
            height = std::max(height, seen[at]->sizeHint().height());
            line.append(seen[at]);
        }
        if (place)
            PlaceLine(line, QRect(inside.left(), y, inside.width(), height), slot);
        y += height + LineGap();
    }
    const int below = seen.isEmpty() ? 0 : LineGap();
    return y - below - rect.top() + contentsMargins().bottom();
}

void WrappingRow::PlaceLine(const QList<QLayoutItem*>& line, const QRect& rect,
                            int slot) const {
    int left = rect.width() - static_cast<int>(line.size() - 1) * spacing();
    int growing = 0;
    for (const QLayoutItem* item : line) {
        left -= WidthOf(*item);
        growing += item->expandingDirections().testFlag(Qt::Horizontal) ? 1 : 0;
    }
    left = std::max(left, 0);
    int x = rect.left();
    for (QLayoutItem* item : line) {
        int width = std::min(WidthOf(*item), rect.width());
        if (slot > 0)
            width = slot;
        else if (item->expandingDirections().testFlag(Qt::Horizontal)) {
            const int share = left / std::max(growing, 1);
            width += share;
            left -= share;
            --growing;
        }
        const int height = item->sizeHint().height();
        item->setGeometry(QStyle::visualRect(
            parentWidget()->layoutDirection(), rect,
            QRect(x, rect.top() + (rect.height() - height) / 2, width, height)));
        x += width + spacing();
    }
}

} // namespace vardenix
