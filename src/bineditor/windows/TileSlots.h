#pragma once

#include <QImage>
#include <QWidget>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class QFrame;
class QMimeData;

namespace vardenix {

class TileSlots;

// The paths of the files that are dragged onto a window, whatever they are called: what
// is no picture is told when they come down. Empty when other things are among them.
std::vector<std::string> DraggedDds(const QMimeData& data);

// PicTile: one slot of the selected set.
class TileSlot : public QWidget {
    Q_OBJECT

public:
    TileSlot(TileSlots& owner, int slot);

    // Null shows an empty slot.
    void SetPicture(QImage picture);
    const QImage& Picture() const { return picture_; }
    int Slot() const { return slot_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    TileSlots& owner_;
    int slot_;
    QImage picture_;
};

// The sixteen slots, "PicTile_0" to "PicTile_15", four by four, with Highlightrect round
// the selected one. The arrow keys go from slot to slot.
class TileSlots : public QWidget {
    Q_OBJECT

public:
    static constexpr int Side = 96; // pixels of a slot

    explicit TileSlots(QWidget* parent = nullptr);

    TileSlot& At(int slot) const { return *slots_.at(static_cast<size_t>(slot)); }
    // Parked out of sight for -1.
    void SetHighlight(int slot, const QColor& color);
    int Highlighted() const { return highlighted_; }

signals:
    void SlotClicked(int slot);
    void SlotOpened(int slot); // by a double click or Enter
    void SlotHovered(int slot);
    void FilesDropped(int slot, const std::vector<std::string>& files);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void PlaceHighlight();

    std::array<TileSlot*, 16> slots_{};
    QFrame* highlightrect_ = nullptr;
    int highlighted_ = -1;
    QColor color_;
};

} // namespace vardenix
