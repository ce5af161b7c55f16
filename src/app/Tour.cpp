#include "platform/FileNames.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/RuntimeError.h"
#include "platform/windows/ColorImage.h"
#include "theater/StartUp.h"

#include <chrono>
#include <iostream>

namespace vardenix {

namespace {

// Nobody is there to ask: what is said goes to the terminal, and every question is
// answered with its most careful answer.
class TerminalDialogs : public Dialogs {
public:
    BoxAnswer MessageBox(const std::string& text, const std::string&, BoxIcon,
                         BoxButtons buttons) override {
        std::cerr << text << "\n";
        return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
    }
    FileAnswer OpenFile(const FileQuestion&) override { Refuse(); }
    std::vector<std::string> OpenFiles(const FileQuestion&) override { Refuse(); }
    FileAnswer SaveFile(const FileQuestion&) override { Refuse(); }
    std::optional<std::string> Folder(const std::string&) override { Refuse(); }
    uint32_t Color(uint32_t) override { Refuse(); }
    FontChoice Font(const FontChoice&) override { Refuse(); }

private:
    [[noreturn]] static void Refuse() { throw RuntimeError(ErrorNumber::Cancelled); }
};

class NoWindows : public OpeningWindows {
public:
    void PreviewChanged() override {}
    void LoadMapEditor() override {}
    void LoadMap() override {}
    void ShowMainPanel() override {}
    void RestoreChildWindows() override {}
    void RefreshPalette() override {}
    void InitForm() override {}
};

// Opens the theater of an install folder and writes its height map.
int Tour(const std::string& theaterFolder, const std::string& png) {
    const auto begin = std::chrono::steady_clock::now();
    TerminalDialogs dialogs;
    SystemClock clock;
    SystemProcesses processes;
    DebugLog log(clock);
    ProgramState state;
    FileRegistry registry(TemporaryFolder(), {});
    const Platform platform{dialogs, registry, clock, processes};
    NoProgress progress;
    NoWindows windows;

    if (!CheckTheaterPaths(state, PathsOfTheater(theaterFolder, ""), dialogs, log))
        return 1;
    LoadTheater(state, progress, platform, log, windows);
    const QImage picture = ImageOf(state.Preview.Pixels, state.Preview.Side);
    if (!picture.save(QString::fromStdString(TextOfPath(RealPath(png))), "PNG"))
        throw RuntimeError(ErrorNumber::PathFileAccess, "writing " + png);

    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - begin);
    std::cout << "Height map of " << state.Terrain.MapWidth << " x "
              << state.Terrain.MapWidth << " posts: " << png << " (" << took.count()
              << " ms)\n";
    return 0;
}

} // namespace

} // namespace vardenix

// vardenix-tour FOLDER PNG: the folder holds terrain and texture, as one of a game does.
int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: vardenix-tour FOLDER PNG\n";
        return 2;
    }
    try {
        return vardenix::Tour(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
