#pragma once

#include "builder/ElevationRebuild.h"
#include "builder/Fartiles.h"
#include "builder/RebuildView.h"
#include "platform/DebugLog.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/RebuildVerbs.h"

#include <QElapsedTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class FrmVXRebiuldTheater;
}

namespace vardenix {

// Rebuilds the other levels, the far tiles and the elevations of the theater that is
// open. While a run is at work its controls are locked; Esc and the close box stop it,
// after a question.
class FrmVXRebiuldTheater : public QWidget, private RebuildView {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXRebiuldTheater(ProgramState& state, const Platform& platform, DebugLog& log,
                        RebuildVerbs& verbs);
    ~FrmVXRebiuldTheater() override;

    // The window comes up for the theater that is open now.
    void Form_Load();

    // Its own while tests look at a run in the making.
    std::function<void()> OnEvents;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Running;

    void Connect();
    void ForgetLastRun();
    void FitScreen();
    void cmdStart_Click();
    void cmdStartElv_Click();
    void cmdBrowse_Click();
    // What was made is told at the end; a run that the user stopped ends without a word.
    void Run(const std::function<RebuildReport()>& work);
    bool MayReplaceL2();
    bool MayReplaceHeights();
    bool SavedOrGivenUp(const char* question, const std::function<bool()>& save);
    RebuildOptions Options() const;
    Downsampling Method() const;
    void ShowMaster();
    void Lock(bool locked);
    void AskWhetherToStop();
    void ShowRun();
    void ShowBars();

    void ResetPBs() override;
    void Increase_PBs() override;
    void Increase_PB1() override;
    void SetPB1_Max(int32_t value) override;
    void SetPB1_val(int32_t value) override;
    void SetPB2_Max(int32_t value) override;
    void SetPB2_val(int32_t value) override;
    void SetStatus(const std::string& text) override;
    void SetLabel2(const std::string& text) override;
    void SetLblTime(const std::string& text) override;
    void BeginStep(int step, int steps) override;
    void ShowFartile(std::span<const uint8_t> day, std::span<const uint8_t> night,
                     int32_t farSize) override;
    void BeginTakingPlaces() override;
    void LetEventsThrough() override;
    bool StopWanted() override { return stop_ || state_.Exiting; }
    int64_t Seconds() override;

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    RebuildVerbs& verbs_;
    std::unique_ptr<Ui::FrmVXRebiuldTheater> ui_;
    Fartiles fartiles_;
    ElevationMaster master_;
    RebuildBar pb1_;
    RebuildBar pb2_;
    std::string label2_;
    int step_ = 0;
    int steps_ = 0;
    bool running_ = false;
    bool canStop_ = false;
    bool asking_ = false;
    bool stop_ = false;
    QElapsedTimer clock_;
    QElapsedTimer sinceEvents_;
    QElapsedTimer sincePicture_;
    int64_t stepBegan_ = 0; // seconds of the clock
};

} // namespace vardenix
