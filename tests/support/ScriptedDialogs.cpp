#include "support/ScriptedDialogs.h"

#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix::tests {

ScriptedDialogs::~ScriptedDialogs() {
    EXPECT_TRUE(expected_.empty())
        << expected_.size()
        << " expected dialogs never came; the first: " << expected_.front().Title << " / "
        << expected_.front().Text;
}

void ScriptedDialogs::ExpectBox(const std::string& title, const std::string& text,
                                BoxAnswer answer) {
    expected_.push_back(
        {.What = Kind::Box, .Title = title, .Text = text, .Answer = answer});
}

void ScriptedDialogs::ExpectAnyBox(const std::string& title, BoxAnswer answer,
                                   std::string* text) {
    expected_.push_back({.What = Kind::Box,
                         .AnyText = true,
                         .SeenText = text,
                         .Title = title,
                         .Answer = answer});
}

void ScriptedDialogs::ExpectOpen(const std::string& title, const std::string& path,
                                 int filterIndex) {
    expected_.push_back(
        {.What = Kind::Open, .Title = title, .Path = path, .FilterIndex = filterIndex});
}

void ScriptedDialogs::ExpectSave(const std::string& title, const std::string& path,
                                 int filterIndex) {
    expected_.push_back(
        {.What = Kind::Save, .Title = title, .Path = path, .FilterIndex = filterIndex});
}

void ScriptedDialogs::ExpectFolder(const std::string& prompt,
                                   std::optional<std::string> path) {
    expected_.push_back({.What = Kind::Folder, .Title = prompt, .Path = std::move(path)});
}

void ScriptedDialogs::ExpectColor(uint32_t current, uint32_t answer) {
    expected_.push_back({.What = Kind::Color, .Current = current, .ColorAnswer = answer});
}

void ScriptedDialogs::ExpectFont(const FontChoice& answer) {
    expected_.push_back({.What = Kind::Font, .FontAnswer = answer});
}

void ScriptedDialogs::ExpectCancel() { expected_.push_back({.What = Kind::Cancel}); }

ScriptedDialogs::Expected ScriptedDialogs::Take(Kind kind, const std::string& title,
                                                const std::string& text) {
    if (expected_.empty()) {
        ADD_FAILURE() << "a dialog that nobody told of: " << title << " / " << text;
        throw RuntimeError(ErrorNumber::Cancelled);
    }
    Expected next = expected_.front();
    expected_.pop_front();
    if (next.What == Kind::Cancel)
        throw RuntimeError(ErrorNumber::Cancelled);
    EXPECT_EQ(static_cast<int>(next.What), static_cast<int>(kind))
        << title << " / " << text;
    EXPECT_EQ(next.Title, title);
    EXPECT_TRUE(next.AnyText || next.Text == text)
        << "the box said: " << text << "\nnot: " << next.Text;
    if (next.SeenText != nullptr)
        *next.SeenText = text;
    return next;
}

BoxAnswer ScriptedDialogs::MessageBox(const std::string& text, const std::string& title,
                                      BoxIcon icon, BoxButtons buttons) {
    lastIcon_ = icon;
    lastButtons_ = buttons;
    if (WhileBoxIsUp)
        WhileBoxIsUp();
    return Take(Kind::Box, title, text).Answer;
}

FileAnswer ScriptedDialogs::OpenFile(const FileQuestion& question) {
    lastFilter_ = question.Filter;
    beganAt_.push_back(question.InitialPath);
    const Expected next = Take(Kind::Open, question.Title, {});
    return {next.Path.value_or(""), next.FilterIndex};
}

std::vector<std::string> ScriptedDialogs::OpenFiles(const FileQuestion& question) {
    std::vector<std::string> paths(1);
    for (const char letter : OpenFile(question).Path)
        if (letter == '\n')
            paths.emplace_back();
        else
            paths.back() += letter;
    return paths;
}

FileAnswer ScriptedDialogs::SaveFile(const FileQuestion& question) {
    lastFilter_ = question.Filter;
    beganAt_.push_back(question.InitialPath);
    const Expected next = Take(Kind::Save, question.Title, {});
    return {next.Path.value_or(""), next.FilterIndex};
}

std::optional<std::string> ScriptedDialogs::Folder(const std::string& prompt,
                                                   const std::string& initial) {
    beganAt_.push_back(initial);
    return Take(Kind::Folder, prompt, {}).Path;
}

uint32_t ScriptedDialogs::Color(uint32_t current) {
    const Expected next = Take(Kind::Color, {}, {});
    EXPECT_EQ(next.Current, current);
    return next.ColorAnswer;
}

FontChoice ScriptedDialogs::Font(const FontChoice&) {
    return Take(Kind::Font, {}, {}).FontAnswer;
}

} // namespace vardenix::tests
