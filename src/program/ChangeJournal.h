#pragma once

#include "program/Change.h"

#include <cstdint>

namespace vardenix {

enum class Walk { Back, Again };

// Writes down what happens to the log of changes, as it happens, so that it can be told
// again, and the log need not keep all of it in memory. Nothing is thrown but by what
// reads: what cannot be written down costs nobody his work.
class ChangeJournal {
public:
    ChangeJournal() = default;
    ChangeJournal(const ChangeJournal&) = delete;
    ChangeJournal& operator=(const ChangeJournal&) = delete;
    virtual ~ChangeJournal() = default;

    // Where something was written down; 0 for nowhere.
    using Place = uint64_t;

    // The newest change; what was taken back before it is gone for good.
    virtual Place Added(const Change& change) noexcept = 0;
    // More belongs to the newest change, which has the name of `more` now.
    virtual Place Grown(const Change& more) noexcept = 0;
    virtual void Walked(const Change& change, Walk walk) noexcept = 0;
    // The paper is on the disk as it is now; or it has been read from its file.
    virtual void Saved(Paper paper) noexcept = 0;
    virtual void Loaded(Paper paper) noexcept = 0;
    // The newest change has led the paper to a state that was there before.
    virtual void Revised() noexcept = 0;
    // The paper has become another in a way that no change tells.
    virtual void Lost() noexcept = 0;

    // Whether what was written down there can be read by now.
    enum class Kept { No, NotYet, Yes };
    virtual Kept KeptAt(Place place) const noexcept = 0;
    // What was written down there, but for pictures, features and other heights. Errors
    // of reading; 13 where it is damaged.
    virtual Change ReadAgain(Place place) const = 0;
};

} // namespace vardenix
