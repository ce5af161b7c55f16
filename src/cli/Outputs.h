#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// A usage error of the argument `name` when a command's output `path` would replace one
// of the files `kept`, by whatever name or link, or is called as the files are that only
// a theater has: levels, heights, catalogue, theater.map, tile pictures. `others` are
// further endings, upper case with their dot, that the output may not have.
void RequireOutput(const std::string& name, const std::string& path,
                   const std::vector<std::string>& kept,
                   const std::vector<std::string_view>& others);

// What a text may not replace either: the small files that are made beside a theater.
std::vector<std::string_view> MadeFiles();

} // namespace vardenix
