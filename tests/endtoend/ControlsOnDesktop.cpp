#include "endtoend/ControlsOnDesktop.h"

#include "support/TestFolder.h"

#include <sstream>
#include <stdexcept>

namespace vardenix::tests {

ControlsOnDesktop::ControlsOnDesktop(const Desktop& desktop, const std::string& folder,
                                     const std::string& form, std::string title)
    : desktop_(desktop), title_(std::move(title)) {
    const Place window = desktop.WhereIs(title_);
    const std::string list = folder + "/places";
    Child child({"sh", "-c", "exec \"$0\" \"$@\" >'" + list + "'", CONTROL_PLACES, form,
                 std::to_string(window.Width), std::to_string(window.Height)},
                {{"DISPLAY", desktop.Display()}, {"QT_QPA_PLATFORM", "xcb"}},
                folder + "/places.log");
    if (!WaitFor([&] { return !child.Running(); }) || child.ExitCode() != 0)
        throw std::runtime_error("no controls of " + form);
    std::istringstream lines(Slurp(list));
    Place place;
    for (std::string name;
         lines >> name >> place.Left >> place.Top >> place.Width >> place.Height;)
        places_[name] = place;
}

const Place& ControlsOnDesktop::At(const std::string& control) const {
    const auto found = places_.find(control);
    if (found == places_.end())
        throw std::runtime_error("no control " + control);
    return found->second;
}

void ControlsOnDesktop::Press(const std::string& control, double share) const {
    const Place& place = At(control);
    const bool marked = control.starts_with("chk") || control.starts_with("Check") ||
                        control.starts_with("Option");
    PressIn(control, marked ? 10 : static_cast<int>((place.Width - 1) * share),
            place.Height / 2);
}

void ControlsOnDesktop::PressIn(const std::string& control, int x, int y) const {
    desktop_.ClickIn(title_, At(control).Left + x, At(control).Top + y);
}

void ControlsOnDesktop::TypeInto(const std::string& control,
                                 const std::string& text) const {
    Press(control);
    desktop_.Key("ctrl+a");
    desktop_.Type(text);
}

} // namespace vardenix::tests
