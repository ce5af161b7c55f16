#pragma once

#include "program/SearchResults.h"

#include <QLabel>
#include <QWidget>

#include <array>

class QFrame;

namespace vardenix {

// The pattern of a search as it lies on the map: the frames Frame1_0 to Frame1_8 with
// what is asked of each post. One is selected, by a click or by the arrow keys.
class SearchCells : public QWidget {
    Q_OBJECT

public:
    explicit SearchCells(QWidget* parent = nullptr);

    // From 0, the post itself.
    int Selected() const { return selected_; }
    void Select(int cell);
    void SetPattern(const SearchPattern& pattern);
    const SearchPattern& Pattern() const { return pattern_; }
    // What is asked of the selected cell.
    void SetCell(const SearchCell& cell);

signals:
    void CellSelected(int cell);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct CellFrame {
        QFrame* Frame = nullptr;
        std::array<QLabel*, 5> Labels{};
    };
    CellFrame MakeFrame(int cell);
    void ShowCell(int cell);
    void ShowSelection();

    SearchPattern pattern_;
    std::array<CellFrame, 9> frames_;
    int selected_ = 0;
};

} // namespace vardenix
