#pragma once

#include "files/GrowingFile.h"
#include "program/ChangeJournal.h"
#include "program/ProgramState.h"
#include "recovery/LogRecords.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace vardenix {

// Keeps the log of changes of the theater that is open in a file of the user's own data,
// from the first change to the end of the run, for another run to bring back what was
// lost. The file goes with this object when nothing is unsaved or nobody wants it.
class LogKeeper : public ChangeJournal {
public:
    // The most that a log may take of the disk, in bytes.
    static constexpr uint64_t MostBytes = uint64_t{1} << 30;

    // Follows the state's log, both borrowed. `folder` is made with the first change; an
    // empty one keeps nothing.
    LogKeeper(ProgramState& state, std::string folder, uint64_t most = MostBytes);
    ~LogKeeper() override;

    // The user wants to lose what is unsaved.
    void GiveUp();
    // Waits until all is written that was told so far.
    void Drain();
    // Why no more is kept, as a sentence; empty while all is well, and when one was told.
    std::string Complaint();

    Place Added(const Change& change) noexcept override;
    Place Grown(const Change& more) noexcept override;
    void Walked(const Change& change, Walk walk) noexcept override;
    void Saved(Paper paper) noexcept override;
    void Loaded(Paper paper) noexcept override;
    void Revised() noexcept override;
    void Lost() noexcept override;
    Kept KeptAt(Place place) const noexcept override;
    Change ReadAgain(Place place) const override;

private:
    template <typename Work>
    void Try(Work work) noexcept;
    bool Keeps() const { return !folder_.empty() && !stopped_; }
    void Begin();
    void BeginAgain();
    void Stop(const std::string& why);
    LogRecord RecordOf(RecordKind kind) const;
    Place Write(const LogRecord& record, const Change* change = nullptr);
    LogRecord RecordOfAdded(const Change& change);
    void WriteSaved(uint8_t papers);

    ProgramState& state_;
    std::string folder_;
    uint64_t most_;
    std::unique_ptr<GrowingFile> file_;
    BasedOn files_; // as the log tells them
    // While all is written anew: the heights that are in use after each change.
    std::deque<HeightsFiles> heightsAgain_;
    bool stopped_ = false; // until everything is saved
    bool complained_ = false;
    std::string complaint_;
};

} // namespace vardenix
