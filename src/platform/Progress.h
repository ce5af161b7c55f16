#pragma once

#include <string>

namespace vardenix {

// What a long routine tells whoever waits for it. The window that started the work shows
// it; in tests and on the command line a plain object takes it. Nothing here throws.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    virtual ~Progress() = default;

    // The bar comes at 0, or goes.
    virtual void ShowBar() = 0;
    virtual void HideBar() = 0;
    // 0 to 100; values outside are drawn as far as the bar reaches.
    virtual void SetBar(int percent) = 0;
    // What is being done, UTF-8; empty when nothing is.
    virtual void SetText(const std::string& text) = 0;
    // Lets waiting window events be handled. Called at fixed points of a long loop only,
    // once a row or so; a window handler can run inside it.
    virtual void LetEventsThrough() = 0;
};

// For work that nobody watches.
class NoProgress : public Progress {
public:
    void ShowBar() override {}
    void HideBar() override {}
    void SetBar(int) override {}
    void SetText(const std::string&) override {}
    void LetEventsThrough() override {}
};

// A bar that is shown as long as the work lasts, however it ends.
class ShownBar {
public:
    explicit ShownBar(Progress& progress) : progress_(progress) { progress_.ShowBar(); }
    ShownBar(const ShownBar&) = delete;
    ShownBar& operator=(const ShownBar&) = delete;
    ~ShownBar() { progress_.HideBar(); }

private:
    Progress& progress_;
};

} // namespace vardenix
