#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vardenix {

// Numbers of tiles, each once, in the order in which they were met.
class MetTiles {
public:
    // Of a catalogue with so many tiles.
    explicit MetTiles(size_t tiles) : there_(tiles) {}

    void Add(int32_t tile) {
        if (there_[static_cast<size_t>(tile)])
            return;
        all_.push_back(tile);
        there_[static_cast<size_t>(tile)] = true;
    }
    // Forgets what was added after there were `count`.
    void CutTo(size_t count) {
        for (; all_.size() > count; all_.pop_back())
            there_[static_cast<size_t>(all_.back())] = false;
    }
    const std::vector<int32_t>& All() const { return all_; }

private:
    std::vector<bool> there_; // by number
    std::vector<int32_t> all_;
};

} // namespace vardenix
