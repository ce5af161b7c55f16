#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

enum class BoxIcon { None, Information, Question, Warning, Critical };
enum class BoxButtons { Ok, YesNo, YesUnlessNo, YesNoCancel, YesNoSaveAll, ContinueEnd };
enum class BoxAnswer { Ok, Yes, No, Cancel, SaveAll, Continue, End };

struct FileQuestion {
    std::string Title; // empty: the platform's own
    // Pairs of a description and patterns, all parted by "|": "L2 Files | *.l2". Blanks
    // round a part do not count.
    std::string Filter;
    std::string InitialPath = {}; // a file or folder to begin at; its filter is chosen
};

struct FileAnswer {
    std::string Path; // as the user picked it
    // The pair that was chosen, from 1, or the one that the path's extension belongs to.
    int FilterIndex = 1;
};

struct FontChoice {
    std::string Name;
    float Size = 10; // points
    bool Bold = false;
    bool Italic = false;
    bool Strikethrough = false;
    bool Underline = false;
    uint32_t Color = 0; // 0x00BBGGRR
};

// Everything that stops the program for an answer. Texts are UTF-8. The file, colour and
// font dialogs end in RuntimeError 32755 when they are cancelled: that is the normal way
// out, which callers trap without a word.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    // An empty title shows the program's name. In a box with Yes and No only, or with
    // "Save all and exit" beside them, Enter, Esc and the close box mean No; with
    // YesUnlessNo, where it is No that loses something, they mean Yes.
    virtual BoxAnswer MessageBox(const std::string& text, const std::string& title,
                                 BoxIcon icon, BoxButtons buttons) = 0;
    // An existing file.
    virtual FileAnswer OpenFile(const FileQuestion& question) = 0;
    // One or more existing files of one folder.
    virtual std::vector<std::string> OpenFiles(const FileQuestion& question) = 0;
    // A file to be written; the user has agreed to lose one that is there. A name that
    // has no extension of a filter gets the first one of the chosen filter.
    virtual FileAnswer SaveFile(const FileQuestion& question) = 0;
    // An existing folder; nothing when cancelled. Begins at `initial` where that is
    // there.
    virtual std::optional<std::string> Folder(const std::string& prompt,
                                              const std::string& initial = {}) = 0;
    // 0x00BBGGRR.
    virtual uint32_t Color(uint32_t current) = 0;
    virtual FontChoice Font(const FontChoice& current) = 0;
    // A font with the colour of its text.
    virtual FontChoice FontAndColor(const FontChoice& current) { return Font(current); }

    // The usual notice: an OK box.
    void Notice(const std::string& text, const std::string& title, BoxIcon icon) {
        MessageBox(text, title, icon, BoxButtons::Ok);
    }
};

} // namespace vardenix
