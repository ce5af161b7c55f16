#pragma once

#include "platform/windows/NumberBox.h"

#include <vector>

namespace vardenix {

// A box for a number with a fraction: takes digits, "." and "-".
class FloatBox : public NumberBox {
public:
    explicit FloatBox(QWidget* parent = nullptr);
};

// The boxes of a dialog, in the order in which OK takes them.
class FloatBoxes {
public:
    explicit FloatBoxes(std::vector<FloatBox*> boxes) : boxes_(std::move(boxes)) {}

    void Show(const std::vector<float*>& fields);
    // Writes the boxes into the fields up to one that does not convert, which turns pink
    // and gets the keyboard. `changed` is set when a field got another value. True when
    // all are written.
    bool Write(const std::vector<float*>& fields, bool& changed);

private:
    std::vector<FloatBox*> boxes_;
};

} // namespace vardenix
