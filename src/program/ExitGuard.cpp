#include "program/ExitGuard.h"

#include <vector>

namespace vardenix {

namespace {

std::vector<std::string> NamesOf(const DirtyFlags& flags) {
    std::vector<std::string> names;
    const auto add = [&names](bool dirty, const char* name) {
        if (dirty)
            names.emplace_back(name);
    };
    add(flags.BIN, "BIN");
    add(flags.L2, "L2");
    add(flags.L0ELV, "L0/ELV");
    add(flags.MAP, "MAP");
    return names;
}

// "A", "A and B", "A, B and C".
std::string Joined(const std::vector<std::string>& names) {
    std::string text = names.front();
    for (size_t i = 1; i < names.size(); ++i)
        text += (i + 1 == names.size() ? " and " : ", ") + names[i];
    return text;
}

} // namespace

std::string ExitQuestion(const DirtyFlags& flags) {
    const std::vector<std::string> names = NamesOf(flags);
    if (names.empty())
        return {};
    const char* const before = names.size() == 1   ? "The "
                               : names.size() == 2 ? "Both "
                                                   : "";
    const char* const behind = names.size() == 1 ? " file has" : " files have";
    return before + Joined(names) + behind +
           " changed. Are you sure you want to exit without saving it first?\n"
           "Press Yes to exit whithout saving.\n"
           "Press No to return to the program";
}

WayOut WayOutOf(BoxAnswer answer) {
    return answer == BoxAnswer::SaveAll ? WayOut::SaveAll
           : answer == BoxAnswer::Yes   ? WayOut::Lose
                                        : WayOut::Stay;
}

WayOut ConfirmExit(const DirtyFlags& flags, Dialogs& dialogs) {
    const std::string question = ExitQuestion(flags);
    return question.empty()
               ? WayOut::Lose
               : WayOutOf(dialogs.MessageBox(question, "Confirm", BoxIcon::Question,
                                             BoxButtons::YesNoSaveAll));
}

} // namespace vardenix
