#include "builder/Fartiles.h"

namespace vardenix {

FartileRecord FartileList::At(int32_t index) const {
    const Entry& entry = entries_.at(static_cast<size_t>(index));
    return {std::span(serials_).subspan(entry.First, static_cast<size_t>(entry.Count)),
            entry.Level};
}

void FartileList::Add(std::span<const int32_t> serials, int32_t level) {
    entries_.push_back({serials_.size(), static_cast<int32_t>(serials.size()), level});
    serials_.insert(serials_.end(), serials.begin(), serials.end());
}

void FartileList::Clear() { *this = {}; }

void FartileList::Reserve(size_t records, size_t serials) {
    entries_.reserve(records);
    serials_.reserve(serials);
}

} // namespace vardenix
