#include "workspace/windows/FrmVXMain.h"

#include "mapview/MapLayout.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "ui_FrmVXMain.h"
#include "workspace/ZoomAndDrag.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace vardenix {

namespace {

// The ground while the finest elevations are edited, a pale yellow.
QColor L0ModeColor() { return ColorOf(13827327); }

constexpr uint32_t PanelTipColor = 10614783; // 0x00BBGGRR
constexpr int PanelTipWidth = 240;           // pixels

} // namespace

FrmVXMain::FrmVXMain(ProgramState& state, MapView& view, WorkspaceCommands& workspace)
    : state_(state), view_(view), workspace_(workspace),
      ui_(std::make_unique<Ui::FrmVXMain>()) {
    ui_->setupUi(this);
    ArrangeControls();
    // The map has the keyboard most of the time.
    setAttribute(Qt::WA_AlwaysShowToolTips);
    DressControls();
    MakeToolTip();
    ConnectSliders();
    ConnectView();
    ConnectPosition();
    OnSignal(qApp, &QApplication::focusChanged, this,
             [this](const QWidget*, const QWidget* now) { WatchFocus(now); });
    ShowSettings();
    RedrawSaveButton();
    resize(sizeHint());
    firstHeight_ = height();
}

FrmVXMain::~FrmVXMain() {
    // The keyboard goes elsewhere when the panel is gone already.
    qApp->disconnect(this);
}

void FrmVXMain::DressControls() {
    const auto range = [](QAbstractSlider* slider, const ControlRange& of) {
        slider->setRange(of.Min, of.Max);
        slider->setPageStep(of.LargeChange);
        slider->setSingleStep(1);
    };
    range(ui_->sldrBrightness, BrightnessRange);
    range(ui_->sldrTrans, TransRange);
    range(ui_->ZoomScroll, ZoomRange);
    // Fewer posts are nearer, and nearer is at the right, by the plus.
    ui_->ZoomScroll->setInvertedAppearance(true);
    ui_->ZoomScroll->setInvertedControls(true);
    for (const int32_t width : TileWidths)
        ui_->ComTileWidth->addItem(QString::number(width));
    for (QLabel* value : {ui_->lblTrans, ui_->lblBrightness, ui_->Label1})
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance("-100"));
    ui_->Label2->setMinimumWidth(fontMetrics().horizontalAdvance("10 X 10"));
    MarkDanger(*ui_->Command4);
    ui_->PB3->setRange(0, ProgressFullWidth);
    ui_->PB3->hide();
    ui_->Frame7->hide();
    for (QWidget* control : findChildren<QWidget*>()) {
        control->installEventFilter(this);
        if (control->focusPolicy() == Qt::WheelFocus)
            control->setFocusPolicy(Qt::StrongFocus);
    }
    FitScrollArea();
}

void FrmVXMain::MakeToolTip() {
    toolTip_.Create(*this);
    toolTip_.SetBackColor(PanelTipColor);
    toolTip_.SetMaxTipWidth(PanelTipWidth);
    for (QWidget* tool : std::initializer_list<QWidget*>{
             ui_->chkL0ELV, ui_->cmdLoadL0Elv, ui_->chkApplyMAP, ui_->chkApplyNight,
             ui_->CmdSaveTheater})
        toolTip_.AddTool(*tool);
    toolTip_.SetToolText(*ui_->chkApplyMAP, tr("Not accurate, just for reference!"));
    toolTip_.SetToolText(*ui_->chkApplyNight,
                         tr("Lays the lights of the night pictures over the tiles"));
}

void FrmVXMain::SetRestoreTip(const std::string& text) {
    ui_->Command4->setToolTip(
        QString::fromStdString(text).toHtmlEscaped().replace('\n', "<br>"));
}

void FrmVXMain::Form_Load(const std::string& mapTitle) {
    mapTitle_ = mapTitle;
    state_.Flags.L2 = state_.Flags.L0ELV = false;
    view_.MapAlpha = InitialMapAlpha;
    ShowSettings();
    SetL0FileName({});
    ChangeControlsForL0Edit(false);
}

void FrmVXMain::ShowSettings() {
    const QList<QWidget*> controls = findChildren<QWidget*>();
    std::vector<QSignalBlocker> quiet;
    for (QWidget* control : controls)
        quiet.emplace_back(control);
    const Configuration& settings = state_.Configuration;
    const MapView stored = ViewOfSettings(settings);
    ui_->sldrTrans->setValue(view_.MapAlpha);
    ui_->sldrBrightness->setValue(static_cast<int>(stored.Brightness));
    ui_->sldrRelief->setValue(view_.ReliefStrength);
    ui_->spnContourStep->setValue(view_.ContourStep);
    ui_->ZoomScroll->setValue(stored.ZoomPosts);
    ui_->ComTileWidth->setCurrentText(QString::number(stored.TilePixels));
    ShowColors();
    ShowCaptions();
    PositionChanged();
}

void FrmVXMain::ShowCaptions() {
    const int32_t zoom = view_.IsOverview() ? view_.ZoomPosts : ui_->ZoomScroll->value();
    ui_->Label1->setText(QString::number(zoom));
    ui_->lblZoomUnit->setText(zoom == 1 ? tr("post a cell") : tr("posts a cell"));
    ui_->ZoomScroll->setToolTip(QString::fromStdString(ZoomWords(zoom)));
    ui_->Label2->setText(QString::fromStdString(GridCaption(view_)));
    ui_->lblTrans->setText(QString::number(ui_->sldrTrans->value()));
    ui_->lblBrightness->setText(QString::number(ui_->sldrBrightness->value()));
}

void FrmVXMain::Repaint() {
    if (!state_.Starting)
        workspace_.RefreshPicArray();
}

void FrmVXMain::L2NeedSave() {
    state_.Flags.L2 = true;
    ShowTitles();
    RedrawSaveButton();
}

void FrmVXMain::L0NeedSave() {
    state_.Flags.L0ELV = true;
    ShowTitles();
    RedrawSaveButton();
}

void FrmVXMain::L2Saved() {
    state_.Flags.L2 = false;
    ShowTitles();
    RedrawSaveButton();
}

void FrmVXMain::L0Saved() {
    state_.Flags.L0ELV = false;
    ShowTitles();
    RedrawSaveButton();
}

void FrmVXMain::LockPanel(bool locked) {
    if (locked)
        focusOfLock_ = focusWidget();
    setEnabled(!locked);
    setProperty(LockedByWork, locked);
    if (!locked && focusOfLock_)
        focusOfLock_->setFocus();
}

void FrmVXMain::ShowTitles() {
    setWindowTitle(QString::fromStdString(MainCaption(state_.Flags, layer_)));
    emit MapCaptionChanged(QString::fromStdString(MapCaption(state_.Flags, mapTitle_)));
}

void FrmVXMain::ChangeControlsForL0Edit(bool on) {
    layer_ = on ? Layer::Heights : Layer::Posts;
    ShowTitles();
    ShowModeColors();
    RedrawSaveButton();
}

void FrmVXMain::ShowModeColors() {
    const bool heights = layer_ == Layer::Heights;
    setPalette(heights ? PaletteOn(L0ModeColor()) : QPalette());
    // Frames, check boxes and labels take it from there; the boxes that are called labels
    // have a ground of their own.
    for (QLineEdit* box : {ui_->LabelX, ui_->LabelY}) {
        QPalette colors = heights ? PaletteOn(L0ModeColor()) : QPalette();
        colors.setColor(QPalette::Base, heights ? L0ModeColor() : OffColor());
        box->setPalette(colors);
    }
}

void FrmVXMain::SetL0FileName(const std::string& fileName) {
    l0FileName_ = fileName;
    const QString tip = QString::fromStdString(L0ToolTip(fileName));
    toolTip_.SetToolText(*ui_->chkL0ELV, tip);
    toolTip_.SetToolText(*ui_->cmdLoadL0Elv, tip);
    RedrawSaveButton();
}

void FrmVXMain::DisableClickableItemsVX(bool enabled) {
    for (const char* name : ClickableItemsVX)
        if (auto* control = findChild<QWidget*>(name))
            control->setEnabled(enabled);
    // Unlocking gives back only what can be done.
    if (enabled)
        workspace_.CommandsChanged();
}

bool FrmVXMain::CanSave() const {
    return vardenix::RedrawSaveButton(shiftDown_, view_.Edited(), L0NeedSaveFlag(),
                                      L2NeedSaveFlag())
        .Enabled;
}

void FrmVXMain::RedrawSaveButton() {
    const ButtonState look = vardenix::RedrawSaveButton(
        shiftDown_, view_.Edited(), L0NeedSaveFlag(), L2NeedSaveFlag());
    ui_->CmdSaveTheater->setText(QString::fromStdString(look.Caption));
    workspace_.CommandsChanged();
}

void FrmVXMain::RedrawExportButton() {
    ui_->CmdExport->setText(
        QString::fromStdString(vardenix::RedrawExportButton(shiftDown_)));
}

void FrmVXMain::ShowHint(Hint hint) {
    ui_->lblExport->setVisible(hint == Hint::Export);
    ui_->lblImport->setVisible(hint == Hint::Import);
    ui_->lblImportNoUndo->setVisible(hint == Hint::Import);
    ui_->Frame7->setVisible(hint != Hint::None);
}

void FrmVXMain::SetPB3(int value) {
    ui_->PB3->setValue(static_cast<int>(ProgressWidth(value, pb3Min_, pb3Max_)));
    // No events are handled inside a repaint of the map, so a long one must draw its bar
    // itself; a short one is over before anybody could see it.
    constexpr int64_t SeenAfter = 50; // ms
    if (ui_->PB3->isVisible() && sinceBarDrawn_.hasExpired(SeenAfter)) {
        ui_->PB3->repaint();
        sinceBarDrawn_.start();
    }
}

void FrmVXMain::ShowBar() {
    pb3Min_ = 0;
    pb3Max_ = 100;
    SetText({});
    sinceBarDrawn_.start();
    SetPB3(0);
    ui_->PB3->show();
}

void FrmVXMain::HideBar() { ui_->PB3->hide(); }

void FrmVXMain::SetText(const std::string& text) {
    ui_->PB3->setFormat(QString::fromStdString(text).replace('%', "%%"));
    ui_->PB3->setTextVisible(!text.empty());
}

// Clicks and keys stay in their queue, in their order, until the work is done: the panel
// is locked meanwhile, which would lose them, and an editor that is open is not, which
// would have them in the middle of it.
void FrmVXMain::LetEventsThrough() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void FrmVXMain::SetShift(bool down) {
    if (shiftDown_ == down)
        return;
    shiftDown_ = down;
    RedrawSaveButton();
    RedrawExportButton();
}

void FrmVXMain::WatchKey(const QKeyEvent& event, bool down) {
    if (event.key() == Qt::Key_Shift)
        SetShift(down);
    else if (event.key() == Qt::Key_Escape && down && ui_->PB3->isVisible())
        state_.AbortPaint = true;
}

void FrmVXMain::keyPressEvent(QKeyEvent* event) {
    WatchKey(*event, true);
    QMainWindow::keyPressEvent(event);
}

void FrmVXMain::keyReleaseEvent(QKeyEvent* event) {
    WatchKey(*event, false);
    QMainWindow::keyReleaseEvent(event);
}

// Boxes keep some keys for themselves, so that these never come up to the window. And
// the wheel scrolls the panel: it turns a slider or list only after a click on that.
bool FrmVXMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)
        WatchKey(*static_cast<QKeyEvent*>(event), event->type() == QEvent::KeyPress);
    if (event->type() == QEvent::Wheel) {
        const auto* control = static_cast<QWidget*>(watched);
        const bool turns = control->inherits("QSlider") || control->inherits("QComboBox");
        if (turns && !control->hasFocus()) {
            event->ignore();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

// A part of another window hears nothing of its coming and going, and Shift may be let go
// elsewhere in that.
void FrmVXMain::WatchFocus(const QWidget* now) {
    if (!isWindow())
        SetShift(now != nullptr && isAncestorOf(now) &&
                 QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ShiftModifier));
}

void FrmVXMain::changeEvent(QEvent* event) {
    // Shift pressed or let go over another window is never told here.
    if (event->type() == QEvent::ActivationChange)
        SetShift(isActiveWindow() &&
                 QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ShiftModifier));
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowModeColors(); // the look may be another one
}

void FrmVXMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    // Only now do the controls tell their true sizes.
    FitScrollArea();
    if (height() == firstHeight_)
        resize(width(), sizeHint().height());
    firstHeight_ = 0;
}

void FrmVXMain::closeEvent(QCloseEvent* event) {
    if (!state_.Exiting && (!isEnabled() || !workspace_.LeaveProgram()))
        event->ignore();
}

} // namespace vardenix

#include "moc_FrmVXMain.cpp"
