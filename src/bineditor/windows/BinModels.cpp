#include "bineditor/windows/BinModels.h"

#include "bineditor/TileLists.h"
#include "catalogue/TileNumbers.h"
#include "platform/windows/Theme.h"
#include "texts/Windows1252.h"

#include <QColor>

#include <array>

namespace vardenix {

namespace {

constexpr std::array<const char*, 3> SetTitles{"Set #", "Set Type", "# of Tiles"};
constexpr std::array<const char*, 5> TileTitles{"#", "Set #", "Name", "Areas", "Paths"};
constexpr QColor EmptyGrey(0xC1, 0xC1, 0xC1);

template <size_t Columns>
QVariant Title(const std::array<const char*, Columns>& titles, int section,
               Qt::Orientation orientation, int role) {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QString(titles.at(static_cast<size_t>(section)));
}

QColor ColorOfLook(TileRowLook look) {
    switch (look) {
    case TileRowLook::Used:
        return IsDark() ? QColor(0xE8, 0xE8, 0xE4) : QColor(Qt::black);
    case TileRowLook::Unused:
        return IsDark() ? DangerColor() : QColor(Qt::red);
    case TileRowLook::Empty:
        break;
    }
    return EmptyGrey;
}

} // namespace

QString TextOf(const std::string& bytes) {
    return QString::fromStdString(Utf8FromBytes(bytes));
}

void SetModel::Refresh() {
    beginResetModel();
    rows_ = catalogue_.Bin.NumSets;
    endResetModel();
}

int SetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int SetModel::columnCount(const QModelIndex& /*parent*/) const {
    return static_cast<int>(SetTitles.size());
}

QVariant SetModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !HasSet(catalogue_.Bin, index.row() + 1))
        return {};
    return TextOf(
        SetColumns(catalogue_.Bin, index.row()).at(static_cast<size_t>(index.column())));
}

QVariant SetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return Title(SetTitles, section, orientation, role);
}

void TileModel::Refresh() {
    beginResetModel();
    rows_ = NumbersOf(catalogue_.Bin);
    endResetModel();
}

int TileModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int TileModel::columnCount(const QModelIndex& /*parent*/) const {
    return static_cast<int>(TileTitles.size());
}

// During a command the rows shown may be of a catalogue that has changed already.
QVariant TileModel::data(const QModelIndex& index, int role) const {
    if (static_cast<size_t>(index.row()) >= catalogue_.Lookup.size() ||
        index.row() >= NumbersOf(catalogue_.Bin))
        return {};
    if (role == Qt::ForegroundRole)
        return ColorOfLook(LookOf(catalogue_, index.row()));
    if (role != Qt::DisplayRole)
        return {};
    return TextOf(TileRowOf(catalogue_, index.row())
                      .Columns.at(static_cast<size_t>(index.column())));
}

QVariant TileModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return Title(TileTitles, section, orientation, role);
}

} // namespace vardenix

#include "moc_BinModels.cpp"
