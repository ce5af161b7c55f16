#pragma once

#include "support/TestFolder.h"

#include <filesystem>
#include <map>
#include <string>

namespace vardenix::tests {

using Files = std::map<std::string, std::string>;

// The names and bytes of a folder's files; folders stand with a slash behind them.
inline Files FilesIn(const std::string& folder) {
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (entry.is_directory())
            files[name + "/"] = "";
        else
            files[name] = Slurp(entry.path());
    }
    return files;
}

} // namespace vardenix::tests
