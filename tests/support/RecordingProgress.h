#pragma once

#include "platform/Progress.h"

#include <functional>
#include <string>

namespace vardenix::tests {

// Writes down what it is told, in order: "bar 50|events|text Loading...".
class RecordingProgress : public Progress {
public:
    // Called where window events would be handled.
    std::function<void()> OnEvents;

    const std::string& Story() const { return story_; }
    void Forget() { story_.clear(); }

    void ShowBar() override { Tell("show"); }
    void HideBar() override { Tell("hide"); }
    void SetBar(int percent) override { Tell("bar " + std::to_string(percent)); }
    void SetText(const std::string& text) override { Tell("text " + text); }
    void LetEventsThrough() override {
        Tell("events");
        if (OnEvents)
            OnEvents();
    }

private:
    void Tell(const std::string& what) { story_ += (story_.empty() ? "" : "|") + what; }

    std::string story_;
};

} // namespace vardenix::tests
