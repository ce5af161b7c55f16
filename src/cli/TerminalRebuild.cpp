#include "cli/TerminalRebuild.h"

#include "builder/RunClock.h"
#include "platform/Signals.h"
#include "texts/Numbers.h"

#include <cstdio>
#include <unistd.h>

namespace vardenix {

namespace {

using std::chrono::steady_clock;

} // namespace

TerminalRebuild::TerminalRebuild() : terminal_(::isatty(STDERR_FILENO) == 1) {}

TerminalRebuild::~TerminalRebuild() { Clear(); }

void TerminalRebuild::BeginStep(int step, int steps) {
    step_ = step;
    steps_ = steps;
    stepBegan_ = Seconds();
}

void TerminalRebuild::LetEventsThrough() {
    const auto now = steady_clock::now();
    if (!terminal_ || now - lastShown_ < std::chrono::milliseconds(100))
        return;
    lastShown_ = now;
    shown_ = true;
    std::fprintf(
        stderr, "\r\033[K%s %d %%. %s", status_.c_str(),
        Percent(bar_.Value, bar_.Maximum),
        TextOfRun({step_, steps_, Seconds(), Seconds() - stepBegan_, bar_}).c_str());
}

bool TerminalRebuild::StopWanted() { return EndSignalHeard() != 0; }

int64_t TerminalRebuild::Seconds() {
    return std::chrono::duration_cast<std::chrono::seconds>(steady_clock::now() - begin_)
        .count();
}

void TerminalRebuild::Clear() {
    if (shown_)
        std::fprintf(stderr, "\r\033[K");
}

} // namespace vardenix
