#include "endtoend/Desktop.h"

#include "endtoend/Waiting.h"
#include "support/TestFolder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace vardenix::tests {

namespace {

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char letter : text)
        quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return quoted + "'";
}

} // namespace

Child::Child(const std::vector<std::string>& command,
             std::map<std::string, std::string> environment, const std::string& log) {
    environment.merge(MarkOfOurs());
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (!environment.contains(text.substr(0, text.find('='))))
            variables.push_back(text);
    }
    for (const auto& [name, value] : environment)
        variables.push_back(std::string(name).append("=").append(value));
    const auto pointers = [](std::vector<std::string> const& texts) {
        std::vector<char*> result;
        result.reserve(texts.size() + 1);
        for (const std::string& text : texts)
            result.push_back(const_cast<char*>(text.c_str()));
        result.push_back(nullptr);
        return result;
    };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);
    const int failure =
        ::posix_spawnp(&pid_, command[0].c_str(), &actions, nullptr,
                       pointers(command).data(), pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::runtime_error("cannot start " + command[0]);
}

Child::Child(Child&& other) noexcept
    : pid_(std::exchange(other.pid_, 0)), exitCode_(other.exitCode_) {}

Child& Child::operator=(Child&& other) noexcept {
    std::swap(pid_, other.pid_);
    std::swap(exitCode_, other.exitCode_);
    return *this;
}

Child::~Child() {
    if (!Running())
        return;
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
}

bool Child::Running() {
    if (pid_ == 0)
        return false;
    int status = 0;
    if (::waitpid(pid_, &status, WNOHANG) == 0)
        return true;
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    pid_ = 0;
    return false;
}

void Child::Signal(int signal) const {
    // The number 0 would mean this test and all that stands around it.
    if (pid_ > 0)
        ::kill(pid_, signal);
}

namespace {

void Pass(int milliseconds) {
    std::this_thread::sleep_until(std::chrono::steady_clock::now() +
                                  std::chrono::milliseconds(milliseconds));
}

} // namespace

void Child::StopFor(int milliseconds) const {
    Signal(SIGSTOP);
    Pass(milliseconds);
    Signal(SIGCONT);
}

void Child::KillAfter(int milliseconds) {
    Pass(milliseconds);
    Signal(SIGKILL);
    if (pid_ > 0)
        ::waitpid(pid_, nullptr, 0);
    pid_ = 0;
}

// The server and the window manager are nobody's work but the desktop's own.
constexpr std::chrono::seconds DesktopPatience{120};

Desktop::Desktop(std::string folder, int width, int height)
    : folder_(std::move(folder)), screen_{0, 0, width, height} {
    // The server picks a free number and writes it down when it is ready.
    const std::string number = folder_ + "/display";
    server_ = Child({"sh", "-c",
                     "exec Xvfb -displayfd 3 -noreset -screen 0 " +
                         std::to_string(width) + "x" + std::to_string(height) +
                         "x24 -nolisten tcp 3>" + Quoted(number)},
                    NotOurs(), folder_ + "/Xvfb.log");
    const bool up = WaitFor(
        [&] {
            std::ifstream file(number);
            std::string line;
            if (!std::getline(file, line) || file.eof())
                return false;
            display_ = ":" + line;
            return true;
        },
        DesktopPatience);
    if (!up)
        throw std::runtime_error("no Xvfb");
    std::map<std::string, std::string> environment = NotOurs();
    environment.insert({{"DISPLAY", display_}, {"HOME", folder_}});
    manager_ = Child({"openbox"}, environment, folder_ + "/openbox.log");
    if (!WaitFor(
            [this] {
                return Run({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"})
                           .find("window id") != std::string::npos;
            },
            DesktopPatience))
        throw std::runtime_error("no openbox");
}

Child Desktop::StartEditor(const std::string& program,
                           std::map<std::string, std::string> environment,
                           const std::vector<std::string>& arguments) const {
    environment.insert({{"DISPLAY", display_},
                        {"HOME", folder_},
                        {"XDG_RUNTIME_DIR", folder_},
                        {"WINEPREFIX", folder_ + "/no wine"},
                        {"QT_QPA_PLATFORM", "xcb"}});
    std::vector<std::string> command{program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return {command, environment, folder_ + "/program.log"};
}

std::string Desktop::Run(const std::vector<std::string>& command) const {
    // A tool that waits for a window or a click that does not come is given up.
    std::string line = "DISPLAY=" + Quoted(display_) + " timeout --kill-after=1 60";
    for (const std::string& word : command)
        line += " " + Quoted(word);
    line += " 2>/dev/null";
    std::FILE* pipe = ::popen(line.c_str(), "r"); // NOLINT(cert-env33-c)
    if (pipe == nullptr)
        throw std::runtime_error("cannot start " + command[0]);
    std::string output;
    char buffer[65536];
    for (size_t n = 0; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        output.append(buffer, n);
    ::pclose(pipe);
    return output;
}

std::string Desktop::WindowId(const std::string& title) const {
    // A window that goes while the tool asks for its name ends the whole search: only
    // two empty answers say that there is none.
    const std::vector<std::string> search{"xdotool", "search", "--onlyvisible", "--name",
                                          title};
    std::string ids = Run(search);
    if (ids.empty())
        ids = Run(search);
    return ids.substr(0, ids.find('\n'));
}

bool Desktop::Visible(const std::string& title) const { return !WindowId(title).empty(); }

int Desktop::Windows(const std::string& title) const {
    const std::string ids = Run({"xdotool", "search", "--onlyvisible", "--name", title});
    return static_cast<int>(std::ranges::count(ids, '\n'));
}

bool Desktop::Active(const std::string& title) const {
    const std::string id = WindowId(title);
    return !id.empty() && Run({"xdotool", "getactivewindow"}) == id + "\n";
}

void Desktop::Key(const std::string& key) const { Run({"xdotool", "key", key}); }

void Desktop::Keys(const std::vector<std::string>& keys) const {
    std::vector<std::string> command{"xdotool", "key", "--delay", "10"};
    command.insert(command.end(), keys.begin(), keys.end());
    Run(command);
}

void Desktop::Type(const std::string& text) const {
    Run({"xdotool", "type", "--delay", "2", "--", text});
}

void Desktop::Click(int x, int y) const {
    std::string id = Run({"xdotool", "getactivewindow"});
    id = id.substr(0, id.find('\n'));
    Run({"xdotool", "mousemove", "--window", id, std::to_string(x), std::to_string(y),
         "click", "1"});
}

void Desktop::ClickIn(const std::string& title, int x, int y, int button) const {
    Run({"xdotool", "mousemove", "--window", WindowId(title), std::to_string(x),
         std::to_string(y), "click", std::to_string(button)});
}

void Desktop::DoubleClickIn(const std::string& title, int x, int y) const {
    Run({"xdotool", "mousemove", "--window", WindowId(title), std::to_string(x),
         std::to_string(y), "click", "--repeat", "2", "--delay", "30", "1"});
}

void Desktop::PointAt(const std::string& title, Point at) const {
    Run({"xdotool", "mousemove", "--window", WindowId(title), std::to_string(at.X),
         std::to_string(at.Y)});
}

void Desktop::DragIn(const std::string& title, Point from, Point to,
                     const std::string& key) const {
    if (!key.empty())
        Run({"xdotool", "keydown", key});
    PointAt(title, from);
    Run({"xdotool", "mousedown", "1"});
    PointAt(title, {(from.X + to.X) / 2, (from.Y + to.Y) / 2});
    PointAt(title, to);
    Run({"xdotool", "mouseup", "1"});
    if (!key.empty())
        Run({"xdotool", "keyup", key});
}

void Desktop::StrokeIn(const std::string& title, const std::vector<Point>& places) const {
    PointAt(title, places.front());
    Run({"xdotool", "mousedown", "1"});
    for (const Point& place : places)
        PointAt(title, place);
    Run({"xdotool", "mouseup", "1"});
}

void Desktop::DragInto(const std::string& fromTitle, Point from,
                       const std::string& toTitle, Point to) const {
    PointAt(fromTitle, from);
    Run({"xdotool", "mousedown", "1"});
    for (const int beside : {60, 30, 10, 3, 0})
        PointAt(toTitle, {to.X + beside, to.Y});
    Run({"xdotool", "mouseup", "1"});
}

void Desktop::HoverIn(const std::string& title, int x, int y) const {
    for (const int beside : {3, 0})
        Run({"xdotool", "mousemove", "--window", WindowId(title),
             std::to_string(x + beside), std::to_string(y)});
}

void Desktop::Activate(const std::string& title) const {
    Run({"xdotool", "windowactivate", "--sync", WindowId(title)});
}

void Desktop::GiveKeyboard(const std::string& title) const {
    Run({"xdotool", "windowfocus", WindowId(title)});
}

void Desktop::MakeIcon(const std::string& title) const {
    Run({"xdotool", "windowminimize", "--sync", WindowId(title)});
}

void Desktop::Move(const std::string& title, int left, int top) const {
    Run({"xdotool", "windowmove", WindowId(title), std::to_string(left),
         std::to_string(top)});
}

Place Desktop::WhereIs(const std::string& title) const {
    // "WINDOW=1", "X=2" and so on, a line each.
    std::istringstream lines(
        Run({"xdotool", "getwindowgeometry", "--shell", WindowId(title)}));
    Place place;
    for (std::string line; std::getline(lines, line);) {
        const size_t equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        const std::string name = line.substr(0, equals);
        const int value = std::atoi(line.c_str() + equals + 1);
        if (name == "X")
            place.Left = value;
        else if (name == "Y")
            place.Top = value;
        else if (name == "WIDTH")
            place.Width = value;
        else if (name == "HEIGHT")
            place.Height = value;
    }
    return place;
}

int Desktop::TopOf(const std::string& title) const {
    const std::string told = Run({"xwininfo", "-id", WindowId(title)});
    const std::string before = "Absolute upper-left Y:";
    const size_t at = told.find(before);
    return at == std::string::npos ? -1 : std::atoi(told.c_str() + at + before.size());
}

Picture Picture::Part(const Place& place) const {
    Picture part{place.Width, place.Height, {}};
    for (int y = 0; y < place.Height; ++y)
        for (int x = 0; x < place.Width; ++x)
            part.Pixels.push_back(At(place.Left + x, place.Top + y));
    return part;
}

int Picture::Count(unsigned color) const {
    return static_cast<int>(std::ranges::count(Pixels, color));
}

Picture Desktop::Look(const std::string& title) const {
    return LookAt(WindowId(title), WhereIs(title));
}

Picture Desktop::Screen() const { return LookAt("root", screen_); }

Picture Desktop::LookAt(const std::string& windowId, const Place& place) const {
    // Asked for a window that is not there, import waits for a click on another one.
    const bool there = !windowId.empty() && (windowId == "root" ||
                                             !Run({"xwininfo", "-id", windowId}).empty());
    const std::string bytes =
        there ? Run({"import", "-window", windowId, "-depth", "8", "rgb:-"}) : "";
    const auto byte = [&bytes](size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(bytes[i]));
    };
    Picture picture{place.Width, place.Height, {}};
    for (size_t i = 0; i + 2 < bytes.size(); i += 3)
        picture.Pixels.push_back(byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2));
    // A window that changed its size in between is looked at again by whoever waits.
    picture.Pixels.resize(static_cast<size_t>(place.Width) *
                          static_cast<size_t>(place.Height));
    return picture;
}

std::map<unsigned, int> Desktop::Colors(const std::string& title) const {
    std::map<unsigned, int> colors;
    for (const unsigned pixel : Look(title).Pixels)
        ++colors[pixel];
    return colors;
}

} // namespace vardenix::tests
