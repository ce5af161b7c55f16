#pragma once

#include <QPushButton>

#include <cstdint>
#include <vector>

namespace vardenix {

// A button that wears the colour it sets.
class ColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit ColorButton(QWidget* parent = nullptr);

    // 0x00BBGGRR.
    void SetColor(uint32_t color);
    uint32_t Color() const { return colors_.front(); }
    // Stripes from left to right, for a button that stands for a table. Nothing for none.
    void SetColors(const std::vector<uint32_t>& colors);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<uint32_t> colors_{0}; // never empty
};

} // namespace vardenix
