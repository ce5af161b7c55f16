// The frames "Zoom", "Grid Size", "Low-Left Tile Position" and "Windows" of the control
// panel.

#include "platform/windows/RunTimeBarrier.h"
#include "texts/Numbers.h"
#include "ui_FrmVXMain.h"
#include "workspace/ZoomAndDrag.h"
#include "workspace/windows/FrmVXMain.h"

#include <QSignalBlocker>

#include <cstring>

namespace vardenix {

void FrmVXMain::ConnectView() {
    OnSignal(ui_->ZoomScroll, &QAbstractSlider::valueChanged, this,
             [this](int value) { ZoomScroll_Change(value); });
    OnSignal(ui_->cmdminus, &QAbstractButton::clicked, this,
             [this] { ui_->ZoomScroll->setValue(ZoomMinus(ui_->ZoomScroll->value())); });
    OnSignal(ui_->cmdplus, &QAbstractButton::clicked, this,
             [this] { ui_->ZoomScroll->setValue(ZoomPlus(ui_->ZoomScroll->value())); });
    OnSignal(ui_->cmdZoomin, &QAbstractButton::clicked, this, [this] {
        if (ZoomIn(view_))
            GridCellsChanged();
    });
    OnSignal(ui_->cmdZoomOut, &QAbstractButton::clicked, this, [this] {
        if (ZoomOut(view_))
            GridCellsChanged();
    });
    OnSignal(ui_->ComTileWidth, &QComboBox::currentIndexChanged, this,
             [this](int index) { ComTileWidth_Click(index); });

    JoinWindowBox(ui_->chkShowMain, PanelVerb::ShowMain);
    JoinWindowBox(ui_->chkShowResults, PanelVerb::ShowResults);
    JoinWindowBox(ui_->chkShowTheater, PanelVerb::ShowTheater);
    JoinWindowBox(ui_->chkShowTile, PanelVerb::ShowTile);
    JoinWindowBox(ui_->chkShowFeatures, PanelVerb::ShowFeatures);
}

void FrmVXMain::ZoomScroll_Change(int value) {
    const auto zoomPosts = static_cast<int16_t>(value); // the slider's range
    const PostPlace position = ZoomedAtMiddle(view_, zoomPosts, state_.Terrain.MapWidth);
    SetZoom(zoomPosts);
    workspace_.LoadImageControls();
    if (!state_.Starting)
        workspace_.PlaceView(position.X, position.Y);
    Repaint();
}

void FrmVXMain::SetZoom(int16_t zoomPosts) {
    view_.ZoomPosts = zoomPosts;
    state_.Configuration.Zoom = zoomPosts;
    const QSignalBlocker quiet(ui_->ZoomScroll);
    ui_->ZoomScroll->setValue(zoomPosts);
    ShowCaptions();
}

void FrmVXMain::GridCellsChanged() {
    state_.Configuration.GridSize = view_.GridCells;
    ShowCaptions();
    workspace_.LoadImageControls();
    Repaint();
}

void FrmVXMain::GridChosen(bool forGood) {
    const int index = ui_->ComTileWidth->findText(QString::number(view_.TilePixels));
    {
        const QSignalBlocker quiet(ui_->ComTileWidth);
        ui_->ComTileWidth->setCurrentIndex(index);
    }
    if (forGood) {
        state_.Configuration.GridSize = view_.GridCells;
        state_.Configuration.TileSize = static_cast<int16_t>(index); // a list of six
    }
    ShowCaptions();
    workspace_.LoadImageControls();
    Repaint();
}

void FrmVXMain::ComTileWidth_Click(int index) {
    view_.TilePixels =
        ClampToInt32(Val(ui_->ComTileWidth->itemText(index).toStdString()));
    workspace_.LoadImageControls();
    state_.Configuration.TileSize = static_cast<int16_t>(index); // a list of six
    Repaint();
}

void FrmVXMain::ConnectPosition() {
    OnSignal(ui_->cmdGoXY, &QAbstractButton::clicked, this, [this] { cmdGoXY_Click(); });
    for (QLineEdit* box :
         {static_cast<QLineEdit*>(ui_->LabelX), static_cast<QLineEdit*>(ui_->LabelY)})
        OnSignal(box, &QLineEdit::returnPressed, this, [this] { cmdGoXY_Click(); });
}

void FrmVXMain::cmdGoXY_Click() {
    const PostPlace position =
        GoToXY(ui_->LabelX->text().toStdString(), ui_->LabelY->text().toStdString(),
               state_.Terrain.MapWidth);
    state_.Configuration.X = position.X;
    state_.Configuration.Y = position.Y;
    workspace_.ScrollTo(position.X, position.Y);
    PositionChanged();
}

void FrmVXMain::PositionChanged() {
    ui_->LabelX->setText(QString::number(view_.MapLeftX));
    ui_->LabelY->setText(QString::number(view_.MapBottomY));
}

void FrmVXMain::JoinWindowBox(QCheckBox* box, PanelVerb window) {
    OnSignal(box, &QAbstractButton::toggled, this,
             [this, window](bool on) { commands_.ShowWindow(window, on); });
}

QCheckBox* FrmVXMain::BoxOf(PanelVerb window) const {
    switch (window) {
    case PanelVerb::ShowMain:
        return ui_->chkShowMain;
    case PanelVerb::ShowResults:
        return ui_->chkShowResults;
    case PanelVerb::ShowTheater:
        return ui_->chkShowTheater;
    case PanelVerb::ShowTile:
        return ui_->chkShowTile;
    default:
        return ui_->chkShowFeatures;
    }
}

bool FrmVXMain::WindowBox(PanelVerb window) const { return BoxOf(window)->isChecked(); }

void FrmVXMain::SetWindowBox(PanelVerb window, bool on) {
    QCheckBox* box = BoxOf(window);
    const QSignalBlocker quiet(box);
    box->setChecked(on);
}

void FrmVXMain::WindowHidden(const char* checkBoxName) {
    if (auto* box = findChild<QCheckBox*>(checkBoxName)) {
        const QSignalBlocker quiet(box);
        box->setChecked(false);
    }
}

} // namespace vardenix
