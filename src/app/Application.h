#pragma once

#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/StartUp.h"

#include <QSocketNotifier>

#include <memory>
#include <string>

namespace vardenix {

class FrmStartUp;
struct Subsystems;
class Updater;

// Makes the state and what works on it, from the first window to the last.
class Application : public ProgramEnd {
public:
    // Both are borrowed.
    Application(RunTimeBarrier& barrier, Dialogs& dialogs);
    ~Application() override;

    // From the first window to the end of the program; the process's exit code. A theater
    // that is named is opened at once.
    int Run(const std::string& theater = {});
    // For the report of an error: program, system, and what was done last.
    std::string Details() const;

private:
    bool Begin();
    void ShowStartUp();
    void End(const std::string& commandLine = {});
    void EndAfterError();
    void HearSystem();

    void UnloadWindows() override;
    void EndProcess() override;

    RunTimeBarrier& barrier_;
    Dialogs& dialogs_;
    SystemClock clock_;
    SystemProcesses processes_;
    ProgramState state_;
    DebugLog log_{clock_};
    std::unique_ptr<Registry> registry_;
    std::unique_ptr<Platform> platform_;
    std::unique_ptr<FrmStartUp> frmStartUp_;
    std::unique_ptr<Subsystems> subsystems_;
    std::unique_ptr<QSocketNotifier> endSignal_;
    std::unique_ptr<Updater> updater_;
};

} // namespace vardenix
