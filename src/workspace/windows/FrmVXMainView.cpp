// The frames "Zoom", "Grid Size", "Low-Left Tile Position" and "Windows" of the control
// panel.

#include "platform/windows/RunTimeBarrier.h"
#include "texts/KeyFilters.h"
#include "texts/Numbers.h"
#include "ui_FrmVXMain.h"
#include "workspace/ZoomAndDrag.h"
#include "workspace/windows/FrmVXMain.h"

#include <QSignalBlocker>

#include <algorithm>
#include <string_view>

namespace vardenix {

namespace {

constexpr int LongestNumber = 10; // letters
constexpr int LongestPlace = 40;

bool KeepsPlaceKey(char32_t key) {
    return KeepsDigitKey(key) ||
           std::u32string_view(U" ,.+-NSEWnsew").find(key) != std::u32string_view::npos;
}

} // namespace

void FrmVXMain::ConnectView() {
    OnSignal(ui_->ZoomScroll, &QAbstractSlider::valueChanged, this,
             [this](int value) { ZoomScroll_Change(value); });
    OnSignal(ui_->ComTileWidth, &QComboBox::currentIndexChanged, this,
             [this](int index) { ComTileWidth_Click(index); });
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

void FrmVXMain::StepZoom(int steps) {
    // From an overview the first step leads to the slider's end.
    if (view_.IsOverview()) {
        if (steps > 0)
            ZoomScroll_Change(ZoomRange.Max);
        return;
    }
    const int posts = ui_->ZoomScroll->value();
    ui_->ZoomScroll->setValue(steps > 0 ? ZoomPlus(posts) : ZoomMinus(posts));
}

void FrmVXMain::SetZoom(int16_t zoomPosts) {
    view_.ZoomPosts = zoomPosts;
    state_.Configuration.Zoom = std::min(zoomPosts, MapView::MostZoomPosts);
    const QSignalBlocker quiet(ui_->ZoomScroll);
    ui_->ZoomScroll->setValue(zoomPosts);
    ShowCaptions();
}

void FrmVXMain::GridChosen() {
    const int index = ui_->ComTileWidth->findText(QString::number(view_.TilePixels));
    {
        const QSignalBlocker quiet(ui_->ComTileWidth);
        ui_->ComTileWidth->setCurrentIndex(index);
    }
    state_.Configuration.GridSize = view_.GridCells;
    state_.Configuration.TileSize = static_cast<int16_t>(index); // a list of six
    GridLaidOut();
}

void FrmVXMain::GridLaidOut() {
    ShowCaptions();
    workspace_.LoadImageControls();
    Repaint();
}

void FrmVXMain::ComTileWidth_Click(int index) {
    view_.TilePixels =
        ClampToInt32(Val(ui_->ComTileWidth->itemText(index).toStdString()));
    state_.Configuration.TileSize = static_cast<int16_t>(index); // a list of six
    GridLaidOut();
}

void FrmVXMain::ConnectPosition() {
    for (QLineEdit* box :
         {static_cast<QLineEdit*>(ui_->LabelX), static_cast<QLineEdit*>(ui_->LabelY)})
        OnSignal(box, &QLineEdit::returnPressed, this, [this] { GoToTypedPosition(); });
}

void FrmVXMain::AllowPlaces(bool allowed) {
    if (allowed)
        ui_->LabelX->TakeKeys(KeepsPlaceKey, LongestPlace);
    else
        ui_->LabelX->TakeKeys(KeepsDigitKey, LongestNumber);
    ui_->LabelX->setPlaceholderText(allowed ? tr("X, or 59.31, 18.02") : QString());
}

void FrmVXMain::GoToTypedPosition() {
    if (goToPlace_ && goToPlace_(ui_->LabelX->text().toStdString()))
        return;
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

} // namespace vardenix
