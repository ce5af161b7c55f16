#include "program/windows/FrmStartUp.h"

#include "platform/Dialogs.h"
#include "platform/OpenPage.h"
#include "platform/Processes.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/Browsing.h"
#include "program/windows/Sound.h"
#include "texts/RuntimeError.h"
#include "ui_FrmStartUp.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QRandomGenerator>
#include <QSignalBlocker>
#include <QUrl>

#include <algorithm>

namespace vardenix {

namespace {

constexpr const char* ProgramPage = "http://www.vardenix.example/vardenix";
constexpr const char* MakersPage = "http://www.vardenix.example/";
constexpr int SoundCount = 14;

std::string TextOf(const QLineEdit* box) { return box->text().toStdString(); }

// The first file or folder of this machine among what is dragged; empty when none is.
QString DroppedPath(const QMimeData& data) {
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            return url.toLocalFile();
    return {};
}

} // namespace

// The window's state while a theater is read; an error on the way gives the controls
// back.
class FrmStartUp::Loading {
public:
    explicit Loading(FrmStartUp& window) : window_(window) { window_.ShowLoading(true); }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;
    ~Loading() {
        window_.HideBar();
        window_.SetText({});
        window_.ShowLoading(false);
    }

private:
    FrmStartUp& window_;
};

FrmStartUp::FrmStartUp(ProgramState& state, const Platform& platform, DebugLog& log,
                       OpeningWindows& windows)
    : QDialog(nullptr,
              Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      state_(state), platform_(platform), log_(log), windows_(windows),
      ui_(std::make_unique<Ui::FrmStartUp>()) {
    ui_->setupUi(this);
    ui_->Image1->SetPicture(":/logo.png", {640, 120});
    ui_->Image2->setPixmap(QIcon(":/heights.png").pixmap({640, 4}, devicePixelRatioF()));
    ui_->Image3->SetPicture(":/website.png", {24, 24});
    ui_->Image3->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    ui_->Command1->setIcon(QIcon(":/browse.png"));
    ui_->CmdShowTheater->setIcon(QIcon(":/show.png"));
    ui_->CmdShowTheater->setIconSize(ui_->CmdShowTheater->iconSize() * 3 / 2);
    for (QLineEdit* box : {ui_->Text1, ui_->Text2, ui_->Text4, ui_->Text5}) {
        connect(box, &QLineEdit::textChanged, box, &QWidget::setToolTip);
        box->setAcceptDrops(false); // a theater dropped on one is for all four
    }
    ui_->PB1->hide();
    setAcceptDrops(true);
    Connect();
}

FrmStartUp::~FrmStartUp() = default;

void FrmStartUp::Connect() {
    OnSignal(ui_->Combo1, &QComboBox::currentIndexChanged, this,
             [this] { Combo1_Click(); });
    // Also when the theater in use is chosen again, over paths that were changed by hand.
    OnSignal(ui_->Combo1, &QComboBox::activated, this, [this] { Combo1_Click(); });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    OnSignal(ui_->CmdShowTheater, &QAbstractButton::clicked, this,
             [this] { CmdShowTheater_Click(); });
    OnSignal(ui_->CheckDebug, &QAbstractButton::toggled, this,
             [this](bool on) { log_.DebugFlag = on; });
    OnSignal(ui_->chkCheckupdate, &QAbstractButton::toggled, this, [this](bool on) {
        state_.Configuration.AutoCheckForUpdates = on ? AutoCheckOn : AutoCheckOff;
        emit CheckEnds();
        ShowCheck({});
        if (on)
            emit CheckWanted();
    });
    OnSignal(ui_->Image1, &QAbstractButton::clicked, this, [this] { Image1_Click(); });
    OnSignal(ui_->Image3, &QAbstractButton::clicked, this,
             [this] { OpenPage(platform_.Processes, platform_.Dialogs, MakersPage); });
}

void FrmStartUp::Form_Load() {
    if (!state_.Starting)
        return;
    theaterShown_ = false;
    DecideUpdateCheck(state_.Configuration, platform_.Dialogs);
    ui_->chkCheckupdate->setToolTip(
        "<p>" +
        QString::fromStdString("Ask for a newer Vardenix at every start: " +
                               state_.Configuration.VersionCheck)
            .toHtmlEscaped() +
        "</p>");
    ui_->chkCheckupdate->setChecked(state_.Configuration.AutoCheckForUpdates ==
                                    AutoCheckOn);
    setWindowTitle(QString::fromStdString(StartUpCaption()));
    log_.DebugFlag = false;

    const auto tryOrTell = [this](const std::function<void()>& work) {
        try {
            work();
        } catch (const RuntimeError& error) {
            platform_.Dialogs.Notice(ReportText(error), {}, BoxIcon::Critical);
        }
    };
    tryOrTell([this] { FindSystemTempPath(state_.Folders); });
    tryOrTell([this] { DiscoverTheaters(platform_.Registry, state_.Discovery); });
    ShowLeftOut();
    {
        const QSignalBlocker quiet(ui_->Combo1);
        for (const std::string& choice : TheaterChoices(state_.Discovery))
            ui_->Combo1->addItem(QString::fromStdString(choice));
        ui_->Combo1->setCurrentIndex(StoredTheaterIndex(
            state_.Configuration, static_cast<size_t>(ui_->Combo1->count())));
    }
    Combo1_Click();
    ui_->Combo1->setFocus();
    tryOrTell([this] { PrepareFolders(state_); });
}

// Who misses a theater of their game in the list finds out why.
void FrmStartUp::ShowLeftOut() {
    QStringList sentences;
    for (const std::string& sentence : state_.Discovery.LeftOut)
        sentences += QString::fromStdString(sentence).toHtmlEscaped();
    if (!sentences.isEmpty())
        ui_->Combo1->setToolTip("<p>Left out: " + sentences.join("<br>") + "</p>");
}

void FrmStartUp::Combo1_Click() {
    const int index = ui_->Combo1->currentIndex();
    ui_->Command1->setVisible(index == 0);
    ShowPaths(ChooseTheater(index, state_.Discovery, state_.Configuration));
}

void FrmStartUp::Command1_Click() {
    TheaterPaths paths = ShownPaths();
    BrowseTheaterPaths(paths, state_.Configuration, platform_.Dialogs,
                       [&] { ShowPaths(paths); });
}

void FrmStartUp::OpenTheater(const std::string& folder) {
    if (TakeFolder(folder) && ui_->Combo1->currentIndex() == 0)
        CmdShowTheater_Click();
}

// Its theaters are the ones that can be chosen; the first of them is.
void FrmStartUp::TakeInstall(const std::string& folder) {
    DiscoverTheatersIn(folder, state_.Discovery);
    ShowLeftOut();
    {
        const QSignalBlocker quiet(ui_->Combo1);
        ui_->Combo1->clear();
        for (const std::string& choice : TheaterChoices(state_.Discovery))
            ui_->Combo1->addItem(QString::fromStdString(choice));
        ui_->Combo1->setCurrentIndex(std::min(1, ui_->Combo1->count() - 1));
    }
    Combo1_Click();
    ui_->Combo1->setFocus();
}

// The theater of a folder becomes the one that is given by hand; an install is listed.
bool FrmStartUp::TakeFolder(const std::string& folder) {
    TheaterPaths paths = ShownPaths();
    try {
        if (IsInstall(folder)) {
            TakeInstall(folder);
            return true;
        }
        TakeTheaterFolder(folder, paths, state_.Configuration, [this] {
            const QSignalBlocker quiet(ui_->Combo1);
            ui_->Combo1->setCurrentIndex(0);
        });
    } catch (const RuntimeError& error) {
        platform_.Dialogs.Notice(ReportText(error), "Error...", BoxIcon::Critical);
        return false;
    }
    Combo1_Click();
    return true;
}

void FrmStartUp::OpenTheaterSoon(const std::string& folder) {
    waitingFolder_ = folder;
    QMetaObject::invokeMethod(this, "OpenNamed", Qt::QueuedConnection);
}

void FrmStartUp::OpenNamed() {
    static_cast<RunTimeBarrier*>(qApp)->Guard([this] { OpenTheater(waitingFolder_); });
}

void FrmStartUp::TakeDropped() {
    static_cast<RunTimeBarrier*>(qApp)->Guard([this] { TakeFolder(waitingFolder_); });
}

void FrmStartUp::dragEnterEvent(QDragEnterEvent* event) {
    if (!loading_ && !DroppedPath(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void FrmStartUp::dropEvent(QDropEvent* event) {
    waitingFolder_ = DroppedPath(*event->mimeData()).toStdString();
    event->acceptProposedAction();
    // Once the other program is done with its part: a box may come up.
    QMetaObject::invokeMethod(this, "TakeDropped", Qt::QueuedConnection);
}

void FrmStartUp::CmdShowTheater_Click() {
    if (loading_ || !CheckPaths())
        return;
    {
        const Loading loading(*this);
        LoadTheater(state_, *this, platform_, log_, windows_);
    }
    theaterShown_ = true;
    close();
}

// Until the reading begins a failure is a plain message, and another path can be tried.
bool FrmStartUp::CheckPaths() {
    try {
        log_.StartDebugLog(state_.Folders.AppPath);
        return CheckTheaterPaths(state_, ShownPaths(), platform_.Dialogs, log_);
    } catch (const RuntimeError& error) {
        platform_.Dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        return false;
    }
}

void FrmStartUp::Image1_Click() {
    PlaySoundResource(
        "S" + std::to_string(1 + QRandomGenerator::global()->bounded(SoundCount)),
        state_.Folders.TempFolder, platform_.Processes);
    OpenPage(platform_.Processes, platform_.Dialogs, ProgramPage);
}

TheaterPaths FrmStartUp::ShownPaths() const {
    return {TextOf(ui_->Text1), TextOf(ui_->Text2), TextOf(ui_->Text4),
            TextOf(ui_->Text5)};
}

void FrmStartUp::ShowPaths(const TheaterPaths& paths) {
    ui_->Text1->setText(QString::fromStdString(paths.L2File));
    ui_->Text2->setText(QString::fromStdString(paths.BinFile));
    ui_->Text4->setText(QString::fromStdString(paths.MapFile));
    ui_->Text5->setText(QString::fromStdString(paths.DDSFolder));
}

void FrmStartUp::ShowLoading(bool loading) {
    loading_ = loading;
    if (loading)
        emit CheckEnds();
    ui_->stackStart->setCurrentWidget(loading ? ui_->pageLoading : ui_->pageShow);
    ui_->CmdShowTheater->setVisible(!loading);
    ui_->Command1->setVisible(!loading && ui_->Combo1->currentIndex() == 0);
    for (QWidget* control : std::initializer_list<QWidget*>{
             ui_->CheckDebug, ui_->lblTheater, ui_->Combo1, ui_->chkCheckupdate,
             ui_->Frame1, ui_->Image1, ui_->Image3})
        control->setEnabled(!loading);
    if (loading)
        ShowBar();
    else
        ui_->CmdShowTheater->setFocus();
}

void FrmStartUp::SetPB1(int value) {
    ui_->PB1->setValue(ui_->PB1->maximum() * (value - setPB1Val_) / setPB1Max_);
}

void FrmStartUp::ShowBar() {
    setPB1Val_ = 0;
    setPB1Max_ = 100;
    SetPB1(0);
    ui_->PB1->show();
}

void FrmStartUp::HideBar() { ui_->PB1->hide(); }

void FrmStartUp::ShowCheck(const std::string& text) {
    if (!loading_)
        ui_->Label2->setText(QString::fromStdString(text));
}

void FrmStartUp::SetText(const std::string& text) {
    ui_->Label2->setText(QString::fromStdString(text));
}

void FrmStartUp::LetEventsThrough() { QCoreApplication::processEvents(); }

void FrmStartUp::reject() { close(); }

void FrmStartUp::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    if (theaterShown_) {
        emit TheaterOpened();
        state_.Starting = false;
        return;
    }
    event->ignore();
    // A half-read theater is of no use; the window goes by itself when it is read.
    if (loading_)
        return;
    emit CheckEnds();
    emit ExitWanted();
}

} // namespace vardenix

#include "moc_FrmStartUp.cpp"
