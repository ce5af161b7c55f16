#pragma once

#include "levels/Terrain.h"
#include "program/SearchResults.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <vector>

namespace vardenix {

// The hits of a search as rows of a list: number with a check mark, X and Y from 0, and
// what the post's fields are now. Nothing is kept for a row but its mark and its place.
class HitModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Number, X, Y, TileOffset, Elevation, Palette, X1, X2, Columns };

    // Both are borrowed. `results` must not change but between BeginChange and EndChange.
    HitModel(const Terrain& terrain, const SearchResults& results);

    // There are no rows in between.
    void BeginChange();
    // No row is marked, and they stand in the order of the hits.
    void EndChange();

    void MarkAll(bool marked);
    // By hit, from 1; 0 is not marked.
    const std::vector<uint8_t>& Marks() const { return marks_; }
    void Toggle(const QModelIndex& index);
    // The serial of the post of a row.
    int32_t SerialOf(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    // Rows with equal values stay as they stood.
    void sort(int column, Qt::SortOrder order) override;

private:
    size_t HitOf(const QModelIndex& index) const;
    int32_t ValueOf(size_t hit, int column) const;

    const Terrain& terrain_;
    const SearchResults& results_;
    std::vector<uint8_t> marks_;
    bool changing_ = false;
    std::vector<int32_t> hits_; // by row, from 0; empty: row and hit go together
};

} // namespace vardenix
