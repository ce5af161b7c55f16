#include "bineditor/windows/FloatBox.h"

#include "bineditor/TileDetail.h"
#include "platform/windows/ColorImage.h"

namespace vardenix {

namespace {

constexpr int MaxKeys = 64; // the longest number of the field has 47
constexpr uint32_t PinkColor = 0xC0C0FF;
constexpr uint32_t WhiteColor = 0xFFFFFF;

} // namespace

FloatBox::FloatBox(QWidget* parent) : NumberBox(parent) {
    TakeKeys(
        [](char32_t key) {
            return (key >= '0' && key <= '9') || key == '.' || key == '-';
        },
        MaxKeys);
}

void FloatBox::SetPink(bool pink) {
    pink_ = pink;
    QPalette colors = palette();
    colors.setColor(QPalette::Base, ColorOf(pink ? PinkColor : WhiteColor));
    setPalette(colors);
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
            box.SetPink(false);
            continue;
        }
        if (WriteFields({fields[i]}, {text})) {
            box.SetPink(true);
            box.setFocus();
            return false;
        }
        box.SetPink(false);
        changed = true;
    }
    return true;
}

} // namespace vardenix
