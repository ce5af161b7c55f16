#include "builder/windows/FrmVXRebiuldTheater.h"

#include "builder/FartilePicture.h"
#include "builder/LoadedHeights.h"
#include "builder/RunClock.h"
#include "platform/Dialogs.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/MissingSegments.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "ui_FrmVXRebiuldTheater.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace vardenix {

namespace {

constexpr const char* Ready = "Press the start button to begin...";
constexpr const char* Title = "Rebuild Theater";
constexpr const char* StopQuestion =
    "Do you want to stop the rebuild? No file has changed yet, and all files of the "
    "theater stay as they are.";
constexpr const char* SaveQuestion =
    "The L2 file has changes that this run would replace. Do you want to save it first?";
constexpr const char* SaveHeightsQuestion =
    "The L0/ELV file has changes that this run would replace. Do you want to save it "
    "first?";
constexpr const char* LeaveOutQuestion =
    "The L0/ELV file has changes that this run would leave out, since it reads that file "
    "from the disk. Do you want to save it first?";

// What the desktop's frame takes at most.
constexpr int FrameWidth = 12;
constexpr int FrameHeight = 40;

// As smooth as eyes want it; asking the desktop more often only costs time.
constexpr int64_t MillisecondsBetweenEvents = 25;
constexpr int64_t MillisecondsBetweenPictures = 200;

void SetBar(QProgressBar* bar, const RebuildBar& value) {
    bar->setValue(static_cast<int>(value.Width()));
}

void SetPathLabel(QLabel* label, const QString& caption) {
    label->setText(caption);
    label->setToolTip(caption);
}

QString UpperFolder(const std::string& folder) {
    return QString::fromStdString(UpperCase(folder));
}

} // namespace

// The window's state while a run is at work, however it ends.
class FrmVXRebiuldTheater::Running {
public:
    explicit Running(FrmVXRebiuldTheater& window) : window_(window) {
        window_.running_ = true;
        window_.canStop_ = true;
        window_.stop_ = false;
        window_.clock_.start();
        window_.sinceEvents_.start();
        window_.sincePicture_.invalidate();
        window_.stepBegan_ = 0;
        window_.SetLblTime({});
        window_.Lock(true);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        window_.running_ = false;
        window_.ShowBars();
        window_.ui_->lblRun->clear();
        window_.Lock(false);
    }

private:
    FrmVXRebiuldTheater& window_;
};

FrmVXRebiuldTheater::FrmVXRebiuldTheater(ProgramState& state, const Platform& platform,
                                         DebugLog& log, RebuildVerbs& verbs)
    : state_(state), platform_(platform), log_(log), verbs_(verbs),
      ui_(std::make_unique<Ui::FrmVXRebiuldTheater>()) {
    ui_->setupUi(this);
    for (QProgressBar* bar : {ui_->PB1, ui_->PB2})
        bar->setRange(0, RebuildBar::FullWidth);
    Connect();
}

FrmVXRebiuldTheater::~FrmVXRebiuldTheater() = default;

void FrmVXRebiuldTheater::Connect() {
    OnSignal(ui_->cmdStart, &QAbstractButton::clicked, this,
             [this] { cmdStart_Click(); });
    OnSignal(ui_->cmdStartElv, &QAbstractButton::clicked, this,
             [this] { cmdStartElv_Click(); });
    OnSignal(ui_->cmdBrowse, &QAbstractButton::clicked, this,
             [this] { cmdBrowse_Click(); });
    OnSignal(ui_->cmdExit, &QAbstractButton::clicked, this, [this] { close(); });
}

void FrmVXRebiuldTheater::Form_Load() {
    SetPathLabel(ui_->lblLxFolder,
                 "Lx Folder: " + UpperFolder(LxFolderOf(state_.Terrain)));
    SetPathLabel(ui_->lblTextureFolder,
                 "Texture Folder: " + UpperFolder(TextureFolderOf(state_.Catalogue)));
    pb1_ = {0, 100};
    pb2_ = {0, 100};
    ForgetLastRun();
    ShowBars();
    ShowMaster();
}

// It comes up as it did the first time.
void FrmVXRebiuldTheater::ForgetLastRun() {
    SetStatus(Ready);
    SetLabel2({});
    SetLblTime({});
    ui_->PicFT->clear();
    ui_->PicFTN->clear();
}

// As high as its texts are where the screen has the room; else as high as that allows,
// and the frames are scrolled. The rest, with its buttons, is always seen.
void FrmVXRebiuldTheater::FitScreen() {
    ui_->scroll->setMinimumWidth(0); // that of the last time would count twice
    const int width = ui_->frames->sizeHint().width();
    const int height = ui_->columnFrames->heightForWidth(width);
    const QSize beside = sizeHint() - ui_->scroll->sizeHint();
    const QSize room =
        screen()->availableGeometry().size() - QSize(FrameWidth, FrameHeight);
    const bool scrolls = height + beside.height() > room.height();
    ui_->scroll->setMinimumWidth(
        width + (scrolls ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0));
    resize(ui_->scroll->minimumWidth() + beside.width(),
           std::min(height + beside.height(), room.height()));
}

void FrmVXRebiuldTheater::cmdStart_Click() {
    Run([this] {
        LoadedHeights heights(state_.Terrain);
        RebuildReport report = RebuildTheater(
            {state_.Terrain, state_.Catalogue, *this, log_}, Options(), fartiles_);
        heights.Follow(report);
        return report;
    });
}

void FrmVXRebiuldTheater::cmdStartElv_Click() {
    if (!MayReplaceL2() || !MayReplaceHeights() ||
        !MaySaveOverGap(state_.Terrain, platform_.Dialogs))
        return;
    Run([this] {
        RebuildReport report;
        {
            Recording made(state_.Changes, {Paper::Level2, Paper::Heights},
                           "Level 2 read anew after a rebuild");
            report = RebuildElevations({state_.Terrain, *this, platform_.Dialogs, log_},
                                       master_, Method(), Options());
            if (report.HeightsReadAnew)
                made.Rename("Level 2 and heights read anew after a rebuild");
            verbs_.ForgetSteps(report.HeightsReadAnew);
        }
        verbs_.ReadAnew(report.HeightsReadAnew);
        return report;
    });
}

void FrmVXRebiuldTheater::Run(const std::function<RebuildReport()>& work) {
    RebuildReport report;
    try {
        const Running running(*this);
        report = work();
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled) {
            SetStatus(canStop_ ? "Failed. No file has changed." : "Failed.");
            throw;
        }
        SetStatus("Stopped. No file has changed.");
        return;
    }
    if (!state_.Exiting)
        platform_.Dialogs.Notice(TextByFolder(report), Title, BoxIcon::Information);
}

// The run reads level 2 from the disk, so what is not there would be gone.
bool FrmVXRebiuldTheater::MayReplaceL2() {
    return !MayDiffer(state_, Paper::Level2) ||
           SavedOrGivenUp(SaveQuestion, [this] { return verbs_.SaveL2(); });
}

bool FrmVXRebiuldTheater::MayReplaceHeights() {
    const HeightsInRun heights = HeightsIn(state_.Terrain, master_);
    return heights == HeightsInRun::Untouched || !MayDiffer(state_, Paper::Heights) ||
           SavedOrGivenUp(heights == HeightsInRun::Replaced ? SaveHeightsQuestion
                                                            : LeaveOutQuestion,
                          [this] { return verbs_.SaveHeights(); });
}

bool FrmVXRebiuldTheater::SavedOrGivenUp(const char* question,
                                         const std::function<bool()>& save) {
    switch (platform_.Dialogs.MessageBox(question, Title, BoxIcon::Question,
                                         BoxButtons::YesNoCancel)) {
    case BoxAnswer::Yes:
        return save();
    case BoxAnswer::No:
        return true;
    default:
        return false;
    }
}

void FrmVXRebiuldTheater::cmdBrowse_Click() {
    master_ = BrowseElevationFile(state_.Terrain.MapWidth, LxFolderOf(state_.Terrain),
                                  platform_.Dialogs);
    ShowMaster();
}

void FrmVXRebiuldTheater::ShowMaster() {
    const std::string shown =
        master_.Chosen() ? master_.ElevationFile() : "NONE SELECTED";
    SetPathLabel(ui_->lblElevationFile,
                 QString::fromStdString("Elevation File: " + shown));
    ui_->cmdStartElv->setEnabled(master_.Chosen());
}

RebuildOptions FrmVXRebiuldTheater::Options() const {
    RebuildOptions options;
    options.MakeL3 = ui_->chkMakeL3->isChecked();
    options.FarSize = ToInt32(Val(ui_->txtFarSize->text().toStdString()));
    options.OnlyChanged = ui_->chkOnlyChanged->isChecked();
    return options;
}

Downsampling FrmVXRebiuldTheater::Method() const {
    if (ui_->Option1_0->isChecked())
        return Downsampling::Rms;
    return ui_->Option1_1->isChecked() ? Downsampling::SimpleMean : Downsampling::Max;
}

// The window itself stays enabled, or it would not hear Esc.
void FrmVXRebiuldTheater::Lock(bool locked) {
    for (QWidget* control :
         std::initializer_list<QWidget*>{ui_->Frame1, ui_->Frame2, ui_->cmdExit})
        control->setEnabled(!locked);
    if (locked)
        setFocus();
}

void FrmVXRebiuldTheater::AskWhetherToStop() {
    if (!canStop_ || asking_ || StopWanted())
        return;
    asking_ = true;
    stop_ = platform_.Dialogs.MessageBox(StopQuestion, Title, BoxIcon::Question,
                                         BoxButtons::YesNo) == BoxAnswer::Yes;
    asking_ = false;
}

void FrmVXRebiuldTheater::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Only now do the controls tell their true sizes.
    if (!event->spontaneous())
        FitScreen();
}

void FrmVXRebiuldTheater::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        AskWhetherToStop();
        return;
    }
    event->accept();
    if (!state_.Exiting)
        verbs_.LeaveRebuild();
}

void FrmVXRebiuldTheater::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    if (running_)
        AskWhetherToStop();
    else
        close();
}

void FrmVXRebiuldTheater::ShowRun() {
    ui_->lblRun->setText(
        QString::fromStdString(TextOfRun({step_, steps_, clock_.elapsed() / 1000,
                                          clock_.elapsed() / 1000 - stepBegan_, pb1_})));
}

void FrmVXRebiuldTheater::ShowBars() {
    SetBar(ui_->PB1, pb1_);
    SetBar(ui_->PB2, pb2_);
    ui_->Label2->setText(QString::fromStdString(label2_));
}

void FrmVXRebiuldTheater::ResetPBs() {
    pb1_.Value = 0;
    pb2_.Value = 0;
    ShowBars();
}

void FrmVXRebiuldTheater::Increase_PBs() {
    ++pb1_.Value;
    ++pb2_.Value;
    ShowBars();
}

void FrmVXRebiuldTheater::Increase_PB1() {
    ++pb1_.Value;
    ShowBars();
}

void FrmVXRebiuldTheater::SetPB1_Max(int32_t value) { pb1_.Maximum = value; }

void FrmVXRebiuldTheater::SetPB1_val(int32_t value) {
    pb1_.Value = value;
    ShowBars();
}

void FrmVXRebiuldTheater::SetPB2_Max(int32_t value) { pb2_.Maximum = value; }

void FrmVXRebiuldTheater::SetPB2_val(int32_t value) {
    pb2_.Value = value;
    ShowBars();
}

void FrmVXRebiuldTheater::SetStatus(const std::string& text) {
    ui_->LblStatus->setText(QString::fromStdString(text));
}

// It changes with every post, so it is drawn when events are let through.
void FrmVXRebiuldTheater::SetLabel2(const std::string& text) { label2_ = text; }

void FrmVXRebiuldTheater::SetLblTime(const std::string& text) {
    ui_->lblTime->setText(QString::fromStdString(text));
}

void FrmVXRebiuldTheater::BeginStep(int step, int steps) {
    step_ = step;
    steps_ = steps;
    stepBegan_ = clock_.elapsed() / 1000;
    ShowRun();
}

void FrmVXRebiuldTheater::ShowFartile(std::span<const uint8_t> day,
                                      std::span<const uint8_t> night, int32_t farSize) {
    if (sincePicture_.isValid() && !sincePicture_.hasExpired(MillisecondsBetweenPictures))
        return;
    sincePicture_.start();
    const auto show = [&](QLabel* label, std::span<const uint8_t> bytes) {
        Raster raster = FartilePicture(bytes, farSize);
        const RasterView pixels = raster.View();
        const QImage borrowed(reinterpret_cast<const uchar*>(pixels.Pixels), pixels.Width,
                              pixels.Height, QImage::Format_RGB32);
        // A pixmap would go on borrowing.
        label->setPixmap(QPixmap::fromImage(borrowed.copy()));
    };
    show(ui_->PicFT, day);
    show(ui_->PicFTN, night);
}

void FrmVXRebiuldTheater::BeginTakingPlaces() { canStop_ = false; }

void FrmVXRebiuldTheater::LetEventsThrough() {
    if (!sinceEvents_.hasExpired(MillisecondsBetweenEvents))
        return;
    ShowRun();
    ShowBars();
    QCoreApplication::processEvents();
    if (OnEvents)
        OnEvents();
    sinceEvents_.start();
}

int64_t FrmVXRebiuldTheater::Seconds() { return clock_.elapsed() / 1000; }

} // namespace vardenix

#include "moc_FrmVXRebiuldTheater.cpp"
