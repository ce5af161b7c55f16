#pragma once

#include <QLineEdit>

#include <functional>

namespace vardenix {

// A box for a whole number: takes digits and backspace, typed or pasted, up to nine of
// them, and selects all when it gets the focus.
class NumberBox : public QLineEdit {
    Q_OBJECT

public:
    explicit NumberBox(QWidget* parent = nullptr);

    // Other keys than digits, and as many as fit.
    void TakeKeys(std::function<bool(char32_t key)> takes, int maxLength);

protected:
    void focusInEvent(QFocusEvent* event) override;
};

} // namespace vardenix
