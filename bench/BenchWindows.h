#pragma once

#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace vardenix::bench {

// A box here would be a fault of the benchmark.
class NoDialogs : public Dialogs {
public:
    BoxAnswer MessageBox(const std::string&, const std::string&, BoxIcon,
                         BoxButtons) override {
        std::abort();
    }
    FileAnswer OpenFile(const FileQuestion&) override { std::abort(); }
    std::vector<std::string> OpenFiles(const FileQuestion&) override { std::abort(); }
    FileAnswer SaveFile(const FileQuestion&) override { std::abort(); }
    std::optional<std::string> Folder(const std::string&, const std::string&) override {
        std::abort();
    }
    uint32_t Color(uint32_t) override { std::abort(); }
    FontChoice Font(const FontChoice&) override { std::abort(); }
};

// A screen in memory, and the application that lives as long as the program.
inline void NeedApplication() {
    static int argc = 1;
    static char name[] = "bench";
    static char* argv[] = {name, nullptr};
    static NoDialogs dialogs;
    static const RunTimeBarrier* barrier = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        auto* made = new RunTimeBarrier(argc, argv, dialogs);
        ApplyTheme();
        return made;
    }();
    benchmark::DoNotOptimize(barrier);
}

} // namespace vardenix::bench
