#pragma once

#include <QIcon>

class QObject;

namespace vardenix {

// The program's icons are drawn in dark ink on nothing; in the dark look it is light.

// One of the resources, for the look of now.
QIcon IconFor(const char* resource);
// Every button of the program follows from now on; belongs to `application`.
void LightenIconsOf(QObject& application);
// In light ink from now on, or in their own.
void DressIcons(bool light);

} // namespace vardenix
