#pragma once

#include "endtoend/Waiting.h"

#include <map>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace vardenix::tests {

// A program that was started; killed when the object goes and it still runs.
class Child {
public:
    Child() = default;
    // Output goes to the file `log`; `environment` is added to our own.
    Child(const std::vector<std::string>& command,
          std::map<std::string, std::string> environment, const std::string& log);
    Child(Child&& other) noexcept;
    Child& operator=(Child&& other) noexcept;
    ~Child();

    bool Running();
    // Lets it go on for a while, then kills it.
    void KillAfter(int milliseconds);
    void Signal(int signal) const;
    // It does nothing for a while.
    void StopFor(int milliseconds) const;
    // -1 while it runs and when a signal ended it.
    int ExitCode() const { return exitCode_; }

private:
    pid_t pid_ = 0;
    int exitCode_ = -1;
};

// Pixels of the screen.
struct Place {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool operator==(const Place&) const = default;
};

struct Point {
    int X = 0;
    int Y = 0;
};

// What a window shows, without its frame.
struct Picture {
    int Width = 0;
    int Height = 0;
    std::vector<unsigned> Pixels; // 0xRRGGBB, rows from the top

    unsigned At(int x, int y) const {
        return Pixels.at(static_cast<size_t>(y) * static_cast<size_t>(Width) +
                         static_cast<size_t>(x));
    }
    Picture Part(const Place& place) const;
    int Count(unsigned color) const;
    bool operator==(const Picture&) const = default;
};

// A screen of its own with a window manager, as a user would have one.
class Desktop {
public:
    // `folder` takes logs and screenshots.
    explicit Desktop(std::string folder, int width = 1280, int height = 900);

    const std::string& Display() const { return display_; }

    // Starts an editor as a user of this desktop, without a Wine prefix; its output goes
    // to "program.log". `environment` is added.
    Child StartEditor(const std::string& program,
                      std::map<std::string, std::string> environment = {},
                      const std::vector<std::string>& arguments = {}) const;

    // Whether a window whose title matches the expression is up and has the keyboard.
    bool Active(const std::string& title) const;
    bool Visible(const std::string& title) const;
    // How many such windows are up.
    int Windows(const std::string& title) const;
    // Brings a window up and gives it the keyboard.
    void Activate(const std::string& title) const;
    // Where a window stands, without its frame; and moves it.
    Place WhereIs(const std::string& title) const;
    // How far down from the screen's edge it begins; WhereIs counts a frame twice.
    int TopOf(const std::string& title) const;
    void Move(const std::string& title, int left, int top) const;
    // From then on there is no window manager, and nobody gives a window the keyboard.
    void EndManager() { manager_ = {}; }
    void GiveKeyboard(const std::string& title) const;
    // The window manager is held up.
    void StopManagerFor(int milliseconds) const { manager_.StopFor(milliseconds); }
    // Makes the active window an icon.
    void MakeIcon(const std::string& title) const;
    // Keys as xdotool names them: "alt+l", "Return".
    void Key(const std::string& key) const;
    // One right behind the other.
    void Keys(const std::vector<std::string>& keys) const;
    void Type(const std::string& text) const;
    // A click at a place in the active window, in pixels from its top left corner.
    void Click(int x, int y) const;
    // The same in a window by its title; button 1 is the left one, 4 and 5 are the wheel
    // forward and backward.
    void ClickIn(const std::string& title, int x, int y, int button = 1) const;

    // Twice, quickly.
    void DoubleClickIn(const std::string& title, int x, int y) const;
    // The left button down at one place and up at the other, with a key held ("ctrl") or
    // none.
    void DragIn(const std::string& title, Point from, Point to,
                const std::string& key = {}) const;
    // The button is held along several places.
    void StrokeIn(const std::string& title, const std::vector<Point>& places) const;
    // The same from one window into another; the pointer comes there in several steps,
    // as it has to for the two programs to talk.
    void DragInto(const std::string& fromTitle, Point from, const std::string& toTitle,
                  Point to) const;

    // Moves the pointer there in two steps, as a hand would.
    void HoverIn(const std::string& title, int x, int y) const;

    Picture Look(const std::string& title) const;
    // Everything that is to be seen.
    Picture Screen() const;
    // How often each colour 0xRRGGBB stands in a picture of the window.
    std::map<unsigned, int> Colors(const std::string& title) const;

private:
    std::string Run(const std::vector<std::string>& command) const;
    void PointAt(const std::string& title, Point at) const;
    std::string WindowId(const std::string& title) const;
    Picture LookAt(const std::string& windowId, const Place& place) const;

    std::string folder_;
    Place screen_;
    std::string display_;
    Child server_;
    Child manager_;
};

} // namespace vardenix::tests
