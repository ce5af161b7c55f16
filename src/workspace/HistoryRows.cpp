#include "workspace/HistoryRows.h"

#include "platform/Clock.h"

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
