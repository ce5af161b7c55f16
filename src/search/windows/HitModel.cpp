#include "search/windows/HitModel.h"

#include "levels/TerrainStore.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace vardenix {

namespace {

constexpr std::array Headings{"Hit",       "X",       "Y",  "Tile Offset",
                              "Elevation", "Palette", "X1", "X2"};

} // namespace

HitModel::HitModel(const Terrain& terrain, const SearchResults& results)
    : terrain_(terrain), results_(results), marks_(results.size()) {}

void HitModel::BeginChange() {
    beginResetModel();
    changing_ = true;
    endResetModel();
}

void HitModel::EndChange() {
    beginResetModel();
    changing_ = false;
    marks_.assign(results_.size(), 0);
    hits_.clear();
    endResetModel();
}

void HitModel::MarkAll(bool marked) {
    std::ranges::fill(marks_, static_cast<uint8_t>(marked));
    if (rowCount() > 0)
        emit dataChanged(index(0, Number), index(rowCount() - 1, Number),
                         {Qt::CheckStateRole});
}

void HitModel::Toggle(const QModelIndex& index) {
    if (!index.isValid())
        return;
    const bool marked = marks_[HitOf(index)] != 0;
    setData(index.siblingAtColumn(Number), marked ? Qt::Unchecked : Qt::Checked,
            Qt::CheckStateRole);
}

size_t HitModel::HitOf(const QModelIndex& index) const {
    const auto row = static_cast<size_t>(index.row());
    return hits_.empty() ? row + 1 : static_cast<size_t>(hits_[row]);
}

int32_t HitModel::SerialOf(const QModelIndex& index) const {
    return results_[HitOf(index)];
}

int HitModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || changing_ ? 0 : static_cast<int>(results_.size()) - 1;
}

int HitModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

int32_t HitModel::ValueOf(size_t hit, int column) const {
    const int32_t serial = results_[hit];
    const PostXY at = SerialToXY(serial, terrain_.MapWidth);
    const TerrainPost& post = terrain_.LxArr(serial);
    switch (column) {
    case X:
        return static_cast<int32_t>(at.X) - 1;
    case Y:
        return static_cast<int32_t>(at.Y) - 1;
    case TileOffset:
        return post.TileOffset;
    case Elevation:
        return post.Elevation;
    case Palette:
        return post.Palette;
    case X1:
        return post.X1;
    case X2:
        return post.X2;
    default:
        return static_cast<int32_t>(hit);
    }
}

QVariant HitModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const size_t hit = HitOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return ValueOf(hit, index.column());
    case Qt::TextAlignmentRole:
        return index.column() == Number ? QVariant()
                                        : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::CheckStateRole:
        if (index.column() == Number)
            return marks_[hit] != 0 ? Qt::Checked : Qt::Unchecked;
        break;
    default:
        break;
    }
    return {};
}

QVariant HitModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return QString(Headings.at(static_cast<size_t>(section)));
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole &&
        section != Number)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags HitModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == Number)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool HitModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != Number)
        return false;
    marks_[HitOf(index)] = value.toInt() == Qt::Checked ? 1 : 0;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

void HitModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || rowCount() == 0)
        return;
    emit layoutAboutToBeChanged();
    // Values once, not at every comparison: a million hits are sorted at a click.
    std::vector<int32_t> values(results_.size());
    for (size_t hit = 1; hit < results_.size(); ++hit)
        values[hit] = ValueOf(hit, column);
    if (hits_.empty()) {
        hits_.resize(static_cast<size_t>(rowCount()));
        std::iota(hits_.begin(), hits_.end(), 1);
    }
    const std::vector<int32_t> before = hits_;
    const bool rising = order == Qt::AscendingOrder;
    std::ranges::stable_sort(hits_, [&](int32_t a, int32_t b) {
        const int32_t valueA = values[static_cast<size_t>(a)];
        const int32_t valueB = values[static_cast<size_t>(b)];
        return rising ? valueA < valueB : valueB < valueA;
    });
    const QModelIndexList kept = persistentIndexList();
    QModelIndexList moved;
    for (const QModelIndex& index : kept) {
        const int32_t hit = before[static_cast<size_t>(index.row())];
        const auto row = std::ranges::find(hits_, hit) - hits_.begin();
        moved += createIndex(static_cast<int>(row), index.column());
    }
    changePersistentIndexList(kept, moved);
    emit layoutChanged();
}

} // namespace vardenix

#include "moc_HitModel.cpp"
