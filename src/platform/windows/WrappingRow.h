#pragma once

#include <QLayout>
#include <QList>

class QLayoutItem;

namespace vardenix {

// A row that goes on in the next line where it is too narrow for all its parts. Parts
// that can grow share what a line has left; or all are as wide as the widest, in columns.
class WrappingRow : public QLayout {
public:
    enum class Widths { Own, Columns };
    explicit WrappingRow(Widths widths = Widths::Own);
    ~WrappingRow() override;

    // Takes over all of a row of widgets, in their order, and the place of that row in a
    // widget, a column or a grid.
    static WrappingRow* InPlaceOf(QLayout* row, Widths widths = Widths::Own);

    void addItem(QLayoutItem* item) override { items_.append(item); }
    void AddLayout(QLayout* part);
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    QList<QLayoutItem*> Seen() const;
    int LineGap() const;
    int Widest() const;
    static int WidthOf(const QLayoutItem& item);
    // The height that they take; `place` gives them their places.
    int LayOut(const QRect& rect, bool place) const;
    void PlaceLine(const QList<QLayoutItem*>& line, const QRect& rect, int slot) const;

    Widths widths_;
    QList<QLayoutItem*> items_;
};

} // namespace vardenix
