#pragma once

class QLineEdit;

namespace vardenix {

// Pink is a box whose text is not what it asks for; else it has the ground of all boxes.
void SetPink(QLineEdit& box, bool pink);
bool IsPink(const QLineEdit& box);

} // namespace vardenix
