#include "cli/Outputs.h"

#include "cli/CommandLine.h"
#include "files/FileNames.h"
#include "texts/Cutting.h"

#include <algorithm>

namespace vardenix {

namespace {

bool IsLevel(std::string_view ending) {
    return ending.size() == 3 && (ending[1] == 'L' || ending[1] == 'O') &&
           ending[2] >= '0' && ending[2] <= '5';
}

bool IsAmong(const std::vector<std::string_view>& endings, std::string_view ending) {
    return std::find(endings.begin(), endings.end(), ending) != endings.end();
}

} // namespace

void RequireOutput(const std::string& name, const std::string& path,
                   const std::vector<std::string>& kept,
                   const std::vector<std::string_view>& others) {
    const std::string file = UpperCase(AfterLastSlash(path));
    const size_t dot = file.rfind('.');
    const std::string ending = dot == std::string::npos ? "" : file.substr(dot);
    if (IsLevel(ending) || IsAmong({".ELV", ".BIN", ".MAP", ".DDS", ".INDEX"}, ending) ||
        IsAmong(others, ending) ||
        std::any_of(kept.begin(), kept.end(),
                    [&path](const std::string& one) { return SameFile(one, path); }))
        throw UsageError(name, path + " is a file of a theater; name another one");
}

std::vector<std::string_view> MadeFiles() {
    return {".MEA", ".TC", ".TM", ".TDF", ".LST", ".EXP", ".TGA", ".INI"};
}

} // namespace vardenix
