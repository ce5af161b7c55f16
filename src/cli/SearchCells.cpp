#include "cli/SearchCells.h"

#include <algorithm>
#include <array>

namespace vardenix {

const char* const SearchFieldList = "tile, elevation, palette, x1 or x2";

namespace {

struct FieldWord {
    const char* Word;
    std::string SearchCell::*Text;
};
constexpr std::array<FieldWord, 5> FieldWords{{{"tile", &SearchCell::CellTile},
                                               {"elevation", &SearchCell::CellElevation},
                                               {"palette", &SearchCell::CellPalette},
                                               {"x1", &SearchCell::CellX1},
                                               {"x2", &SearchCell::CellX2}}};
// "elevation=>200"; false when it is none.
bool TakeCondition(std::string_view text, SearchCell& cell) {
    const size_t equals = std::min(text.find('='), text.size());
    const auto field = SearchFieldOf(text.substr(0, equals));
    if (equals == text.size() || field == nullptr)
        return false;
    const std::string_view condition = text.substr(equals + 1);
    const bool hasSign =
        !condition.empty() &&
        std::string_view("!<>").find(condition[0]) != std::string_view::npos;
    if (!IsWhole(condition.substr(hasSign ? 1 : 0)))
        return false;
    std::string& kept = cell.*field;
    if (!kept.empty())
        throw UsageError("--cell", std::string(text.substr(0, equals)) +
                                       " is given twice for one post");
    kept = condition;
    return true;
}

// "1:elevation=>200,tile=5".
void TakeCell(const std::string& text, SearchPattern& pattern) {
    bool good = text.size() > 2 && text[0] >= '0' && text[0] <= '8' && text[1] == ':';
    std::string_view rest = good ? std::string_view(text).substr(2) : "";
    while (good && !rest.empty()) {
        const size_t comma = std::min(rest.find(','), rest.size());
        good = TakeCondition(rest.substr(0, comma),
                             pattern[static_cast<size_t>(text[0] - '0')]);
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    if (!good)
        throw UsageError(
            "--cell", "'" + text + "' is not N:FIELD=CONDITION, N from 0 to 8, FIELD " +
                          SearchFieldList +
                          ", CONDITION a whole number with !, < or > in front or none");
}

} // namespace

void AddCells(Command& command, std::vector<std::string>& cells) {
    command.Texts("--cell", cells,
                  "Condition N:FIELD=CONDITION on the post itself (0) or a neighbour "
                  "(1 above, then clockwise to 8): 0:tile=5, 1:elevation=>200, 3:x1=!0");
}

SearchPattern PatternOfCells(const std::vector<std::string>& cells) {
    SearchPattern pattern;
    for (const std::string& cell : cells)
        TakeCell(cell, pattern);
    return pattern;
}

std::string SearchCell::*SearchFieldOf(std::string_view word) {
    const auto found = std::ranges::find(FieldWords, word, &FieldWord::Word);
    return found == FieldWords.end() ? nullptr : found->Text;
}

bool IsWhole(std::string_view text) {
    if (text.starts_with('-'))
        text.remove_prefix(1);
    return !text.empty() &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace vardenix
