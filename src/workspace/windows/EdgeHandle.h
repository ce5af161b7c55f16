#pragma once

#include <QAbstractButton>

#include <optional>

namespace vardenix {

// A narrow upright strip between two parts of a window, with an arrow towards the left
// one: a click folds that away or brings it back, by whoever listens, and drawing it to a
// side shares the room anew.
class EdgeHandle : public QAbstractButton {
    Q_OBJECT

public:
    explicit EdgeHandle(QWidget* parent);

    // The arrow points to where the part went, or will go.
    void ShowFolded(bool folded);

signals:
    // By so many pixels to the right since it was told last.
    void Dragged(int by);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool folded_ = false;
    bool dragged_ = false;
    std::optional<int> pressedAt_; // on the screen
};

} // namespace vardenix
