#pragma once

#include "platform/Dialogs.h"

#include <deque>
#include <functional>

namespace vardenix::tests {

// Dialogs that are given their answers in advance. A question that no answer waits for,
// one of another kind or with other words than told fails the test, and so does an answer
// left over.
class ScriptedDialogs : public Dialogs {
public:
    ~ScriptedDialogs() override;

    // `text` is compared as a whole.
    void ExpectBox(const std::string& title, const std::string& text, BoxAnswer answer);
    // Whatever its text, which is written to `text` unless that is null.
    void ExpectAnyBox(const std::string& title, BoxAnswer answer, std::string* text);
    // The icon of the last box that was shown.
    BoxIcon LastIcon() const { return lastIcon_; }
    BoxButtons LastButtons() const { return lastButtons_; }

    void ExpectOpen(const std::string& title, const std::string& path,
                    int filterIndex = 1);
    void ExpectSave(const std::string& title, const std::string& path,
                    int filterIndex = 1);
    void ExpectFolder(const std::string& prompt, std::optional<std::string> path);
    void ExpectColor(uint32_t current, uint32_t answer);
    void ExpectFont(const FontChoice& answer);
    // The next dialog, of whatever kind and words, is cancelled.
    void ExpectCancel();
    // Called when a box comes up, before it is answered.
    std::function<void()> WhileBoxIsUp;
    // The filter of the last file question.
    const std::string& LastFilter() const { return lastFilter_; }
    // Where the dialogs for files and folders began, in their order.
    const std::vector<std::string>& BeganAt() const { return beganAt_; }
    bool AllAnswered() const { return expected_.empty(); }

    BoxAnswer MessageBox(const std::string& text, const std::string& title, BoxIcon icon,
                         BoxButtons buttons) override;
    FileAnswer OpenFile(const FileQuestion& question) override;
    std::vector<std::string> OpenFiles(const FileQuestion& question) override;
    FileAnswer SaveFile(const FileQuestion& question) override;
    std::optional<std::string> Folder(const std::string& prompt,
                                      const std::string& initial = {}) override;
    uint32_t Color(uint32_t current) override;
    FontChoice Font(const FontChoice& current) override;

private:
    enum class Kind { Box, Open, Save, Folder, Color, Font, Cancel };
    struct Expected {
        Kind What;
        bool AnyText = false;
        std::string* SeenText = nullptr;
        std::string Title = {};
        std::string Text = {};
        BoxAnswer Answer = BoxAnswer::Ok;
        std::optional<std::string> Path = {};
        int FilterIndex = 1;
        uint32_t Current = 0;
        uint32_t ColorAnswer = 0;
        FontChoice FontAnswer = {};
    };
    // The next expected answer, which must be of the kind; throws the cancel.
    Expected Take(Kind kind, const std::string& title, const std::string& text);

    std::deque<Expected> expected_;
    BoxIcon lastIcon_ = BoxIcon::None;
    BoxButtons lastButtons_ = BoxButtons::Ok;
    std::string lastFilter_;
    std::vector<std::string> beganAt_;
};

} // namespace vardenix::tests
