#include "app/Application.h"

#include "app/Habits.h"
#include "app/Subsystems.h"
#include "app/Updater.h"
#include "files/OwnFolders.h"
#include "platform/Signals.h"
#include "platform/windows/WaitBox.h"
#include "program/ReportDetails.h"
#include "program/windows/FrmStartUp.h"
#include "recovery/EarlierSaves.h"
#include "recovery/LeftLogs.h"
#include "texts/RuntimeError.h"

#include <QSysInfo>

namespace vardenix {

Application::Application(RunTimeBarrier& barrier, Dialogs& dialogs)
    : barrier_(barrier), dialogs_(dialogs) {
    barrier_.OnEnd = [this] { EndAfterError(); };
}

Application::~Application() = default;

int Application::Run(const std::string& theater) {
    if (!Begin())
        return 1;
    HearSystem();
    const WaitBox waits;
    if (!barrier_.Guard([this] { ShowStartUp(); }))
        End(); // there would be no window to go on with
    else if (!theater.empty())
        frmStartUp_->OpenTheaterSoon(theater);
    return state_.Exiting ? 0 : QApplication::exec();
}

std::string Application::Details() const {
    return ReportDetails(state_) + "System: " +
           (QSysInfo::prettyProductName() + ", " + QSysInfo::kernelType() + " " +
            QSysInfo::kernelVersion() + ", " + QSysInfo::currentCpuArchitecture() +
            ", Qt " + qVersion() + ", " + QGuiApplication::platformName() + "\n")
               .toStdString();
}

// Settings that cannot be read must not be overwritten at the end, so the program stops
// before it begins.
bool Application::Begin() {
    try {
        const std::string own = OwnFilesFolder(ProgramFolder());
        MakeOwnFilesFolder(own);
        BeginProgram(state_, own, ProgramFolder());
        state_.Folders.LogFolder = LogFolder();
        state_.Folders.SavesFolder = SavesFolder();
    } catch (const RuntimeError& error) {
        dialogs_.Notice(ReportText(error), {}, BoxIcon::Critical);
        return false;
    }
    registry_ = std::make_unique<FileRegistry>(
        state_.Folders.AppPath, state_.Folders.ShippedPath, UsersWinePrefix());
    platform_ =
        std::make_unique<Platform>(Platform{dialogs_, *registry_, clock_, processes_});
    subsystems_ =
        std::make_unique<Subsystems>(state_, *platform_, log_, [this] { End(); });
    updater_ = std::make_unique<Updater>(
        state_, *platform_, [this](const std::string& commandLine) { End(commandLine); });
    return true;
}

// The session ends, or somebody wants the program to: there is nobody to be asked.
void Application::HearSystem() {
    MakeFileSizeLimitAnError();
    HearEndSignals();
    endSignal_ =
        std::make_unique<QSocketNotifier>(EndSignalHandle(), QSocketNotifier::Read);
    OnSignal(endSignal_.get(), &QSocketNotifier::activated, &barrier_, [this] {
        endSignal_->setEnabled(false);
        if (!state_.Starting && !state_.Exiting)
            subsystems_->Workspace.StorePlaces();
        End();
    });
}

void Application::ShowStartUp() {
    UseScheme(SchemeOf(subsystems_->Workspace.Memory().Read()));
    frmStartUp_ =
        std::make_unique<FrmStartUp>(state_, *platform_, log_, subsystems_->Opening);
    OnSignal(frmStartUp_.get(), &FrmStartUp::ExitWanted, &barrier_, [this] { End(); });
    OnSignal(frmStartUp_.get(), &FrmStartUp::TheaterOpened, &barrier_, [this] {
        subsystems_->Workspace.ApplySavedLayout();
        subsystems_->Recovery.OfferSoon();
    });
    updater_->Join(*frmStartUp_);
    frmStartUp_->Form_Load();
    frmStartUp_->show();
}

// Where work may be unsaved the way out goes past the question for it.
void Application::EndAfterError() {
    if (state_.Starting)
        End();
    else
        subsystems_->Workspace.LeaveProgram();
}

void Application::End(const std::string& commandLine) {
    if (!state_.Exiting)
        ExitProgram(state_,
                    commandLine.empty() ? subsystems_->Workspace.NextProgram()
                                        : commandLine,
                    *platform_, log_, *this);
}

void Application::UnloadWindows() {
    QApplication::closeAllWindows();
    // They vanish at once, not when the last wait is over.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Application::EndProcess() { QApplication::exit(0); }

} // namespace vardenix
