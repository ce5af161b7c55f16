#pragma once

#include "program/ChangeLog.h"
#include "workspace/HistoryRows.h"

#include <QAbstractTableModel>

#include <vector>

namespace vardenix {

// The rows of the history's list: earlier saves, and below them those of the log. That is
// borrowed and may change between two calls of Refresh only.
class HistoryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit HistoryModel(const ChangeLog& changes);

    void Refresh();
    void SetEarlier(std::vector<HistoryRow> rows);
    int Earlier() const { return static_cast<int>(earlier_.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role) const override;

private:
    int Rows() const;
    QVariant EarlierData(const QModelIndex& index, int role) const;

    const ChangeLog& changes_;
    std::vector<HistoryRow> earlier_;
    int rows_ = 0;
};

} // namespace vardenix
