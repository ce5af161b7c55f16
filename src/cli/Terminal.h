#pragma once

#include "platform/Dialogs.h"
#include "platform/Progress.h"

#include <string>

namespace vardenix {

// Nobody is there to ask: what is said goes to the standard error, every question is
// answered with its most careful answer, and every file dialog is cancelled.
class TerminalDialogs : public Dialogs {
public:
    BoxAnswer MessageBox(const std::string& text, const std::string& title, BoxIcon icon,
                         BoxButtons buttons) override;
    FileAnswer OpenFile(const FileQuestion& question) override;
    std::vector<std::string> OpenFiles(const FileQuestion& question) override;
    FileAnswer SaveFile(const FileQuestion& question) override;
    std::optional<std::string> Folder(const std::string& prompt,
                                      const std::string& initial = {}) override;
    uint32_t Color(uint32_t current) override;
    FontChoice Font(const FontChoice& current) override;
};

// A line on the standard error that is written over and over, and only where that is a
// terminal.
class TerminalProgress : public Progress {
public:
    TerminalProgress();
    ~TerminalProgress() override;

    void ShowBar() override {}
    void HideBar() override;
    void SetBar(int percent) override;
    void SetText(const std::string& text) override;
    // The one event is the wish to end: error 32755.
    void LetEventsThrough() override;

private:
    bool terminal_;
    bool shown_ = false;
    int percent_ = -1;
    std::string text_;
};

} // namespace vardenix
