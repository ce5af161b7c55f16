#pragma once

#include <QList>
#include <QRect>

class QWidget;

namespace vardenix {

// The nearest place at which a window, frame included, lies within one of the screens: of
// the one that its middle is on, else of the first. Where it is larger than the screen
// its top left corner is kept.
QPoint PlaceWithin(const QRect& window, const QList<QRect>& screens);

// What the desktop's frame adds to a window. Of one that has not been up yet it is that
// of any other window of the program, as one desktop gives them all the same; nothing
// where none is up.
QSize FrameSize(const QWidget& window);

// Moves a window, frame included, to a place on the screens there are now; what was
// stored may be from a desk with another screen.
void MoveOnScreen(QWidget& window, QPoint topLeft);

} // namespace vardenix
