#include "world/ClassTable.h"

#include "files/BinaryReader.h"
#include "texts/RuntimeError.h"
#include "texts/TextLines.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

namespace vardenix {

namespace {

constexpr uint64_t LongestTable = uint64_t{1} << 20; // bytes

std::vector<std::string_view> WordsOf(std::string_view line) {
    constexpr std::string_view gaps = " \t";
    line = line.substr(0, line.find('#'));
    std::vector<std::string_view> words;
    for (size_t at = line.find_first_not_of(gaps); at != std::string_view::npos;
         at = line.find_first_not_of(gaps, at)) {
        const size_t end = std::min(line.find_first_of(gaps, at), line.size());
        words.push_back(line.substr(at, end - at));
        at = end;
    }
    return words;
}

std::optional<int32_t> NumberIn(std::string_view word) {
    int32_t number = 0;
    const auto [end, error] =
        std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size())
        return std::nullopt;
    return number;
}

std::optional<ClassRule> RuleOf(const std::vector<std::string_view>& words) {
    if (words.size() == 2 && words[1] == "leave")
        return ClassRule{};
    if (words.size() != 3 || (words[1] != "ground" && words[1] != "tile"))
        return std::nullopt;
    const auto tile = NumberIn(words[2]);
    if (!tile || *tile < 0)
        return std::nullopt;
    return ClassRule{words[1] == "tile" ? ClassRule::Way::Tile : ClassRule::Way::Ground,
                     *tile};
}

} // namespace

ClassTable ParseClassTable(std::string_view text, const std::string& path) {
    ClassTable table;
    std::string_view line;
    for (int number = 1; NextLine(text, line); ++number) {
        const std::vector<std::string_view> words = WordsOf(line);
        if (words.empty())
            continue;
        const auto where = path + ", line " + std::to_string(number) + ": ";
        const auto covered = NumberIn(words[0]);
        const auto rule = RuleOf(words);
        if (!covered || !rule)
            throw RuntimeError(ErrorNumber::InvalidCall,
                               where +
                                   "expected the number of a class and \"ground "
                                   "TILE\", \"tile NUMBER\" or \"leave\", found \"" +
                                   std::string(line) + "\"");
        if (!table.emplace(*covered, *rule).second)
            throw RuntimeError(ErrorNumber::InvalidCall, where + "class " +
                                                             std::to_string(*covered) +
                                                             " was told before");
    }
    if (table.empty())
        throw RuntimeError(ErrorNumber::InvalidCall, path + " tells of no class");
    return table;
}

ClassTable ReadClassTable(const std::string& path) {
    const FileBytes file = ReadWholeFile(path, LongestTable);
    return ParseClassTable({reinterpret_cast<const char*>(file.data()), file.size()},
                           path);
}

} // namespace vardenix
