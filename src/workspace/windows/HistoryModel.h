#pragma once

#include "program/ChangeLog.h"

#include <QAbstractTableModel>

namespace vardenix {

// The rows of the history's list. The log is borrowed and may change between two calls of
// Refresh only.
class HistoryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit HistoryModel(const ChangeLog& changes);

    void Refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role) const override;

private:
    const ChangeLog& changes_;
    int rows_ = 0;
};

} // namespace vardenix
