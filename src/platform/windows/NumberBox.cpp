#include "platform/windows/NumberBox.h"

#include "texts/KeyFilters.h"

#include <QFocusEvent>
#include <QValidator>

#include <algorithm>

namespace vardenix {

namespace {

class KeyFilter : public QValidator {
public:
    KeyFilter(QObject* parent, std::function<bool(char32_t)> takes)
        : QValidator(parent), takes_(std::move(takes)) {}

    State validate(QString& text, int&) const override {
        const bool good = std::all_of(text.cbegin(), text.cend(), [this](QChar key) {
            return takes_(key.unicode());
        });
        return good ? Acceptable : Invalid;
    }

private:
    std::function<bool(char32_t)> takes_;
};

} // namespace

NumberBox::NumberBox(QWidget* parent) : QLineEdit(parent) {
    TakeKeys(KeepsDigitKey, 10); // what 32 bits hold; more is clamped when read
}

void NumberBox::TakeKeys(std::function<bool(char32_t)> takes, int maxLength) {
    const QValidator* former = validator();
    setValidator(new KeyFilter(this, std::move(takes)));
    delete former;
    setMaxLength(maxLength);
}

void NumberBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The press of the mouse that gave the focus would take the selection away again; a
    // key that follows Tab at once must not be typed before it.
    if (event->reason() == Qt::MouseFocusReason)
        QMetaObject::invokeMethod(this, "selectAll", Qt::QueuedConnection);
    else
        selectAll();
}

} // namespace vardenix

#include "moc_NumberBox.cpp"
