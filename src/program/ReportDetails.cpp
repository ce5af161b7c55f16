#include "program/ReportDetails.h"

#include "program/ProgramVersion.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace vardenix {

namespace {

constexpr size_t ToldChanges = 10;

std::string HourOf(const Change& change) {
    const std::time_t time = std::chrono::system_clock::to_time_t(change.Time);
    std::tm local{};
    ::localtime_r(&time, &local);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%H:%M:%S", &local);
    return text.data();
}

} // namespace

std::string ReportDetails(const ProgramState& state) {
    std::string text = "Vardenix " + ProgramVersion() + "\n";
    if (!state.Terrain.LFilename.empty())
        text += "Theater: " + state.Terrain.LFilename + ", " +
                std::to_string(state.Terrain.MapWidth) + " posts a side\n";
    const ChangeLog& log = state.Changes;
    text += log.Count() == 0 ? "Nothing was changed\n" : "Changed last:\n";
    const size_t last = std::min(log.Count(), log.Position() + ToldChanges / 2);
    for (size_t i = last - std::min(last, ToldChanges); i < last; ++i)
        text += HourOf(log.At(i)) + " " + log.At(i).Name +
                (i < log.Position() ? "" : " (taken back)") + "\n";
    return text;
}

} // namespace vardenix
