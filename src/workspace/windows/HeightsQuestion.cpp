#include "workspace/windows/HeightsQuestion.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

QSpinBox* AddFeet(QFormLayout& form, const char* name, const QString& label, int feet) {
    auto* number = new QSpinBox;
    number->setObjectName(name);
    number->setRange(std::numeric_limits<int16_t>::min(),
                     std::numeric_limits<int16_t>::max());
    number->setSuffix(QObject::tr(" ft"));
    number->setValue(feet);
    form.addRow(label, number);
    return number;
}

} // namespace

std::optional<HeightRange> AskForHeights(QWidget* parent) {
    static HeightRange last{0, 500};
    QDialog dialog(parent);
    dialog.setObjectName("HeightsQuestion");
    dialog.setWindowTitle(QObject::tr("Select between two heights"));
    auto* form = new QFormLayout(&dialog);
    QSpinBox* low = AddFeet(*form, "spnLow", QObject::tr("&From:"), last.Low);
    QSpinBox* high = AddFeet(*form, "spnHigh", QObject::tr("&To:"), last.High);
    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    form->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    low->selectAll();
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const auto [least, most] = std::minmax(low->value(), high->value());
    last = {static_cast<int16_t>(least), static_cast<int16_t>(most)};
    return last;
}

} // namespace vardenix
