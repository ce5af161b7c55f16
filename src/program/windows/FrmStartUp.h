#pragma once

#include "platform/Platform.h"
#include "platform/Progress.h"
#include "program/StartUp.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmStartUp;
}

namespace vardenix {

// The start-up window: a theater is chosen or four paths are given, and it is opened into
// the working windows.
class FrmStartUp : public QDialog, private Progress {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmStartUp(ProgramState& state, const Platform& platform, DebugLog& log,
               OpeningWindows& windows);
    ~FrmStartUp() override;

    // Everything that comes before the window is seen: the update question, the theaters
    // of the installed game, the program's folders. What fails there is told, and paths
    // can still be given by hand.
    void Form_Load();
    // Shows a theater that was named when the program was started: at once, or when the
    // message loop has begun.
    void OpenTheater(const std::string& folder);
    void OpenTheaterSoon(const std::string& folder);

    // What the version check has to say, UTF-8; nothing is said while a theater is read.
    void ShowCheck(const std::string& text);

    // The bar stands at (value - SetPB1_val) / SetPB1_Max of its full width, which is
    // 7020 twips.
    void SetPB1(int value);

signals:
    // The theater is open and the window goes; saved window places may be applied.
    void TheaterOpened();
    // The user closed the window instead.
    void ExitWanted();
    // The user wants to know whether there is a newer version; and does not want to, or
    // cannot be told, any more. ShowCheck tells.
    void CheckWanted();
    void CheckEnds();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    class Loading;

    void Connect();
    void ShowLeftOut();
    void Combo1_Click();
    void Command1_Click();
    void CmdShowTheater_Click();
    bool CheckPaths();
    bool TakeFolder(const std::string& folder);
    void TakeInstall(const std::string& folder);
    Q_INVOKABLE void TakeDropped();
    Q_INVOKABLE void OpenNamed();
    void Image1_Click();

    TheaterPaths ShownPaths() const;
    void ShowPaths(const TheaterPaths& paths);
    void ShowLoading(bool loading);

    void ShowBar() override;
    void HideBar() override;
    void SetBar(int percent) override { SetPB1(percent); }
    void SetText(const std::string& text) override;
    void LetEventsThrough() override;

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    OpeningWindows& windows_;
    std::unique_ptr<Ui::FrmStartUp> ui_;
    std::string waitingFolder_; // dropped or named, to be taken when there is time
    bool theaterShown_ = false;
    bool loading_ = false;
    int setPB1Max_ = 100;
    int setPB1Val_ = 0;
};

} // namespace vardenix
