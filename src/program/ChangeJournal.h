#pragma once

#include "program/Change.h"

namespace vardenix {

enum class Walk { Back, Again };

// Writes down what happens to the log of changes, as it happens, so that it can be told
// again. Nothing is thrown: what cannot be written down costs nobody his work.
class ChangeJournal {
public:
    ChangeJournal() = default;
    ChangeJournal(const ChangeJournal&) = delete;
    ChangeJournal& operator=(const ChangeJournal&) = delete;
    virtual ~ChangeJournal() = default;

    // The newest change; what was taken back before it is gone for good.
    virtual void Added(const Change& change) noexcept = 0;
    // More belongs to the newest change, which has the name of `more` now.
    virtual void Grown(const Change& more) noexcept = 0;
    virtual void Walked(Walk walk) noexcept = 0;
    // The paper is on the disk as it is now, in its own file or in a copy; or it has been
    // read from its file.
    virtual void Saved(Paper paper) noexcept = 0;
    virtual void Loaded(Paper paper) noexcept = 0;
    // The newest change has led the paper to a state that was there before.
    virtual void Revised() noexcept = 0;
    // The paper has become another in a way that no change tells.
    virtual void Lost() noexcept = 0;
};

} // namespace vardenix
