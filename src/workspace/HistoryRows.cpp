#include "workspace/HistoryRows.h"

#include <ctime>

namespace vardenix {

namespace {

const char* NameOfPaper(Paper paper) {
    switch (paper) {
    case Paper::Level2:
        return "L2";
    case Paper::Heights:
        return "L0/ELV";
    case Paper::Catalogue:
        return "BIN";
    case Paper::MapFile:
        return "MAP";
    case Paper::Features:
        break;
    }
    return "Features";
}

} // namespace

std::string NamesOf(const std::vector<Paper>& papers) {
    std::string names;
    for (const Paper paper : papers)
        names += (names.empty() ? "" : ", ") + std::string(NameOfPaper(paper));
    return names;
}

LocalTime LocalTimeOf(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_wday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

HistoryRow HistoryRowAt(const ChangeLog& changes, size_t row) {
    if (row == 0)
        return {.Time = {}, .Name = "Before these changes", .Papers = {}, .Saved = {}};
    const Change& change = changes.At(row - 1);
    std::vector<Paper> papers;
    for (const Paper paper : AllPapers)
        if (change.Touches(paper))
            papers.push_back(paper);
    return {HoursMinutesSeconds(LocalTimeOf(change.Time)), change.Name, NamesOf(papers),
            NamesOf(changes.SavedAt(row - 1)), row <= changes.Position()};
}

} // namespace vardenix
