#include "mapeditor/windows/PaletteGrid.h"

#include "mapeditor/MapPalette.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <optional>

namespace vardenix {

namespace {

constexpr int UsualCell = 27; // pixels a side
constexpr int LeastCell = 18;

std::optional<PaletteStep> StepOf(int key) {
    switch (key) {
    case Qt::Key_Left:
        return PaletteStep::Left;
    case Qt::Key_Right:
        return PaletteStep::Right;
    case Qt::Key_Up:
        return PaletteStep::Up;
    case Qt::Key_Down:
        return PaletteStep::Down;
    case Qt::Key_Home:
        return PaletteStep::RowBegin;
    case Qt::Key_End:
        return PaletteStep::RowEnd;
    case Qt::Key_PageUp:
        return PaletteStep::Top;
    case Qt::Key_PageDown:
        return PaletteStep::Bottom;
    default:
        return std::nullopt;
    }
}

// A black frame with a white one inside, seen on every colour.
void PaintFocus(QPainter& painter, QRect frame) {
    painter.setBrush(Qt::NoBrush);
    for (const QColor& color : {QColor(Qt::black), QColor(Qt::white)})
        for (int line = 0; line < 2; ++line) {
            painter.setPen(color);
            painter.drawRect(frame.adjusted(0, 0, -1, -1));
            frame.adjust(1, 1, -1, -1);
        }
}

// Where the keyboard would go.
void PaintCurrent(QPainter& painter, const QRect& frame) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(frame.adjusted(0, 0, -1, -1));
    painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter.drawRect(frame.adjusted(1, 1, -2, -2));
}

} // namespace

PaletteButton::PaletteButton(PaletteGrid& grid, int index)
    : QAbstractButton(&grid), grid_(grid), index_(index) {
    setObjectName(QString("Command1_%1").arg(index));
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PaletteButton::SetColor(uint32_t color) {
    color_ = color;
    update();
}

void PaletteButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    const QRect square = rect().adjusted(0, 0, -1, -1);
    const QColor color = ColorOf(color_);
    painter.fillRect(square, isDown() ? color.darker(130) : color);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QColor(0, 0, 0, underMouse() ? 255 : 70));
    painter.drawRect(square.adjusted(0, 0, -1, -1));
    if (hasFocus())
        PaintFocus(painter, square);
    else if (grid_.Current() == index_)
        PaintCurrent(painter, square);
}

void PaletteButton::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        emit grid_.CopyWanted(index_);
    else if (event->matches(QKeySequence::Paste))
        emit grid_.PasteWanted(index_);
    else if (const auto step = StepOf(event->key()))
        grid_.GoTo(StepInPalette(index_, *step));
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void PaletteButton::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    setFocus(Qt::OtherFocusReason);
    emit grid_.DetailsWanted(index_);
}

void PaletteButton::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    grid_.SetCurrent(index_);
}

PaletteGrid::PaletteGrid(QWidget* parent) : QWidget(parent) {
    buttons_.reserve(PaletteSize);
    for (int i = 0; i < PaletteSize; ++i) {
        auto* button = new PaletteButton(*this, i);
        OnSignal(button, &QAbstractButton::clicked, this,
                 [this, i] { emit EntryClicked(i); });
        buttons_.push_back(button);
    }
    Button(current_).setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(&Button(current_));
}

PaletteButton& PaletteGrid::Button(int index) const {
    return *buttons_.at(static_cast<size_t>(index));
}

uint32_t PaletteGrid::Color(int index) const { return Button(index).Color(); }

void PaletteGrid::SetColor(int index, uint32_t color) { Button(index).SetColor(color); }

void PaletteGrid::SetTip(int index, const QString& tip) {
    Button(index).setToolTip(tip);
    Button(index).setAccessibleName(tip);
}

void PaletteGrid::GoTo(int index) {
    SetCurrent(index);
    Button(index).setFocus(Qt::OtherFocusReason);
}

void PaletteGrid::SetCurrent(int index) {
    if (index == current_)
        return;
    Button(current_).setFocusPolicy(Qt::ClickFocus);
    Button(current_).update();
    current_ = index;
    Button(current_).setFocusPolicy(Qt::StrongFocus);
    Button(current_).update();
    setFocusProxy(&Button(current_));
    emit CurrentChanged(index);
}

QSize PaletteGrid::Margin() const {
    return {fontMetrics().horizontalAdvance("240") + 6, fontMetrics().height() + 2};
}

int PaletteGrid::Cell() const {
    const QSize room = size() - Margin();
    return std::max(std::min(room.width(), room.height()) / PaletteSide, 1);
}

QSize PaletteGrid::sizeHint() const {
    return Margin() + QSize(UsualCell, UsualCell) * PaletteSide;
}

QSize PaletteGrid::minimumSizeHint() const {
    return Margin() + QSize(LeastCell, LeastCell) * PaletteSide;
}

void PaletteGrid::resizeEvent(QResizeEvent*) {
    const int cell = Cell();
    const QSize margin = Margin();
    for (int i = 0; i < PaletteSize; ++i)
        Button(i).setGeometry(margin.width() + i % PaletteSide * cell,
                              margin.height() + i / PaletteSide * cell, cell, cell);
}

void PaletteGrid::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int cell = Cell();
    const QSize margin = Margin();
    for (int i = 0; i < PaletteSide; ++i) {
        painter.drawText(QRect(margin.width() + i * cell, 0, cell, margin.height()),
                         Qt::AlignCenter, QString::number(i));
        painter.drawText(QRect(0, margin.height() + i * cell, margin.width() - 6, cell),
                         Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(i * PaletteSide));
    }
}

} // namespace vardenix

#include "moc_PaletteGrid.cpp"
