#pragma once

#include <QList>
#include <QMargins>
#include <QRect>

class QWidget;

namespace vardenix {

// The nearest place at which a window, frame included, lies within one of the screens: of
// the one that its middle is on, else of the first. Where it is larger than the screen
// its top left corner is kept.
QPoint PlaceWithin(const QRect& window, const QList<QRect>& screens);

// Where a window stands, frame included.
QPoint PlaceOf(const QWidget& window);

// The frame that the toolkit tells of: none where it looked while the desktop was about
// to make one, and tells of sides below 0.
QMargins FrameTold(const QMargins& told);

// What the desktop's frame adds to a window. Of one that has not been up yet it is that
// of any other window of the program, as one desktop gives them all the same; nothing
// where none is up.
QSize FrameSize(const QWidget& window);

// What is to be done about a window that comes up: asked every 20 ms, with whether the
// desktop has framed it yet and whether it stands where it shall.
//
// A window that changes its size before the desktop has framed it is taken by the place
// of its inside, and its title ends up above the screen. So it is moved once more when
// the frame is there, however long a busy desktop takes for that, and again when the
// desktop has moved it since. Nobody has a hand on it so soon.
class PlaceWatch {
public:
    enum class Step { Wait, Move, Done };
    Step Look(bool framed, bool inPlace);

private:
    int unframedLooks_ = 0;
    int framedLooks_ = 0;
    int rightLooks_ = 0; // one behind the other
};

// Where a window, frame included, lies wholly beside what it must not cover: at the
// right, the left, below or above; in the lower right of the room where no side has
// enough of it.
QPoint PlaceBeside(QSize window, const QRect& uncovered, const QRect& room);

// Moves a window, frame included, to a place on the screens there are now; what was
// stored may be from a desk with another screen.
void MoveOnScreen(QWidget& window, QPoint topLeft);

} // namespace vardenix
