#pragma once

#include "builder/RebuildView.h"

#include <chrono>
#include <string>

namespace vardenix {

// What a rebuild shows on a terminal: a line on the standard error that is written over
// and over, with the step, its share and the time left. Ctrl-C, and the system's wish
// to end, stop the run as Esc does in the window, and no file has changed.
class TerminalRebuild : public RebuildView {
public:
    TerminalRebuild();
    ~TerminalRebuild() override;

    void ResetPBs() override {}
    void Increase_PBs() override { ++bar_.Value; }
    void Increase_PB1() override { ++bar_.Value; }
    void SetPB1_Max(int32_t value) override { bar_.Maximum = value; }
    void SetPB1_val(int32_t value) override { bar_.Value = value; }
    void SetPB2_Max(int32_t) override {}
    void SetPB2_val(int32_t) override {}
    void SetStatus(const std::string& text) override { status_ = text; }
    void SetLabel2(const std::string&) override {}
    void SetLblTime(const std::string&) override {}
    void BeginStep(int step, int steps) override;
    void ShowFartile(std::span<const uint8_t>, std::span<const uint8_t>,
                     int32_t) override {}
    // Nobody asks any more whether to stop.
    void BeginTakingPlaces() override {}
    void LetEventsThrough() override;
    bool StopWanted() override;
    int64_t Seconds() override;

private:
    void Clear();

    bool terminal_;
    bool shown_ = false;
    int step_ = 0;
    int steps_ = 0;
    int64_t stepBegan_ = 0;
    RebuildBar bar_;
    std::string status_;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point lastShown_;
};

} // namespace vardenix
