#pragma once

#include "endtoend/Desktop.h"

#include <map>
#include <string>

namespace vardenix::tests {

// The controls of a window that is up, by their names, to be pressed with the mouse.
class ControlsOnDesktop {
public:
    // `folder` takes a log; `form` is the name of the window's class.
    ControlsOnDesktop(const Desktop& desktop, const std::string& folder,
                      const std::string& form, std::string title);

    const Place& At(const std::string& control) const;
    // At a share of the control's width; a check box or a radio button at its mark, since
    // it is as wide as its column and answers only on its caption.
    void Press(const std::string& control, double share = 0.5) const;
    // In a box or a list, from its upper left corner.
    void PressIn(const std::string& control, int x, int y) const;
    // Into a box: what it held goes.
    void TypeInto(const std::string& control, const std::string& text) const;

private:
    const Desktop& desktop_;
    std::string title_;
    std::map<std::string, Place> places_;
};

} // namespace vardenix::tests
