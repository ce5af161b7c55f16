#pragma once

#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "updater/ApplyUpdate.h"
#include "updater/UpdateOffer.h"
#include "updater/VersionCheck.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vardenix {

class FrmStartUp;
class QtTcpClient;
class QtTimer;
class frmDownload;

// The check for a newer version from the start-up window, and what follows from it.
class Updater : private VersionCheckView, private UpdateEnd {
public:
    // All are borrowed; `exitProgram` ends the program and starts a command line last.
    Updater(ProgramState& state, const Platform& platform,
            std::function<void(const std::string&)> exitProgram);
    ~Updater() override;

    // From now on the window's wishes are heard.
    void Join(FrmStartUp& startUp);

private:
    void StartCheck();
    void ApplyArchive(const std::string& archiveName);

    void ShowCheck(const std::string& text) override;
    void LetEventsThrough() override;
    void StartDownload(const std::string& url) override;
    void HideDownload() override;
    void ShowText(const std::string& path) override;
    void ExitProgram(const std::string& commandLine) override;

    ProgramState& state_;
    const Platform& platform_;
    std::function<void(const std::string&)> exitProgram_;
    FrmStartUp* startUp_ = nullptr;
    UpdateOffer offer_;
    std::unique_ptr<QtTcpClient> ws1_;
    std::unique_ptr<QtTimer> timer1_;
    std::unique_ptr<VersionCheck> check_;
    std::unique_ptr<frmDownload> frmDownload_;
    // Of an update that waits for the loader, until the program has ended.
    std::optional<KeptFiles> kept_;
};

// What an update has left half done is put back, and the program that was there before
// takes the place of this one. Called before anything else; what the user is to know of
// it, or of an update that was put back just before, else nothing.
std::string PutBackInterruptedUpdate(char** arguments);

} // namespace vardenix
