#include "workspace/windows/HistoryModel.h"

#include "workspace/HistoryRows.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <array>

namespace vardenix {

namespace {

constexpr std::array Headings{"Time", "Change", "File", "Saved"};

} // namespace

HistoryModel::HistoryModel(const ChangeLog& changes)
    : changes_(changes), rows_(static_cast<int>(HistoryRows(changes))) {}

void HistoryModel::Refresh() {
    const int rows = static_cast<int>(HistoryRows(changes_));
    if (rows != rows_) {
        beginResetModel();
        rows_ = rows;
        endResetModel();
    } else {
        emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
    }
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int HistoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Headings.size());
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<size_t>(index.row());
    if (!index.isValid() || row >= HistoryRows(changes_))
        return {};
    if (role == Qt::FontRole && row == changes_.Position()) {
        QFont font = QGuiApplication::font();
        font.setBold(true);
        return font;
    }
    if (role == Qt::ForegroundRole && row > changes_.Position())
        return QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text);
    if (role != Qt::DisplayRole)
        return {};
    const HistoryRow shown = HistoryRowAt(changes_, row);
    const std::array texts{&shown.Time, &shown.Name, &shown.Papers, &shown.Saved};
    return QString::fromStdString(*texts.at(static_cast<size_t>(index.column())));
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation,
                                  int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QString(Headings.at(static_cast<size_t>(section)));
}

} // namespace vardenix
