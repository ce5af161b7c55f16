#include "workspace/windows/TileGrid.h"

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "texts/Windows1252.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <optional>

namespace vardenix {

namespace {

// Between the button's edge and its picture; a chosen button's frame is twice as wide.
constexpr int Edge = 2;
constexpr int TickSide = 16;

std::optional<PaletteMove> MoveOf(int key) {
    switch (key) {
    case Qt::Key_Left:
        return PaletteMove::Left;
    case Qt::Key_Right:
        return PaletteMove::Right;
    case Qt::Key_Up:
        return PaletteMove::Up;
    case Qt::Key_Down:
        return PaletteMove::Down;
    case Qt::Key_PageUp:
        return PaletteMove::PageUp;
    case Qt::Key_PageDown:
        return PaletteMove::PageDown;
    case Qt::Key_Home:
        return PaletteMove::First;
    case Qt::Key_End:
        return PaletteMove::Last;
    default:
        return std::nullopt;
    }
}

QRect Shrunk(const QRect& rect, int by) { return rect.adjusted(by, by, -by, -by); }

// A frame alone could be lost on a tile of its colour.
void PaintTick(QPainter& painter, const QRect& button, const QPalette& colors) {
    QRect round(0, 0, TickSide, TickSide);
    round.moveBottomRight(Shrunk(button, Edge).bottomRight());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.color(QPalette::HighlightedText), 1.5));
    painter.setBrush(colors.color(QPalette::Highlight));
    painter.drawEllipse(round);
    painter.setPen(QPen(colors.color(QPalette::HighlightedText), 2, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    const QPoint corner = round.topLeft();
    const QPoint tick[] = {corner + QPoint(4, 8), corner + QPoint(7, 11),
                           corner + QPoint(12, 5)};
    painter.drawPolyline(tick, 3);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// Seen on light and dark tiles alike.
void PaintFocus(QPainter& painter, const QRect& inside) {
    const QRect line = inside.adjusted(0, 0, -1, -1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(line);
    painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter.drawRect(line);
}

} // namespace

TileButton::TileButton(TileGrid& grid, int32_t index, int32_t tile)
    : QAbstractButton(&grid), grid_(grid), index_(index), tile_(tile) {
    setObjectName("Op2_" + QString::number(tile + 1));
    setCheckable(true);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

const QImage& TileButton::Picture() {
    const int side = qRound(Shrunk(rect(), Edge).width() * devicePixelRatioF());
    if (picture_.width() != side) {
        picture_ = grid_.source_ ? grid_.source_(tile_, side) : QImage();
        // Asked once, also when there is none.
        if (picture_.isNull()) {
            picture_ = QImage(side, side, QImage::Format_RGB32);
            picture_.fill(palette().color(QPalette::Mid));
        }
    }
    return picture_;
}

void TileButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QPalette& colors = palette();
    const QRect inside = Shrunk(rect(), Edge);
    painter.fillRect(rect(), colors.color(isChecked()    ? QPalette::Highlight
                                          : underMouse() ? QPalette::Dark
                                                         : QPalette::Window));
    painter.drawImage(inside, Picture());
    if (isDown())
        painter.fillRect(inside, QColor(0, 0, 0, 70));
    if (isChecked()) {
        painter.setPen(QPen(colors.color(QPalette::Highlight), Edge));
        painter.drawRect(inside.adjusted(1, 1, -1, -1));
        painter.setPen(colors.color(QPalette::HighlightedText));
        painter.drawRect(Shrunk(inside, Edge).adjusted(0, 0, -1, -1));
        PaintTick(painter, rect(), colors);
    }
    if (hasFocus())
        PaintFocus(painter, isChecked() ? Shrunk(inside, Edge) : inside);
}

void TileButton::keyPressEvent(QKeyEvent* event) {
    if (const auto move = MoveOf(event->key()))
        grid_.Move(index_, *move);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        emit grid_.TileTaken();
    } else
        QAbstractButton::keyPressEvent(event);
}

void TileButton::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicks = isDown() && event->button() == Qt::LeftButton;
    QAbstractButton::mouseReleaseEvent(event);
    if (clicks)
        emit grid_.TileTaken();
}

void TileButton::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    grid_.FocusCame(index_, event->reason());
}

void TileGrid::Build(const std::vector<int32_t>& tiles, const PaletteLayout& layout,
                     const TileLookup& lookup) {
    const auto* focused = qobject_cast<TileButton*>(focusWidget());
    const bool hadFocus = focused != nullptr && focused->hasFocus();
    const int32_t focusedTile = focused != nullptr ? focused->Tile() : -1;
    Unload();
    columns_ = layout.Columns;
    resize(width(), PixelsOfTwips(layout.Frame1Height));
    buttons_.reserve(tiles.size());
    for (size_t i = 0; i < tiles.size(); ++i)
        AddButton(tiles[i], layout.Buttons[i], lookup);
    if (tiles.empty())
        return;
    const auto same = std::find(tiles.begin(), tiles.end(), focusedTile);
    SetCurrent(same == tiles.end() ? 0 : static_cast<int32_t>(same - tiles.begin()));
    if (hadFocus)
        buttons_[static_cast<size_t>(current_)]->setFocus(Qt::ActiveWindowFocusReason);
}

void TileGrid::Place(const PaletteLayout& layout) {
    columns_ = layout.Columns;
    resize(width(), PixelsOfTwips(layout.Frame1Height));
    for (size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->move(PixelsOfTwips(layout.Buttons[i].Left),
                          PixelsOfTwips(layout.Buttons[i].Top));
}

void TileGrid::Unload() {
    // In the order in which they were made, which is the one that the toolkit is quick
    // in.
    for (const TileButton* button : buttons_)
        delete button;
    buttons_.clear();
    chosen_ = nullptr;
    more_.clear();
    current_ = -1;
}

void TileGrid::AddButton(int32_t tile, const PalettePlace& place,
                         const TileLookup& lookup) {
    auto* button = new TileButton(*this, static_cast<int32_t>(buttons_.size()), tile);
    button->setGeometry(PixelsOfTwips(place.Left), PixelsOfTwips(place.Top),
                        PixelsOfTwips(PaletteButtonSide),
                        PixelsOfTwips(PaletteButtonSide));
    const QString caption =
        QString::fromStdString(Utf8FromBytes(TileCaption(lookup, tile)));
    button->setToolTip(caption);
    button->setAccessibleName(caption);
    OnSignal(button, &QAbstractButton::clicked, this,
             [this, tile] { emit TileClicked(tile); });
    button->show();
    buttons_.push_back(button);
}

// Buttons stand in the order of their tiles.
TileButton* TileGrid::ButtonOf(int32_t tile) const {
    const auto found = std::lower_bound(
        buttons_.begin(), buttons_.end(), tile,
        [](const TileButton* button, int32_t wanted) { return button->Tile() < wanted; });
    return found != buttons_.end() && (*found)->Tile() == tile ? *found : nullptr;
}

void TileGrid::SetChosen(int32_t tile) {
    TileButton* wanted = ButtonOf(tile);
    if (wanted == chosen_)
        return;
    if (chosen_ != nullptr)
        chosen_->setChecked(false);
    chosen_ = wanted;
    if (chosen_ == nullptr)
        return;
    chosen_->setChecked(true);
    SetCurrent(static_cast<int32_t>(std::find(buttons_.begin(), buttons_.end(), chosen_) -
                                    buttons_.begin()));
}

void TileGrid::SetMore(const std::vector<int32_t>& tiles) {
    for (TileButton* button : more_)
        button->setChecked(button == chosen_);
    more_.clear();
    for (const int32_t tile : tiles)
        if (TileButton* button = ButtonOf(tile)) {
            button->setChecked(true);
            more_.push_back(button);
        }
}

void TileGrid::SetCurrent(int32_t index) {
    if (current_ >= 0)
        buttons_[static_cast<size_t>(current_)]->setFocusPolicy(Qt::ClickFocus);
    current_ = index;
    buttons_[static_cast<size_t>(current_)]->setFocusPolicy(Qt::StrongFocus);
}

void TileGrid::Move(int32_t index, PaletteMove move) {
    const int32_t to = MoveInPalette(index, move, static_cast<int32_t>(buttons_.size()),
                                     columns_, wholeRows_);
    buttons_[static_cast<size_t>(to)]->setFocus(Qt::OtherFocusReason);
}

void TileGrid::FocusCame(int32_t index, Qt::FocusReason reason) {
    SetCurrent(index);
    // Under a mouse that is pressed, and when the window comes back, nothing may move.
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
        reason == Qt::OtherFocusReason)
        emit RowReached(index / columns_);
}

} // namespace vardenix

#include "moc_TileGrid.cpp"
