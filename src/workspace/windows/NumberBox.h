#pragma once

#include <QLineEdit>

namespace vardenix {

// A box for a whole number: takes digits and backspace, typed or pasted, and selects all
// when it gets the focus.
class NumberBox : public QLineEdit {
    Q_OBJECT

public:
    explicit NumberBox(QWidget* parent = nullptr);

protected:
    void focusInEvent(QFocusEvent* event) override;
};

} // namespace vardenix
