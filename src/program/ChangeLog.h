#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "program/ChangeJournal.h"
#include "program/FeatureSet.h"
#include "program/MapFileRecord.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vardenix {

// The papers of the theater that is open; borrowed.
struct Papers {
    vardenix::Terrain& Terrain;
    vardenix::Catalogue& Catalogue;
    vardenix::MapFileRecord& MapFileRecord;
    FeatureSet& Features;
};

class ChangeLog;

// Hears of every change that the log has taken in, and of every one that it has taken
// back or brought again; the papers are as they are meant by then.
class ChangeFollower {
public:
    ChangeFollower() = default;
    ChangeFollower(const ChangeFollower&) = delete;
    ChangeFollower& operator=(const ChangeFollower&) = delete;
    // The log forgets it.
    virtual ~ChangeFollower();

    virtual void Recorded(const Change& /*change*/) {}
    virtual void Walked(const Change& change, Walk walk) = 0;
    // The paper is on the disk as it is now, saved or loaded.
    virtual void Saved(Paper /*paper*/) {}

private:
    friend class ChangeLog;
    ChangeLog* followed_ = nullptr;
};

// Keeps the stacks of single edits, which go along with every step through the log.
class StackKeeper {
public:
    StackKeeper() = default;
    StackKeeper(const StackKeeper&) = delete;
    StackKeeper& operator=(const StackKeeper&) = delete;
    virtual ~StackKeeper() = default;

    using Stacks = std::shared_ptr<const void>; // never changed once it is handed out

    virtual Stacks StacksNow() const = 0;
    virtual void TakeStacks(const Stacks& stacks) = 0;
    // The log has walked over a single edit.
    virtual void MovePast(const Change& edit, Walk walk) = 0;
};

// Every change of every paper, in the order in which they were made, with the way back
// and the way on; and what of it is not on the disk. Whoever changes a paper tells the
// log: by a Recording round a command, or by Add with what it knows of its work.
//
// What a change has made of a paper has a revision, a number of its own that comes back
// when a walk leads there again. Unsaved is a paper whose revision is another than that
// of its file.
class ChangeLog {
public:
    // What the changes may take in memory together. Beyond that those that are farthest
    // from where the log stands are left to the journal alone, as far as it has them;
    // then the oldest go. The newest stays whatever it takes.
    static constexpr size_t MostBytes = size_t{64} << 20;

    explicit ChangeLog(const Papers& papers) : papers_(papers) {}
    ~ChangeLog();
    ChangeLog(const ChangeLog&) = delete;
    ChangeLog& operator=(const ChangeLog&) = delete;

    // Borrowed for as long as it lives; told in the order of their coming. One that
    // follows a log already leaves that.
    void Follow(ChangeFollower& follower);
    // Null for nobody.
    void KeepStacks(StackKeeper* keeper) { keeper_ = keeper; }

    // Null for nobody; borrowed.
    void KeepJournal(ChangeJournal* journal) { journal_ = journal; }

    // A change that has been made just now, nothing for an empty one. What was taken
    // back before it is gone for good. One that has a time keeps it.
    void Add(Change change);
    // Carries out a change that another run of the program has made, and adds it; the
    // followers hear of it as of one that is brought again. Error 9 and so on, with
    // nothing changed, where it does not fit.
    void Apply(Change change);
    // More belongs to the newest change, which is not taken back: a stroke goes on.
    void Grow(std::vector<TileRun> runs, const std::string& name);
    void Grow(std::vector<HeightRun> runs, const std::string& name);

    size_t Count() const { return entries_.size(); }
    // How many of them are in force; the others have been taken back.
    size_t Position() const { return position_; }
    // Name, time and papers; what it has changed of these may be in the journal alone.
    const Change& At(size_t index) const { return entries_.at(index).What; }
    // With all that it has changed, which is in memory until the log is used again.
    // Errors of the journal's reading.
    const Change& Whole(size_t index);
    // Bytes that the changes take in memory.
    size_t Bytes() const { return bytes_; }
    // What the next step back, or on, would walk over; null where there is none, and
    // while a Recording is under way.
    const Change* NextBack() const;
    const Change* NextAgain() const;

    // One step. Errors 9 and 481 and so on where a paper cannot be as it was, or the
    // journal cannot be read; it stays as it is then. Error 5 where there is no such
    // step.
    void Back();
    void Again();

    uint64_t Revision(Paper paper) const { return Now()[Index(paper)]; }
    uint64_t RevisionOnDisk(Paper paper) const { return onDisk_[Index(paper)]; }
    bool Unsaved(Paper paper) const {
        return paper != Paper::Features && Revision(paper) != RevisionOnDisk(paper);
    }
    // Also heights that wait behind other ones, and differ from their own file.
    bool AnyUnsaved() const;
    // The paper is on the disk as it is now.
    void Saved(Paper paper);
    // Of the papers that a change has changed, those that have been saved as it left
    // them.
    std::vector<Paper> SavedAt(size_t index) const;
    // The newest change has led the paper to a state that has a revision already.
    void SetRevision(Paper paper, uint64_t revision);
    // The paper has become another in a way that no change tells, so that none leads past
    // it any more: all are forgotten.
    void ChangedOtherwise(Paper paper);
    // Another file has been loaded in its place: no way leads past its changes any more,
    // and nothing of it is unsaved. What came after them stays.
    void LoadedAnew(Paper paper);
    // For a journal that begins anew: what only the old one has is forgotten, with all
    // that it leads to, and every other change is added to the new one.
    void ForgetAway();
    void JournalAgain();

private:
    friend class ChangeFollower;
    friend class Recording;

    using Revisions = std::array<uint64_t, AllPapers.size()>;
    struct Entry {
        Change What;
        Revisions After{};
        // Round a change that is no single edit; null where it left the stacks alone.
        StackKeeper::Stacks StacksBefore{};
        StackKeeper::Stacks StacksAfter{};
        // Of its parts in the journal, in their order; empty where it lacks one.
        std::vector<ChangeJournal::Place> Places{};
    };

    static size_t Index(Paper paper) { return static_cast<size_t>(paper); }
    const Revisions& Now() const {
        return position_ == 0 ? base_ : entries_[position_ - 1].After;
    }
    Revisions& Now() { return position_ == 0 ? base_ : entries_[position_ - 1].After; }
    Revisions RevisionsAfter(const Change& change);
    void Put(Entry entry);
    void MoveStacks(const Entry& entry, Walk walk) const;
    void Journal(Entry& entry);
    void SwapOnDisk(const Change& change);
    void KeepWithinMemory();
    enum class Putting { Done, Waits, None };
    Putting PutAway(Entry& entry);
    Putting PutFarthestAway();
    // In force.
    void DropOldest();
    void DropBehind(size_t count);
    bool HeightsWait() const;
    Change& Newest();
    void HasGrown(Change more);
    void Forget(Paper paper);
    void TellSaved(Paper paper);

    Papers papers_;
    std::vector<ChangeFollower*> followers_;
    StackKeeper* keeper_ = nullptr;
    ChangeJournal* journal_ = nullptr;
    Revisions base_{}; // before the first change
    std::deque<Entry> entries_;
    size_t bytes_ = 0;   // of all entries
    size_t settled_ = 0; // so many of the oldest can give nothing to the journal
    size_t position_ = 0;
    int recordings_ = 0; // under way
    uint64_t lastRevision_ = 0;
    Revisions onDisk_{};
    std::set<uint64_t> saved_; // revisions that have been on the disk
};

// Notes what a command makes of some papers, from here to its end, however it ends. What
// it does not know of its work is found by comparison.
class Recording {
public:
    // The log is borrowed and outlives it. Error 7 where memory lacks, before anything is
    // changed.
    Recording(ChangeLog& log, std::vector<Paper> which, std::string name);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording();

    // For a command that knows better what it has done.
    void Rename(std::string name) { name_ = std::move(name); }
    // Another file of heights has been loaded in the place of `before`.
    void Replaced(ElevationLayer before);
    // The command has replaced pictures; null for none.
    void KeepPictures(std::shared_ptr<FileSwap> pictures) {
        pictures_ = std::move(pictures);
    }

private:
    Change Made() const;
    bool Watches(Paper paper) const;

    ChangeLog& log_;
    Papers papers_;
    std::vector<Paper> which_;
    std::string name_;
    StackKeeper::Stacks stacks_;
    std::vector<TerrainPost> posts_;
    std::vector<int16_t> heights_;
    std::vector<std::byte> catalogue_;
    vardenix::MapFileRecord mapFile_{};
    std::shared_ptr<const FeatureSet> features_;
    std::shared_ptr<WaitingHeights> otherHeights_;
    std::shared_ptr<FileSwap> pictures_;
};

} // namespace vardenix
