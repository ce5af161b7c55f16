#pragma once

#include <QComboBox>

#include <cstdint>

namespace vardenix {

// The lists of area and path types.
void FillAreaTypes(QComboBox& list);
void FillPathTypes(QComboBox& list);

// The code at the chosen place; a list without a choice, for a code that it does not
// have, leaves the type as it is.
void TakeType(const QComboBox& list, int (*codeAt)(int), int32_t& type);

} // namespace vardenix
