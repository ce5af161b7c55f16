#include "features/windows/FrmVXFeatures.h"

#include "features/FeatureDrawing.h"
#include "features/FeatureFile.h"
#include "files/FileNames.h"
#include "platform/windows/AskColor.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "ui_FrmVXFeatures.h"

#include <QCloseEvent>
#include <QScopeGuard>
#include <QSignalBlocker>

namespace vardenix {

struct FrmVXFeatures::KindControls {
    FeatureKind Kind;
    QCheckBox* Check;
    ColorButton* Color;
    QSlider* Size;
    QLabel* SizeValue;
};

namespace {

void ShowQuietly(QAbstractSlider& slider, int value) {
    const QSignalBlocker quiet(slider);
    slider.setValue(value);
}

void ShowQuietly(QAbstractButton& box, bool checked) {
    const QSignalBlocker quiet(box);
    box.setChecked(checked);
}

} // namespace

std::vector<FrmVXFeatures::KindControls> FrmVXFeatures::Kinds() const {
    const Ui::FrmVXFeatures& ui = *ui_;
    return {{FeatureKind::Airport, ui.CheckAirports, ui.CmdAirportCol, ui.SliderAirport,
             ui.SliderAirport_value},
            {FeatureKind::City, ui.CheckCity, ui.CmdCityColor, ui.SliderCities,
             ui.SliderCities_value},
            {FeatureKind::Coast, ui.CheckCoast, ui.CmdCoastsColor, ui.SliderCoasts,
             ui.SliderCoasts_value},
            {FeatureKind::Label, ui.CheckLabel, ui.CmdLabelsColor, ui.SliderLabels,
             ui.SliderLabels_value},
            {FeatureKind::River, ui.CheckRiver, ui.CmdRiversColor, ui.SliderRivers,
             ui.SliderRivers_value},
            {FeatureKind::Road, ui.CheckRoads, ui.CmdRoadsColor, ui.SliderRoads,
             ui.SliderRoads_value}};
}

FrmVXFeatures::FrmVXFeatures(ProgramState& state, Dialogs& dialogs,
                             WorkspaceCommands& commands)
    : state_(state), dialogs_(dialogs), commands_(commands),
      ui_(std::make_unique<Ui::FrmVXFeatures>()) {
    ui_->setupUi(this);
    for (const KindControls& controls : Kinds())
        Connect(controls);
    JoinFont(ui_->CmdAirportFont, &Configuration::AirportsFont);
    JoinFont(ui_->CmdLabelsFont, &Configuration::LabelsFont);
    OnSignal(ui_->Check, &QAbstractButton::toggled, this, [this](bool checked) {
        state_.ShownFeatures.ShowFeatures = checked;
        ShowCounts();
        Repaint();
        emit Changed();
    });
    OnSignal(ui_->chkAgain, &QAbstractButton::toggled, this, [this] { emit Changed(); });
    OnSignal(ui_->CmdLoadFeatures, &QAbstractButton::clicked, this,
             [this] { CmdLoadFeatures_Click(); });
    OnSignal(ui_->CmdClearFeatures, &QAbstractButton::clicked, this,
             [this] { CmdClearFeatures_Click(); });
    ShowSettings();
}

FrmVXFeatures::~FrmVXFeatures() = default;

void FrmVXFeatures::Connect(const KindControls& controls) {
    const FeatureKind kind = controls.Kind;
    controls.Size->setRange(FeatureSizeRange.Min, FeatureSizeRange.Max);
    controls.Size->setPageStep(FeatureSizeRange.LargeChange);
    controls.SizeValue->setMinimumWidth(fontMetrics().horizontalAdvance("20"));
    OnSignal(controls.Check, &QAbstractButton::toggled, this,
             [this, kind](bool checked) { KindTicked(kind, checked); });
    OnSignal(controls.Size, &QAbstractSlider::valueChanged, this,
             [this, kind, label = controls.SizeValue](int value) {
                 StyleOf(state_.Configuration, kind).Size = value;
                 label->setNum(value);
                 Repaint();
             });
    OnSignal(controls.Color, &QAbstractButton::clicked, this,
             [this, kind, button = controls.Color] {
                 if (!AskColor(*button, dialogs_))
                     return;
                 StyleOf(state_.Configuration, kind).Color = button->Color();
                 Repaint();
             });
}

// Who ticks a kind wants to see it.
void FrmVXFeatures::KindTicked(FeatureKind kind, bool checked) {
    state_.ShownFeatures.Of(kind) = checked;
    if (checked && !ui_->Check->isChecked())
        return ui_->Check->setChecked(true); // which does the rest
    Repaint();
    emit Changed();
}

std::vector<std::string> FrmVXFeatures::Remembered() const {
    return ui_->chkAgain->isChecked() ? files_ : std::vector<std::string>();
}

void FrmVXFeatures::SetRemembered(const std::vector<std::string>& files) {
    files_ = files;
    ShowQuietly(*ui_->chkAgain, true);
    ShowSettings();
}

void FrmVXFeatures::JoinFont(QAbstractButton* button, FontChoice Configuration::*font) {
    OnSignal(button, &QAbstractButton::clicked, this, [this, font] {
        FontChoice& stored = state_.Configuration.*font;
        try {
            stored = dialogs_.FontAndColor(stored);
        } catch (const RuntimeError& error) {
            if (error.Number() == ErrorNumber::Cancelled)
                return;
            throw;
        }
        Repaint();
    });
}

void FrmVXFeatures::ShowSettings() {
    ShowQuietly(*ui_->Check, state_.ShownFeatures.ShowFeatures);
    for (const KindControls& controls : Kinds()) {
        const FeatureStyle& style = StyleOf(state_.Configuration, controls.Kind);
        ShowQuietly(*controls.Check, state_.ShownFeatures.Of(controls.Kind));
        // A size outside the range stays in the settings until the slider is moved.
        ShowQuietly(*controls.Size, FeatureSizeRange.Clamp(style.Size));
        controls.SizeValue->setNum(controls.Size->value());
        controls.Color->SetColor(style.Color);
    }
    ShowCounts();
}

void FrmVXFeatures::CmdLoadFeatures_Click() {
    std::vector<std::string> paths;
    try {
        paths = dialogs_.OpenFiles({.Title = "Open terrain features file...",
                                    .Filter = "Terrain Features Files | *.tdf"});
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return;
        throw;
    }
    LoadFiles(paths);
}

void FrmVXFeatures::LoadFiles(const std::vector<std::string>& paths) {
    // One that cannot be read leaves those before it.
    bool loaded = false;
    const auto repaint = qScopeGuard([this, &loaded] {
        if (!loaded)
            return;
        Repaint();
        emit Changed();
    });
    for (const std::string& path : paths) {
        const Recording made(state_.Changes, {Paper::Features},
                             "Load " + AfterLastSlash(path));
        LoadFeatureFile(path, state_.Features);
        std::erase(files_, path);
        files_.push_back(path);
        loaded = true;
        ShowCounts();
    }
}

void FrmVXFeatures::CmdClearFeatures_Click() {
    {
        const Recording made(state_.Changes, {Paper::Features}, "Clear the features");
        ClearFeatures(state_.Features);
    }
    files_.clear();
    ShowCounts();
    Repaint();
    emit Changed();
}

void FrmVXFeatures::FeaturesWalked() {
    ShowCounts();
    Repaint();
}

void FrmVXFeatures::ShowCounts() {
    const FeatureSet& set = state_.Features;
    const auto count = [](const FeatureList& list) {
        return static_cast<qulonglong>(list.size() - 1);
    };
    QString text = tr("No features are loaded.");
    if (set.Count() > 0)
        text = tr("Loaded: airports %1, cities %2, coasts %3, labels %4, rivers %5, "
                  "roads %6.")
                   .arg(count(set.Airports))
                   .arg(count(set.Cities))
                   .arg(count(set.Coasts))
                   .arg(count(set.Labels))
                   .arg(count(set.Rivers))
                   .arg(count(set.Roads));
    if (set.Count() > 0 && !state_.ShownFeatures.ShowFeatures)
        text += tr(" They are not shown: tick the box above, and the kinds that are "
                   "wanted.");
    ui_->lblLoaded->setText(text);
}

void FrmVXFeatures::Repaint() {
    if (!state_.Starting)
        commands_.RefreshPicArray();
}

void FrmVXFeatures::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    hide();
    commands_.WindowHidden("chkShowFeatures");
}

} // namespace vardenix

#include "moc_FrmVXFeatures.cpp"
