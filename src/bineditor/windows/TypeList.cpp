#include "bineditor/windows/TypeList.h"

#include "catalogue/TypeNames.h"

namespace vardenix {

void FillAreaTypes(QComboBox& list) {
    for (int index = 0; index < 2; ++index)
        list.addItem(QString::fromStdString(AreaTypeName(AreaTypeFromIndex(index))));
}

void FillPathTypes(QComboBox& list) {
    for (int index = 0; index < 4; ++index)
        list.addItem(QString::fromStdString(PathTypeName(PathTypeFromIndex(index))));
}

void TakeType(const QComboBox& list, int (*codeAt)(int), int32_t& type) {
    if (list.currentIndex() >= 0)
        type = codeAt(list.currentIndex());
}

} // namespace vardenix
