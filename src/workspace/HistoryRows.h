#pragma once

#include "program/ChangeLog.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vardenix {

// The rows of the history: what was before all changes that the log has, and each change.
// Row and position in the log are one number. Texts are UTF-8.
struct HistoryRow {
    std::string Time; // "09:05:07"
    std::string Name;
    std::string Papers; // "L2, BIN"
    std::string Saved;  // those of them that were saved as the change left them
    bool InForce = true;
};

inline size_t HistoryRows(const ChangeLog& changes) { return changes.Count() + 1; }
HistoryRow HistoryRowAt(const ChangeLog& changes, size_t row);

// "L2, BIN", as the question on leaving calls them.
std::string NamesOf(const std::vector<Paper>& papers);

} // namespace vardenix
