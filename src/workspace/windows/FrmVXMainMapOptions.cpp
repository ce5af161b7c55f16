// The frame "Map Options" of the control panel.

#include "mapview/MapLayout.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmVXMain.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

void FrmVXMain::ConnectSliders() {
    OnSignal(ui_->sldrBrightness, &QAbstractSlider::valueChanged, this,
             [this](int value) { sldrBrightness_Change(value); });
    OnSignal(ui_->sldrTrans, &QAbstractSlider::valueChanged, this,
             [this](int value) { sldrTrans_Change(value); });
    OnSignal(ui_->sldrRelief, &QAbstractSlider::valueChanged, this, [this](int value) {
        view_.ReliefStrength = value;
        if (view_.ShowRelief)
            Repaint();
    });
    OnSignal(ui_->spnContourStep, &QSpinBox::valueChanged, this, [this](int value) {
        view_.ContourStep = value;
        if (view_.ShowContours)
            Repaint();
    });
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

} // namespace vardenix
