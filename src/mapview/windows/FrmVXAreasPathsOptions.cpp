#include "mapview/windows/FrmVXAreasPathsOptions.h"

#include "platform/windows/AskColor.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmVXAreasPathsOptions.h"

namespace vardenix {

FrmVXAreasPathsOptions::FrmVXAreasPathsOptions(Configuration& settings, MapView& view,
                                               Dialogs& dialogs,
                                               WorkspaceCommands& commands,
                                               QWidget* parent)
    : QDialog(parent), settings_(settings), view_(view), commands_(commands),
      ui_(std::make_unique<Ui::FrmVXAreasPathsOptions>()) {
    ui_->setupUi(this);
    ui_->chkShowAreas->setChecked(settings.VXShowAreas);
    ui_->chkFilled->setChecked(settings.VXAreasFilled);
    ui_->chkShowPaths->setChecked(settings.VXShowPaths);
    ui_->cmdAreasWaterColor->SetColor(settings.VXAreasWaterColor);
    ui_->cmdAreasForestCol->SetColor(settings.VXAreasForestColor);
    ui_->cmdPathsRoadColor->SetColor(settings.VXPathsRoadColor);
    ui_->cmdPathsRiverColor->SetColor(settings.VXPathsRiverColor);
    ui_->cmdPathsRailColor->SetColor(settings.VXPathsRailColor);
    ui_->cmdPathsBridgeColor->SetColor(settings.VXPathsBridgeColor);
    for (ColorButton* button : findChildren<ColorButton*>())
        OnSignal(button, &QAbstractButton::clicked, this,
                 [button, &dialogs] { AskColor(*button, dialogs); });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    setFixedSize(sizeHint());
}

FrmVXAreasPathsOptions::~FrmVXAreasPathsOptions() = default;

void FrmVXAreasPathsOptions::Command1_Click() {
    settings_.VXShowAreas = view_.ShowAreas = ui_->chkShowAreas->isChecked();
    settings_.VXAreasFilled = view_.AreasFilled = ui_->chkFilled->isChecked();
    settings_.VXShowPaths = view_.ShowPaths = ui_->chkShowPaths->isChecked();
    settings_.VXAreasWaterColor = ui_->cmdAreasWaterColor->Color();
    settings_.VXAreasForestColor = ui_->cmdAreasForestCol->Color();
    settings_.VXPathsRoadColor = ui_->cmdPathsRoadColor->Color();
    settings_.VXPathsRiverColor = ui_->cmdPathsRiverColor->Color();
    settings_.VXPathsRailColor = ui_->cmdPathsRailColor->Color();
    settings_.VXPathsBridgeColor = ui_->cmdPathsBridgeColor->Color();
    // The window goes even when the repaint fails.
    accept();
    commands_.RefreshPicArray();
}

} // namespace vardenix

#include "moc_FrmVXAreasPathsOptions.cpp"
