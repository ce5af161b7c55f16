// How the controls of the panel find room in whatever width it has.

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/WrappingRow.h"
#include "ui_FrmVXMain.h"
#include "workspace/windows/FoldingGroup.h"
#include "workspace/windows/FrmVXMain.h"

#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace vardenix {

namespace {

constexpr int BarHeight = 14; // of PB3, pixels
constexpr QSize SmallButton{26, 18};
constexpr int ReliefSlider = 60; // pixels

// Of a layer: its box, and what stands for its looks at the end.
QBoxLayout* LayerRow(QWidget* box, std::initializer_list<QWidget*> looks) {
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(box);
    row->addStretch();
    for (QWidget* look : looks)
        row->addWidget(look);
    return row;
}

QBoxLayout* SliderRow(std::initializer_list<QWidget*> parts) {
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    for (QWidget* part : parts)
        row->addWidget(part);
    return row;
}

// A layout of a column is replaced by rows of their own.
void Replace(QBoxLayout* column, QLayout* old, const QList<QLayout*>& rows) {
    int at = column->indexOf(old);
    column->removeItem(old);
    while (const QLayoutItem* item = old->takeAt(0))
        delete item;
    delete old;
    for (QLayout* row : rows)
        column->insertLayout(at++, row);
}

} // namespace

void FrmVXMain::ArrangeControls() {
    for (QPushButton* more : {ui_->cmdAreasOptions, ui_->cmdFont})
        more->setFixedSize(SmallButton);
    for (QPushButton* color :
         {ui_->CmdGridCol, ui_->CmdExpAreaCol, ui_->CmdHeightCol, ui_->CmdSegCol})
        color->setFixedSize(SmallButton);
    ui_->sldrRelief->setFixedWidth(ReliefSlider);
    auto* layers = new WrappingRow(WrappingRow::Widths::Columns);
    layers->setSpacing(10);
    auto* map = new WrappingRow;
    auto* brightness = new WrappingRow;
    Replace(ui_->colMapOptions, ui_->gridShow, {layers});
    Replace(ui_->colMapOptions, ui_->gridSliders, {map, brightness});
    ui_->colMapOptions->setSpacing(4);
    for (QBoxLayout* row :
         {LayerRow(ui_->chkShowAreas, {ui_->cmdAreasOptions}),
          LayerRow(ui_->chkShowGrid, {ui_->CmdGridCol}),
          LayerRow(ui_->chkShowExport, {ui_->CmdExpAreaCol}),
          LayerRow(ui_->chkShowHeights, {ui_->cmdFont, ui_->CmdHeightCol}),
          LayerRow(ui_->chkShowSegments, {ui_->CmdSegCol}),
          LayerRow(ui_->chkApplyNight, {}),
          LayerRow(ui_->chkShowRelief, {ui_->chkReliefAlone, ui_->sldrRelief}),
          LayerRow(ui_->chkShowContours, {ui_->spnContourStep})})
        layers->AddLayout(row);
    const int label =
        std::max(ui_->chkApplyMAP->sizeHint().width(), ui_->Frame26->sizeHint().width());
    ui_->chkApplyMAP->setMinimumWidth(label);
    ui_->Frame26->setMinimumWidth(label);
    map->addWidget(ui_->chkApplyMAP);
    map->AddLayout(SliderRow(
        {ui_->cmdTransMinus, ui_->sldrTrans, ui_->cmdTransPlus, ui_->lblTrans}));
    brightness->addWidget(ui_->Frame26);
    brightness->AddLayout(SliderRow({ui_->cmdBMinus, ui_->sldrBrightness, ui_->cmdBPlus,
                                     ui_->lblBrightness, ui_->cmdBrightReset}));
    for (QPushButton* button :
         {ui_->CmdSaveTheater, ui_->CmdImport, ui_->CmdExport, ui_->Command3,
          ui_->Command4, ui_->cmdOpenBIN, ui_->cmdOpenMap})
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    for (QLayout* row : std::initializer_list<QLayout*>{
             ui_->rowSave, ui_->rowUndo, ui_->rowEditors, ui_->rowZoom, ui_->rowGrid})
        WrappingRow::InPlaceOf(row);
    WrappingRow::InPlaceOf(ui_->gridWindows, WrappingRow::Widths::Columns);
    ui_->column->removeWidget(ui_->PB3);
    ui_->PB3->setParent(ui_->panel);
    for (QGroupBox* box :
         {ui_->FraMapOptions, ui_->FraWindows, ui_->Frame3, ui_->Frame1, ui_->Frame2}) {
        auto* group = new FoldingGroup(*box);
        groups_.push_back(group);
        OnSignal(group, &FoldingGroup::Toggled, this, [this] { emit GroupsFolded(); });
    }
}

std::vector<std::string> FrmVXMain::FoldedGroups() const {
    std::vector<std::string> names;
    for (const FoldingGroup* group : groups_)
        if (group->IsFolded())
            names.push_back(group->Name().toStdString());
    return names;
}

void FrmVXMain::FoldGroups(const std::vector<std::string>& names) {
    for (FoldingGroup* group : groups_)
        group->Fold(std::find(names.begin(), names.end(), group->Name().toStdString()) !=
                    names.end());
}

// The frames scroll downward only.
void FrmVXMain::FitScrollArea() {
    const int scrollBar = ui_->scroll->verticalScrollBar()->sizeHint().width();
    ui_->scroll->setMinimumWidth(ui_->body->minimumSizeHint().width() + scrollBar);
}

QSize FrmVXMain::sizeHint() const {
    QSize hint = QMainWindow::sizeHint();
    const int scrollBar = ui_->scroll->verticalScrollBar()->sizeHint().width();
    const int frames = ui_->body->sizeHint().width() + scrollBar;
    hint.rwidth() += std::max(frames - ui_->scroll->sizeHint().width(), 0);
    hint.rheight() += ui_->body->heightForWidth(ui_->body->sizeHint().width()) -
                      ui_->scroll->sizeHint().height();
    const int room = screen()->availableSize().height() * 9 / 10;
    return {hint.width(), std::min(hint.height(), room)};
}

// Over the foot of the panel, which keeps no room for a bar that is seldom there.
void FrmVXMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    const QSize room = ui_->panel->size();
    ui_->PB3->setGeometry(0, room.height() - BarHeight, room.width(), BarHeight);
    ui_->PB3->raise();
}

} // namespace vardenix
