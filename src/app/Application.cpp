#include "app/Application.h"

#include "platform/RuntimeError.h"
#include "theater/windows/FrmStartUp.h"
#include "workspace/windows/FrmVXTheaterPreview.h"

namespace vardenix {

Application::Application(RunTimeBarrier& barrier, Dialogs& dialogs)
    : barrier_(barrier), dialogs_(dialogs) {
    barrier_.OnEnd = [this] { End(); };
}

Application::~Application() = default;

int Application::Run() {
    if (!Begin())
        return 1;
    if (!barrier_.Guard([this] { ShowStartUp(); }))
        End(); // there would be no window to go on with
    return state_.Exiting ? 0 : QApplication::exec();
}

// Settings that cannot be read must not be overwritten at the end, so the program stops
// before it begins.
bool Application::Begin() {
    try {
        BeginProgram(state_, OwnFilesFolder(ProgramFolder()));
    } catch (const RuntimeError& error) {
        dialogs_.Notice(ReportText(error), {}, BoxIcon::Critical);
        return false;
    }
    registry_ = std::make_unique<FileRegistry>(state_.Folders.AppPath, UsersWinePrefix());
    platform_ =
        std::make_unique<Platform>(Platform{dialogs_, *registry_, clock_, processes_});
    return true;
}

void Application::ShowStartUp() {
    frmStartUp_ = std::make_unique<FrmStartUp>(state_, *platform_, log_, *this);
    OnSignal(frmStartUp_.get(), &FrmStartUp::ExitWanted, &barrier_, [this] { End(); });
    frmStartUp_->Form_Load();
    frmStartUp_->show();
}

void Application::PreviewChanged() {
    if (!frmVXTheaterPreview_) {
        frmVXTheaterPreview_ = std::make_unique<FrmVXTheaterPreview>(state_, dialogs_);
        OnSignal(frmVXTheaterPreview_.get(), &FrmVXTheaterPreview::CloseBoxUsed,
                 &barrier_, [this] { End(); });
    }
    frmVXTheaterPreview_->PreviewChanged();
}

// The preview is all of the workspace that there is.
void Application::ShowMainPanel() { frmVXTheaterPreview_->show(); }

void Application::End() {
    if (!state_.Exiting)
        ExitProgram(state_, {}, *platform_, log_, *this);
}

void Application::UnloadWindows() {
    QApplication::closeAllWindows();
    // They vanish at once, not when the last wait is over.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Application::EndProcess() { QApplication::exit(0); }

} // namespace vardenix
