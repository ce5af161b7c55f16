#pragma once

#include "catalogue/TextureBin.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <string>

namespace vardenix {

// The letters of the catalogue's bytes, which are Windows-1252.
QString TextOf(const std::string& bytes);

// The rows of ListView1, one for each set. The catalogue is borrowed and may change
// between two calls of Refresh only.
class SetModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit SetModel(const Catalogue& catalogue) : catalogue_(catalogue) {}

    // All rows anew.
    void Refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role) const override;

private:
    const Catalogue& catalogue_;
    int rows_ = 0;
};

// The rows of ListView2, one for each slot of each set.
class TileModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit TileModel(const Catalogue& catalogue) : catalogue_(catalogue) {}

    void Refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role) const override;

private:
    const Catalogue& catalogue_;
    int rows_ = 0;
};

} // namespace vardenix
