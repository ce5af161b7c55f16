#pragma once

#include "builder/RebuildView.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vardenix::tests {

// Writes down what a rebuild shows, one line for each word; the clock stands still until
// it is moved, and the user stops when a test says so.
class RecordingView : public RebuildView {
public:
    std::vector<std::string> Lines;
    std::function<void()> OnEvents;
    std::function<void(const std::string&)> OnStatus;
    bool Stop = false;
    int64_t Now = 0;
    std::vector<size_t> Shown; // bytes by day and by night, and the size, of a far tile

    // The lines that begin with `word`, without it, joined by "|".
    std::string Told(const std::string& word) const {
        std::string told;
        for (const std::string& line : Lines)
            if (line.starts_with(word + " "))
                told += (told.empty() ? "" : "|") + line.substr(word.size() + 1);
        return told;
    }
    int Count(const std::string& line) const {
        int count = 0;
        for (const std::string& each : Lines)
            count += each == line ? 1 : 0;
        return count;
    }

    void ResetPBs() override { Lines.emplace_back("reset"); }
    void Increase_PBs() override { Lines.emplace_back("both"); }
    void Increase_PB1() override { Lines.emplace_back("one"); }
    void SetPB1_Max(int32_t value) override { Tell("max1", value); }
    void SetPB1_val(int32_t value) override { Tell("val1", value); }
    void SetPB2_Max(int32_t value) override { Tell("max2", value); }
    void SetPB2_val(int32_t value) override { Tell("val2", value); }
    void SetStatus(const std::string& text) override {
        Lines.push_back("status " + text);
        if (OnStatus)
            OnStatus(text);
    }
    void SetLabel2(const std::string& text) override {
        Lines.push_back("label2 " + text);
    }
    void SetLblTime(const std::string& text) override { Lines.push_back("time " + text); }
    void BeginStep(int step, int steps) override {
        Lines.push_back("step " + std::to_string(step) + "/" + std::to_string(steps));
    }
    void ShowFartile(std::span<const uint8_t> day, std::span<const uint8_t> night,
                     int32_t farSize) override {
        Shown = {day.size(), night.size(), static_cast<size_t>(farSize)};
    }
    void BeginTakingPlaces() override { Lines.emplace_back("places"); }
    void LetEventsThrough() override {
        if (OnEvents)
            OnEvents();
    }
    bool StopWanted() override { return Stop; }
    int64_t Seconds() override { return Now; }

private:
    void Tell(const std::string& what, int32_t value) {
        Lines.push_back(what + " " + std::to_string(value));
    }
};

} // namespace vardenix::tests
