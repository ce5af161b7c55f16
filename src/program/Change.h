#pragma once

#include "files/FileSwap.h"
#include "levels/PostDelta.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "program/FeatureSet.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// What a user works on, each with a file of its own; features are never saved as a whole,
// and so are never unsaved.
enum class Paper : uint8_t { Level2, Heights, Catalogue, MapFile, Features };
inline constexpr std::array AllPapers{Paper::Level2, Paper::Heights, Paper::Catalogue,
                                      Paper::MapFile, Paper::Features};

constexpr Paper PaperOf(Layer layer) {
    return layer == Layer::Heights ? Paper::Heights : Paper::Level2;
}

constexpr uint8_t PaperBit(Paper paper) {
    return static_cast<uint8_t>(1U << static_cast<unsigned>(paper));
}

// One stretch of bytes that another one takes the place of.
struct ByteDelta {
    size_t Offset = 0;
    std::vector<std::byte> Old;
    std::vector<std::byte> New;

    bool Empty() const { return Old.empty() && New.empty(); }
    size_t Bytes() const { return Old.size() + New.size(); }
};

// The shortest stretch that makes `after` out of `before`.
ByteDelta ChangedBetween(std::span<const std::byte> before,
                         std::span<const std::byte> after);
// `bytes` with the stretch put in, or taken out again. Error 9 where it does not fit.
std::vector<std::byte> WithNew(std::span<const std::byte> bytes, const ByteDelta& delta);
std::vector<std::byte> WithOld(std::span<const std::byte> bytes, const ByteDelta& delta);

struct FeatureDelta {
    std::shared_ptr<const FeatureSet> Old;
    std::shared_ptr<const FeatureSet> New;
};

// Another file of heights in the place of the one that was loaded: the one that is not in
// use waits here, and a walk over the change swaps the two.
struct WaitingHeights {
    ElevationLayer Layer;
    uint64_t OnDisk = 0; // its revision there
};

// One command of the user's: what it is called, and what it has changed of each paper.
struct Change {
    std::string Name; // "Paint 25 posts", UTF-8
    std::chrono::system_clock::time_point Time{};
    PostDelta Posts{};
    HeightDelta Heights{};
    ByteDelta Catalogue{}; // of the bytes of Texture.bin
    ByteDelta MapFile{};   // of the bytes of theater.map
    std::optional<FeatureDelta> Features{};
    // Pictures that were replaced at once, which every step over the change swaps. Null
    // for none.
    std::shared_ptr<FileSwap> Pictures{};
    std::shared_ptr<WaitingHeights> OtherHeights{};
    uint64_t SingleEdit = 0; // of the stacks of single edits, by its number; 0 for none
    // Papers, by their bits, of which what was changed is not here: the log's journal
    // alone has it (ChangeLog::Whole).
    uint8_t Away = 0;

    bool Touches(Paper paper) const;
    bool Empty() const;
    // In memory, features apart.
    size_t Bytes() const;
    // Posts, heights, catalogue and theater.map among them, which a journal can have.
    size_t DeltaBytes() const;
};

} // namespace vardenix
