#include "cli/Terminal.h"

#include "cli/Printing.h"
#include "platform/Signals.h"
#include "texts/RuntimeError.h"

#include <cstdio>
#include <unistd.h>

namespace vardenix {

namespace {

[[noreturn]] void Refuse() { throw RuntimeError(ErrorNumber::Cancelled); }

} // namespace

BoxAnswer TerminalDialogs::MessageBox(const std::string& text, const std::string&,
                                      BoxIcon, BoxButtons buttons) {
    Tell(text);
    switch (buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
    case BoxButtons::YesNoSaveAll:
        return BoxAnswer::No;
    case BoxButtons::YesUnlessNo:
        return BoxAnswer::Yes;
    case BoxButtons::YesNoCancel:
        return BoxAnswer::Cancel;
    case BoxButtons::ContinueEnd:
        return BoxAnswer::End;
    }
    return BoxAnswer::Cancel;
}

FileAnswer TerminalDialogs::OpenFile(const FileQuestion&) { Refuse(); }
std::vector<std::string> TerminalDialogs::OpenFiles(const FileQuestion&) { Refuse(); }
FileAnswer TerminalDialogs::SaveFile(const FileQuestion&) { Refuse(); }
std::optional<std::string> TerminalDialogs::Folder(const std::string&,
                                                   const std::string&) {
    Refuse();
}
uint32_t TerminalDialogs::Color(uint32_t) { Refuse(); }
FontChoice TerminalDialogs::Font(const FontChoice&) { Refuse(); }

TerminalProgress::TerminalProgress() : terminal_(::isatty(STDERR_FILENO) == 1) {}

TerminalProgress::~TerminalProgress() { HideBar(); }

void TerminalProgress::HideBar() {
    if (shown_)
        std::fprintf(stderr, "\r\033[K");
    shown_ = false;
    percent_ = -1;
}

void TerminalProgress::SetBar(int percent) {
    if (!terminal_ || percent == percent_)
        return;
    percent_ = percent;
    shown_ = true;
    std::fprintf(stderr, "\r\033[K%s %d %%", ForTerminal(text_).c_str(), percent);
}

void TerminalProgress::SetText(const std::string& text) {
    text_ = text;
    percent_ = -1;
}

void TerminalProgress::LetEventsThrough() {
    if (EndSignalHeard() != 0)
        throw RuntimeError(ErrorNumber::Cancelled, "the system ended it");
}

} // namespace vardenix
