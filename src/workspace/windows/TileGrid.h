#pragma once

#include "workspace/TilePalette.h"

#include <QAbstractButton>
#include <QImage>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <vector>

namespace vardenix {

class TileGrid;

// A tile's picture that can be pressed. There may be thousands, so it paints itself, and
// asks for its picture when it is first seen.
class TileButton : public QAbstractButton {
    Q_OBJECT

public:
    TileButton(TileGrid& grid, int32_t index, int32_t tile);

    int32_t Tile() const { return tile_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    // The owner of the choice says which one is checked.
    void nextCheckState() override {}

private:
    const QImage& Picture();

    TileGrid& grid_;
    int32_t index_;
    int32_t tile_;
    QImage picture_;
};

// Frame1 of the tile palette: the buttons "Op2_<tile + 1>", placed by the rules of
// TilePalette.h. One of them is reached by Tab, the others from there by the arrow keys.
class TileGrid : public QWidget {
    Q_OBJECT

public:
    // A square picture of a tile, `side` pixels of the screen; null where there is none.
    using PictureSource = std::function<QImage(int32_t tile, int side)>;

    using QWidget::QWidget;

    void SetPictureSource(PictureSource source) { source_ = std::move(source); }
    // Takes the place of what was there. A tile that had the keyboard keeps it.
    void Build(const std::vector<int32_t>& tiles, const PaletteLayout& layout,
               const TileLookup& lookup);
    // The same buttons at other places.
    void Place(const PaletteLayout& layout);
    // The button of this tile, if there is one, looks chosen.
    void SetChosen(int32_t tile);
    // So do those of others that are painted in turn with it.
    void SetMore(const std::vector<int32_t>& tiles);
    // Rows that are seen whole, for the keys that turn pages.
    void SetWholeRows(int32_t rows) { wholeRows_ = rows; }

    int32_t Columns() const { return columns_; }

signals:
    void TileClicked(int tile);
    // By the mouse or Enter, behind TileClicked: whoever chose so looks elsewhere now.
    void TileTaken();
    // The keyboard has moved to a button of this row.
    void RowReached(int row);

private:
    friend class TileButton;

    void Unload();
    // Null where no button is of this tile.
    TileButton* ButtonOf(int32_t tile) const;
    void AddButton(int32_t tile, const PalettePlace& place, const TileLookup& lookup);
    // The one that Tab reaches.
    void SetCurrent(int32_t index);
    void Move(int32_t index, PaletteMove move);
    void FocusCame(int32_t index, Qt::FocusReason reason);

    PictureSource source_;
    std::vector<TileButton*> buttons_; // children
    TileButton* chosen_ = nullptr;
    std::vector<TileButton*> more_;
    int32_t current_ = -1;
    int32_t columns_ = 1;
    int32_t wholeRows_ = 1;
};

} // namespace vardenix
