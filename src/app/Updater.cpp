#include "app/Updater.h"

#include "files/OwnFolders.h"
#include "loader/InterruptedUpdate.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/windows/FrmStartUp.h"
#include "texts/RuntimeError.h"
#include "updater/UpdateSignature.h"
#include "updater/windows/QtTcpClient.h"
#include "updater/windows/frmDispTxt.h"
#include "updater/windows/frmDownload.h"

#include <QApplication>

#include <unistd.h>

namespace vardenix {

namespace {

std::vector<std::string> ProgramArguments() {
    std::vector<std::string> arguments;
    for (const QString& argument : QApplication::arguments().mid(1))
        arguments.push_back(argument.toStdString());
    return arguments;
}

} // namespace

Updater::Updater(ProgramState& state, const Platform& platform,
                 std::function<void(const std::string&)> exitProgram)
    : state_(state), platform_(platform), exitProgram_(std::move(exitProgram)),
      ws1_(std::make_unique<QtTcpClient>()), timer1_(std::make_unique<QtTimer>()),
      check_(std::make_unique<VersionCheck>(
          *ws1_, *timer1_, static_cast<VersionCheckView&>(*this), platform_, offer_)) {}

Updater::~Updater() = default;

void Updater::Join(FrmStartUp& startUp) {
    startUp_ = &startUp;
    OnSignal(startUp_, &FrmStartUp::CheckWanted, ws1_.get(), [this] { StartCheck(); });
    OnSignal(startUp_, &FrmStartUp::CheckEnds, ws1_.get(), [this] { check_->Stop(); });
}

void Updater::StartCheck() {
    if (MayUpdateItself(state_.Folders.AppPath, state_.Folders.ShippedPath))
        check_->Start(state_.Configuration.VersionCheck);
    else
        ShowCheck(UpdatedBySystem);
}

void Updater::ShowCheck(const std::string& text) { startUp_->ShowCheck(text); }

void Updater::LetEventsThrough() {
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Updater::StartDownload(const std::string& url) {
    // Not from within the window's own event of an earlier download.
    if (!frmDownload_)
        frmDownload_ = std::make_unique<frmDownload>(
            platform_.Dialogs, state_.Folders.UpdateTempFolder,
            [this](const std::string& name) { ApplyArchive(name); });
    frmDownload_->SetUrl(url);
    frmDownload_->Init_Download();
}

void Updater::ApplyArchive(const std::string& archiveName) {
    kept_ = ApplyUpdate(archiveName, {state_.Folders, platform_, offer_,
                                      static_cast<UpdateEnd&>(*this), UpdateKey(),
                                      ProgramArguments()});
}

void Updater::HideDownload() { frmDownload_->hide(); }

void Updater::ShowText(const std::string& path) {
    frmDispTxt window;
    window.OpenTxtFile(path);
    window.exec();
}

void Updater::ExitProgram(const std::string& commandLine) { exitProgram_(commandLine); }

std::string PutBackInterruptedUpdate(char** arguments) {
    const std::string folder = ProgramFolder();
    try {
        if (OwnFilesFolder(folder) != folder)
            return {};
        const PutBack outcome = PutBackInterrupted(folder);
        if (!outcome.Done)
            return TakeNotice() + outcome.Told;
    } catch (const RuntimeError& error) {
        return ReportText(error);
    }
    LeaveNotice();
    ::execv((folder + "/vardenix").c_str(), arguments);
    return TakeNotice(); // this one does as well
}

} // namespace vardenix
