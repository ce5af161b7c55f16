#pragma once

#include <QAbstractButton>
#include <QWidget>

#include <cstdint>
#include <vector>

namespace vardenix {

class PaletteGrid;

// One square of the grid, in its entry's colour.
class PaletteButton : public QAbstractButton {
    Q_OBJECT

public:
    PaletteButton(PaletteGrid& grid, int index);

    uint32_t Color() const { return color_; }
    void SetColor(uint32_t color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    PaletteGrid& grid_;
    int index_;
    uint32_t color_ = 0; // 0x00BBGGRR
};

// The palette as 16 by 16 square buttons Command1_0 to Command1_255, row by row, with the
// numbers of rows and columns beside them. One of them is the current one, which the
// keyboard works on and which Tab leads to; arrow keys, Home, End and the page keys move
// it.
class PaletteGrid : public QWidget {
    Q_OBJECT

public:
    explicit PaletteGrid(QWidget* parent = nullptr);

    // 0x00BBGGRR, of entry 0 to 255.
    uint32_t Color(int index) const;
    void SetColor(int index, uint32_t color);
    void SetTip(int index, const QString& tip);

    int Current() const { return current_; }
    // Makes an entry the current one and gives it the keyboard.
    void GoTo(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // A left click, Enter or the blank.
    void EntryClicked(int index);
    // A right click or the menu key.
    void DetailsWanted(int index);
    void CurrentChanged(int index);
    void CopyWanted(int index);
    void PasteWanted(int index);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend class PaletteButton;

    PaletteButton& Button(int index) const;
    void SetCurrent(int index);
    // Room for the numbers of rows, and of columns.
    QSize Margin() const;
    int Cell() const;

    std::vector<PaletteButton*> buttons_;
    int current_ = 0;
};

} // namespace vardenix
