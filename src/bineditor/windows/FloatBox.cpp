#include "bineditor/windows/FloatBox.h"

#include "bineditor/TileDetail.h"
#include "platform/windows/PinkBox.h"

namespace vardenix {

namespace {

constexpr int MaxKeys = 64; // the longest number of the field has 47

} // namespace

FloatBox::FloatBox(QWidget* parent) : NumberBox(parent) {
    TakeKeys(
        [](char32_t key) {
            return (key >= '0' && key <= '9') || key == '.' || key == '-';
        },
        MaxKeys);
}

void FloatBoxes::Show(const std::vector<float*>& fields) {
    for (size_t i = 0; i < boxes_.size(); ++i)
        boxes_[i]->setText(QString::fromStdString(FieldText(*fields[i])));
}

// A box that nobody has typed in keeps its value to the last bit, of which it shows five
// decimals only.
bool FloatBoxes::Write(const std::vector<float*>& fields, bool& changed) {
    for (size_t i = 0; i < boxes_.size(); ++i) {
        FloatBox& box = *boxes_[i];
        const std::string text = box.text().toStdString();
        if (text == FieldText(*fields[i])) {
            SetPink(box, false);
            continue;
        }
        if (WriteFields({fields[i]}, {text})) {
            SetPink(box, true);
            box.setFocus();
            return false;
        }
        SetPink(box, false);
        changed = true;
    }
    return true;
}

} // namespace vardenix
