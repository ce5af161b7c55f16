// The frame "Map Options" of the control panel.

#include "mapview/MapLayout.h"
#include "platform/windows/AskColor.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "ui_FrmVXMain.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

void FrmVXMain::ConnectSliders() {
    OnSignal(ui_->sldrBrightness, &QAbstractSlider::valueChanged, this,
             [this](int value) { sldrBrightness_Change(value); });
    OnSignal(ui_->sldrTrans, &QAbstractSlider::valueChanged, this,
             [this](int value) { sldrTrans_Change(value); });
    const auto step = [this](QAbstractButton* button, QAbstractSlider* slider,
                             int32_t (*rule)(int32_t, const ControlRange&),
                             const ControlRange& range) {
        OnSignal(button, &QAbstractButton::clicked, this, [slider, rule, range] {
            slider->setValue(rule(slider->value(), range));
        });
    };
    step(ui_->cmdBMinus, ui_->sldrBrightness, StepDown, BrightnessRange);
    step(ui_->cmdBPlus, ui_->sldrBrightness, StepUp, BrightnessRange);
    step(ui_->cmdTransMinus, ui_->sldrTrans, StepDown, TransRange);
    step(ui_->cmdTransPlus, ui_->sldrTrans, StepUp, TransRange);
    OnSignal(ui_->cmdBrightReset, &QAbstractButton::clicked, this,
             [this] { ui_->sldrBrightness->setValue(0); });
}

void FrmVXMain::sldrBrightness_Change(int value) {
    ShowCaptions();
    if (value == view_.Brightness)
        return;
    view_.Brightness = value;
    state_.Configuration.OptionBrightness = value;
    Repaint();
}

void FrmVXMain::sldrTrans_Change(int value) {
    ShowCaptions();
    if (value == view_.MapAlpha)
        return;
    view_.MapAlpha = static_cast<uint8_t>(value); // the slider's range
    if (view_.ApplyMAP)
        Repaint();
}

void FrmVXMain::JoinColor(ColorButton* button, uint32_t MapView::*shown,
                          uint32_t Configuration::*stored) {
    OnSignal(button, &QAbstractButton::clicked, this, [this, button, shown, stored] {
        if (!AskColor(*button, platform_.Dialogs))
            return;
        view_.*shown = button->Color();
        state_.Configuration.*stored = button->Color();
        Repaint();
    });
}

void FrmVXMain::ConnectColors() {
    JoinColor(ui_->CmdGridCol, &MapView::GridColor, &Configuration::GridColor);
    JoinColor(ui_->CmdExpAreaCol, &MapView::ExportColor,
              &Configuration::ExportedAreaColor);
    JoinColor(ui_->CmdSegCol, &MapView::SegmentColor, &Configuration::SegmentColor);
    OnSignal(ui_->cmdFont, &QAbstractButton::clicked, this, [this] { cmdFont_Click(); });
}

void FrmVXMain::ShowColors() {
    const Configuration& settings = state_.Configuration;
    ui_->CmdGridCol->SetColor(settings.GridColor);
    ui_->CmdExpAreaCol->SetColor(settings.ExportedAreaColor);
    ui_->CmdSegCol->SetColor(settings.SegmentColor);
    std::vector<uint32_t> heights;
    if (!settings.UseSingleHeightColor)
        for (const HeightColorEntry& entry : settings.HeightColorList)
            heights.push_back(entry.Color);
    if (heights.empty())
        heights.push_back(settings.HeightDefaultColor);
    ui_->CmdHeightCol->SetColors(heights);
}

void FrmVXMain::cmdFont_Click() {
    FontChoice& font = state_.Configuration.HeightsFont;
    try {
        font = platform_.Dialogs.Font(font);
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return;
        throw;
    }
    if (view_.ShowHeights)
        Repaint();
}

} // namespace vardenix
