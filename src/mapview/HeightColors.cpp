#include "mapview/HeightColors.h"

#include <cstddef>

namespace vardenix {
namespace {

bool IsRow(const HeightColorRows& rows, int32_t selected) {
    return selected >= 0 && static_cast<size_t>(selected) < rows.size();
}

} // namespace

uint32_t GetHeightColor(const Configuration& settings, int32_t elevation) {
    if (!settings.UseSingleHeightColor) {
        for (const HeightColorEntry& entry : settings.HeightColorList)
            if (entry.Min <= elevation && elevation <= entry.Max)
                return entry.Color;
    }
    return settings.HeightDefaultColor;
}

bool AddHeightColor(HeightColorRows& rows, int32_t selected,
                    const HeightColorEntry& entry) {
    if (rows.empty()) {
        rows.push_back(entry);
        return true;
    }
    if (!IsRow(rows, selected))
        return false;
    rows.insert(rows.begin() + selected + 1, entry);
    return true;
}

bool ChangeHeightColor(HeightColorRows& rows, int32_t selected,
                       const HeightColorEntry& entry) {
    if (!IsRow(rows, selected))
        return false;
    rows[static_cast<size_t>(selected)] = entry;
    return true;
}

bool DeleteHeightColor(HeightColorRows& rows, int32_t selected) {
    if (!IsRow(rows, selected))
        return false;
    rows.erase(rows.begin() + selected);
    return true;
}

} // namespace vardenix
