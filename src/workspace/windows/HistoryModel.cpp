#include "workspace/windows/HistoryModel.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <array>
#include <utility>

namespace vardenix {

namespace {

constexpr std::array Headings{"Time", "Change", "File", "Saved"};

QString TextAt(const HistoryRow& row, int column) {
    const std::array texts{&row.Time, &row.Name, &row.Papers, &row.Saved};
    return QString::fromStdString(*texts.at(static_cast<size_t>(column)));
}

} // namespace

HistoryModel::HistoryModel(const ChangeLog& changes) : changes_(changes), rows_(Rows()) {}

int HistoryModel::Rows() const {
    return Earlier() + static_cast<int>(HistoryRows(changes_));
}

void HistoryModel::SetEarlier(std::vector<HistoryRow> rows) {
    beginResetModel();
    earlier_ = std::move(rows);
    rows_ = Rows();
    endResetModel();
}

void HistoryModel::Refresh() {
    const int rows = Rows();
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
    if (!index.isValid() || index.row() >= Rows())
        return {};
    if (index.row() < Earlier())
        return EarlierData(index, role);
    const auto row = static_cast<size_t>(index.row() - Earlier());
    if (role == Qt::FontRole && row == changes_.Position()) {
        QFont font = QGuiApplication::font();
        font.setBold(true);
        return font;
    }
    if (role == Qt::ForegroundRole && row > changes_.Position())
        return QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text);
    if (role != Qt::DisplayRole)
        return {};
    return TextAt(HistoryRowAt(changes_, row), index.column());
}

QVariant HistoryModel::EarlierData(const QModelIndex& index, int role) const {
    const HistoryRow& row = earlier_.at(static_cast<size_t>(index.row()));
    if (role == Qt::DisplayRole)
        return TextAt(row, index.column());
    if (role == Qt::ToolTipRole)
        return QString("A double click brings it back as a change.");
    return {};
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation,
                                  int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QString(Headings.at(static_cast<size_t>(section)));
}

} // namespace vardenix

#include "moc_HistoryModel.cpp"
