#include "builder/RunClock.h"

namespace vardenix {

namespace {

std::string TwoDigits(int64_t value) {
    return (value < 10 ? "0" : "") + std::to_string(value);
}

} // namespace

std::string TextOfDuration(int64_t seconds) {
    const int64_t minutes = seconds / 60;
    if (minutes < 60)
        return std::to_string(minutes) + ":" + TwoDigits(seconds % 60);
    return std::to_string(minutes / 60) + ":" + TwoDigits(minutes % 60) + ":" +
           TwoDigits(seconds % 60);
}

std::string TextOfRun(const RunState& run) {
    std::string text = "Step " + std::to_string(run.Step) + " of " +
                       std::to_string(run.Steps) + ", " + TextOfDuration(run.Seconds) +
                       " so far";
    if (run.StepSeconds < 1 || run.Bar.Value < 1 || run.Bar.Value >= run.Bar.Maximum)
        return text;
    const int64_t left =
        run.StepSeconds * (run.Bar.Maximum - run.Bar.Value) / run.Bar.Value;
    return text + ", about " + TextOfDuration(left) + " left in this step";
}

} // namespace vardenix
