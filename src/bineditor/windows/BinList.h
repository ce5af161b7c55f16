#pragma once

#include <QTreeView>

namespace vardenix {

// A list of the BIN editor: whole rows, and what is typed finds the next row of which
// some column begins with it.
class BinList : public QTreeView {
    Q_OBJECT

public:
    explicit BinList(QWidget* parent = nullptr);

    // Selects the row and scrolls it into view, without a signal; none for -1.
    void ShowRow(int row);
    void keyboardSearch(const QString& typed) override;

signals:
    // By click or key.
    void RowChosen(int row);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool RowBegins(int row, const QString& text) const;

    bool quiet_ = false;
    bool pressed_ = false;
    QString sought_;
    qint64 lastTyped_ = 0; // ms
};

} // namespace vardenix
