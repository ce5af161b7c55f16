#include "workspace/windows/NumberBox.h"

#include "workspace/PanelRules.h"

#include <QValidator>

#include <algorithm>

namespace vardenix {

namespace {

class DigitKeys : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int&) const override {
        return std::all_of(text.cbegin(), text.cend(),
                           [](QChar key) { return KeepsDigitKey(key.unicode()); })
                   ? Acceptable
                   : Invalid;
    }
};

} // namespace

NumberBox::NumberBox(QWidget* parent) : QLineEdit(parent) {
    setValidator(new DigitKeys(this));
    setMaxLength(10); // what 32 bits hold; more is clamped when it is read
}

void NumberBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The press of the mouse that gave the focus would take the selection away again.
    QMetaObject::invokeMethod(this, "selectAll", Qt::QueuedConnection);
}

} // namespace vardenix
