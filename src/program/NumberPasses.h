#pragma once

#include "catalogue/TileRenumbering.h"
#include "program/ChangeLog.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace vardenix {

// Which tile numbers level 2 has: those of the catalogue, or older ones that an edit of
// the catalogue has left behind. Every pass over level 2 begins a numbering, which both
// papers have from then on; a walk through the log, or a reading of the file, leads a
// paper back to the one that it had. Edits that level 2 was not to follow begin none.
class NumberPasses : private ChangeFollower {
public:
    // The log is borrowed and outlives it.
    explicit NumberPasses(ChangeLog& changes);

    // A pass has given level 2 the numbers of an edit, both within one Recording.
    // `changed`: posts have others now.
    void Passed(const TileRenumbering& numbers, bool changed);
    // Level 2 is what its file has, which is a change in the log already and not yet told
    // to be saved.
    void LevelTwoReadAnew();
    // Level 2 has been given what it lacked, which is a change in the log already.
    void CaughtUp();

    // Level 2 has the numbers of the catalogue, in memory.
    bool Fits() const;
    // The passes that level 2 lacks, in their order; empty also where none lead to the
    // numbers of the catalogue, which a walk has taken behind those of level 2, and where
    // one is not known.
    std::vector<TileRenumbering> Missing() const;
    // The paper has other numbers in memory than on the disk.
    bool Unsaved(Paper paper) const;

private:
    struct Numbering {
        size_t Before = 0; // the one that it was made of
        TileRenumbering Numbers{};
        bool Changed = false;
        uint64_t SameFor = 0; // the revision of level 2 whose posts it leaves as they are
        bool Known = true;    // else its numbers are not: a run before this one made it
    };
    // From a revision on, until another row says otherwise; 0 are those from before all
    // passes.
    using Rows = std::vector<std::pair<uint64_t, size_t>>;

    void Recorded(const Change& change) override;
    void Walked(const Change& change, Walk walk) override;

    static size_t Index(Paper paper) { return static_cast<size_t>(paper); }
    size_t NumberingAt(Paper paper, uint64_t revision) const;
    void SetNow(Paper paper, size_t numbering);
    // Those after `from` up to `to`; nothing when the one does not lead to the other.
    std::optional<std::vector<size_t>> Path(size_t from, size_t to) const;
    std::optional<std::vector<size_t>> MissingPath() const;

    ChangeLog& changes_;
    std::vector<Numbering> numberings_{{}};
    std::array<Rows, AllPapers.size()> rows_;
    std::array<size_t, AllPapers.size()> now_{};
    std::optional<size_t> begun_; // by a pass that is being recorded
};

} // namespace vardenix
