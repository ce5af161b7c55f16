#include "search/windows/SearchCells.h"

#include "platform/windows/ColorImage.h"
#include "platform/windows/Theme.h"
#include "search/TileSearch.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>

namespace vardenix {

namespace {

constexpr uint32_t SelectedColor = 0xC0FFC0;
constexpr uint32_t OtherColor = 0xC0FFFF;
constexpr int CellCount = 9;

struct Field {
    const char* Label; // of the control
    const char* Caption;
    std::string SearchCell::*Text;
};
constexpr std::array<Field, 5> Fields{{{"lblTile", "Tile", &SearchCell::CellTile},
                                       {"lblElv", "Elv", &SearchCell::CellElevation},
                                       {"lblPal", "Pal", &SearchCell::CellPalette},
                                       {"lblX1", "X1", &SearchCell::CellX1},
                                       {"lblX2", "X2", &SearchCell::CellX2}}};

// The cell that lies so many posts from the middle; -1 for none.
int CellAt(int across, int up) {
    for (int cell = 0; cell < CellCount; ++cell)
        if (CellOffset(cell, true) == across && CellOffset(cell, false) == up)
            return cell;
    return -1;
}

} // namespace

SearchCells::SearchCells(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    for (int cell = 0; cell < CellCount; ++cell) {
        CellFrame& frame = frames_[static_cast<size_t>(cell)] = MakeFrame(cell);
        grid->addWidget(frame.Frame, 1 - CellOffset(cell, false),
                        1 + CellOffset(cell, true));
    }
    ShowSelection();
}

SearchCells::CellFrame SearchCells::MakeFrame(int cell) {
    CellFrame made;
    made.Frame = new QFrame(this);
    made.Frame->setObjectName("Frame1_" + QString::number(cell));
    made.Frame->setFrameShape(QFrame::Box);
    made.Frame->setAutoFillBackground(true);
    made.Frame->installEventFilter(this);
    auto* rows = new QGridLayout(made.Frame);
    rows->setContentsMargins(6, 4, 6, 4);
    rows->setVerticalSpacing(1);
    rows->setColumnStretch(1, 1);
    for (size_t i = 0; i < Fields.size(); ++i) {
        auto* caption = new QLabel(Fields[i].Caption, made.Frame);
        caption->setEnabled(false);
        auto* label = new QLabel(made.Frame);
        label->setObjectName(QString(Fields[i].Label) + "_" + QString::number(cell));
        label->setMinimumWidth(fontMetrics().horizontalAdvance("!0000000"));
        rows->addWidget(caption, static_cast<int>(i), 0);
        rows->addWidget(label, static_cast<int>(i), 1);
        caption->installEventFilter(this);
        label->installEventFilter(this);
        made.Labels[i] = label;
    }
    return made;
}

void SearchCells::Select(int cell) {
    selected_ = cell;
    ShowSelection();
    emit CellSelected(cell);
}

void SearchCells::SetPattern(const SearchPattern& pattern) {
    pattern_ = pattern;
    for (int cell = 0; cell < CellCount; ++cell)
        ShowCell(cell);
}

void SearchCells::SetCell(const SearchCell& cell) {
    pattern_[static_cast<size_t>(selected_)] = cell;
    ShowCell(selected_);
}

void SearchCells::ShowCell(int cell) {
    const auto index = static_cast<size_t>(cell);
    for (size_t i = 0; i < Fields.size(); ++i)
        frames_[index].Labels[i]->setText(
            QString::fromStdString(pattern_[index].*Fields[i].Text));
}

void SearchCells::ShowSelection() {
    for (int cell = 0; cell < CellCount; ++cell) {
        QFrame* frame = frames_[static_cast<size_t>(cell)].Frame;
        const bool selected = cell == selected_;
        const QPalette pale = PaletteOn(ColorOf(selected ? SelectedColor : OtherColor));
        QPalette colors = pale;
        // The frame of the one that the arrow keys move from is drawn heavier.
        const bool focused = selected && hasFocus();
        if (focused)
            colors.setColor(QPalette::WindowText, pale.color(QPalette::Highlight));
        frame->setPalette(colors);
        frame->setLineWidth(focused ? 2 : 1);
        for (QWidget* label : frame->findChildren<QWidget*>())
            label->setPalette(pale);
    }
}

void SearchCells::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const int across = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
    const int up = key == Qt::Key_Down ? -1 : key == Qt::Key_Up ? 1 : 0;
    if (across == 0 && up == 0)
        return QWidget::keyPressEvent(event);
    const int cell =
        CellAt(CellOffset(selected_, true) + across, CellOffset(selected_, false) + up);
    if (cell >= 0)
        Select(cell);
}

void SearchCells::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    ShowSelection();
}

void SearchCells::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    ShowSelection();
}

bool SearchCells::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        for (int cell = 0; cell < CellCount; ++cell) {
            const QFrame* frame = frames_[static_cast<size_t>(cell)].Frame;
            if (watched == frame || watched->parent() == frame)
                Select(cell);
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vardenix

#include "moc_SearchCells.cpp"
