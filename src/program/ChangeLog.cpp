#include "program/ChangeLog.h"

#include "catalogue/TextureBinFile.h"
#include "catalogue/TileCheck.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vardenix {

namespace {

std::span<const std::byte> BytesOf(const MapFileRecord& record) {
    return std::as_bytes(std::span(&record, 1));
}

// Arrays of another size are another paper.
template <typename Value>
ChangedValues<Value> Between(const std::vector<Value>& before,
                             std::span<const Value> after) {
    if (before.size() != after.size())
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a change from " + std::to_string(before.size()) + " to " +
                               std::to_string(after.size()) + " values");
    return ChangedBetween(std::span(before), after);
}

// What can be refused comes before anything is changed.
void WalkPapers(const Papers& papers, const Change& change, Walk walk) {
    const bool back = walk == Walk::Back;
    TextureBin bin;
    TileLookup lookup;
    // An intake of pictures for a tile of the same name leaves the catalogue's bytes
    // alone.
    const bool catalogue = change.Touches(Paper::Catalogue) || change.Pictures;
    if (catalogue) {
        const std::vector<std::byte> now = BytesOf(papers.Catalogue.Bin);
        bin = ParseBinFile(back ? WithOld(now, change.Catalogue)
                                : WithNew(now, change.Catalogue),
                           papers.Catalogue.BinPath);
        lookup = LookupOf(bin, papers.Catalogue.DDSFolder);
    }
    std::vector<std::byte> map;
    if (change.Touches(Paper::MapFile)) {
        const auto now = BytesOf(papers.MapFileRecord);
        map = back ? WithOld(now, change.MapFile) : WithNew(now, change.MapFile);
        if (map.size() != sizeof(MapFileRecord))
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                               "a change of theater.map that changes its length");
    }
    if (change.Pictures)
        change.Pictures->Swap();
    if (change.OtherHeights)
        std::swap(papers.Terrain.Elevations, change.OtherHeights->Layer);
    if (back) {
        WriteOld(papers.Terrain.LxArr, change.Posts);
        WriteOld(papers.Terrain.Elevations.L0ElvArr, change.Heights);
    } else {
        WriteNew(papers.Terrain.LxArr, change.Posts);
        WriteNew(papers.Terrain.Elevations.L0ElvArr, change.Heights);
    }
    if (!map.empty())
        std::memcpy(&papers.MapFileRecord, map.data(), map.size());
    if (change.Features)
        papers.Features = back ? *change.Features->Old : *change.Features->New;
    if (catalogue) {
        papers.Catalogue.Bin = std::move(bin);
        papers.Catalogue.Lookup = std::move(lookup);
        CountTileUse(papers.Terrain, papers.Catalogue.Lookup);
    }
}

// What a part of a change adds to the parts before it, which strokes grow by.
void AppendPart(Change& whole, Change part) {
    const auto append = [](auto& runs, const auto& more) {
        runs.insert(runs.end(), more.begin(), more.end());
    };
    append(whole.Posts.Runs, part.Posts.Runs);
    append(whole.Heights.Runs, part.Heights.Runs);
    const auto take = [](auto& to, auto& from) {
        if (!from.Empty())
            to = std::move(from);
    };
    take(whole.Posts.Values, part.Posts.Values);
    take(whole.Heights.Values, part.Heights.Values);
    take(whole.Catalogue, part.Catalogue);
    take(whole.MapFile, part.MapFile);
}

void MoveDeltas(Change& from, Change& to) {
    to.Posts = std::exchange(from.Posts, {});
    to.Heights = std::exchange(from.Heights, {});
    to.Catalogue = std::exchange(from.Catalogue, {});
    to.MapFile = std::exchange(from.MapFile, {});
}

} // namespace

ChangeFollower::~ChangeFollower() {
    if (followed_ != nullptr)
        std::erase(followed_->followers_, this);
}

ChangeLog::~ChangeLog() {
    for (ChangeFollower* follower : followers_)
        follower->followed_ = nullptr;
}

void ChangeLog::Follow(ChangeFollower& follower) {
    if (follower.followed_ != nullptr)
        std::erase(follower.followed_->followers_, &follower);
    follower.followed_ = this;
    followers_.push_back(&follower);
}

ChangeLog::Revisions ChangeLog::RevisionsAfter(const Change& change) {
    Revisions revisions = Now();
    for (const Paper paper : AllPapers)
        if (change.Touches(paper))
            revisions[Index(paper)] = ++lastRevision_;
    return revisions;
}

void ChangeLog::Add(Change change) { Put({.What = std::move(change)}); }

void ChangeLog::Put(Entry entry) {
    if (entry.What.Empty())
        return;
    if (entry.What.Time == Change{}.Time)
        entry.What.Time = std::chrono::system_clock::now();
    entry.After = RevisionsAfter(entry.What);
    DropBehind(position_);
    bytes_ += entry.What.Bytes();
    entries_.push_back(std::move(entry));
    ++position_;
    Journal(entries_.back());
    KeepWithinMemory();
    for (ChangeFollower* follower : followers_)
        follower->Recorded(entries_.back().What);
}

void ChangeLog::Apply(Change change) {
    if (change.Empty())
        return;
    WalkPapers(papers_, change, Walk::Again);
    Add(std::move(change));
    for (ChangeFollower* follower : followers_)
        follower->Walked(entries_.back().What, Walk::Again);
}

Change& ChangeLog::Newest() {
    if (position_ == 0 || position_ != entries_.size())
        throw RuntimeError(ErrorNumber::InvalidCall, "no change to go on with");
    Whole(position_ - 1);
    return entries_.back().What;
}

void ChangeLog::HasGrown(Change more) {
    Entry& entry = entries_.back();
    bytes_ += more.Name.size() - entry.What.Name.size();
    entry.What.Name = more.Name;
    --position_;
    entry.After = RevisionsAfter(entry.What);
    ++position_;
    const ChangeJournal::Place place = journal_ == nullptr ? 0 : journal_->Grown(more);
    if (place == 0)
        entry.Places.clear();
    else if (!entry.Places.empty())
        entry.Places.push_back(place);
    KeepWithinMemory();
    for (ChangeFollower* follower : followers_)
        follower->Recorded(entry.What);
}

void ChangeLog::Grow(std::vector<TileRun> runs, const std::string& name) {
    auto& all = Newest().Posts.Runs;
    bytes_ += runs.size() * sizeof(TileRun);
    all.insert(all.end(), runs.begin(), runs.end());
    HasGrown({.Name = name, .Posts = {.Runs = std::move(runs), .Values = {}}});
}

void ChangeLog::Grow(std::vector<HeightRun> runs, const std::string& name) {
    auto& all = Newest().Heights.Runs;
    bytes_ += runs.size() * sizeof(HeightRun);
    all.insert(all.end(), runs.begin(), runs.end());
    HasGrown({.Name = name, .Heights = {.Runs = std::move(runs), .Values = {}}});
}

const Change* ChangeLog::NextBack() const {
    return position_ == 0 || recordings_ > 0 ? nullptr : &entries_[position_ - 1].What;
}

const Change* ChangeLog::NextAgain() const {
    return position_ == entries_.size() || recordings_ > 0 ? nullptr
                                                           : &entries_[position_].What;
}

void ChangeLog::Back() {
    if (NextBack() == nullptr)
        throw RuntimeError(ErrorNumber::InvalidCall, "nothing to take back");
    Whole(position_ - 1);
    const Entry& entry = entries_[position_ - 1];
    WalkPapers(papers_, entry.What, Walk::Back);
    --position_;
    SwapOnDisk(entry.What);
    MoveStacks(entry, Walk::Back);
    if (journal_ != nullptr)
        journal_->Walked(entry.What, Walk::Back);
    for (ChangeFollower* follower : followers_)
        follower->Walked(entry.What, Walk::Back);
}

void ChangeLog::Again() {
    if (NextAgain() == nullptr)
        throw RuntimeError(ErrorNumber::InvalidCall, "nothing to bring again");
    Whole(position_);
    const Entry& entry = entries_[position_];
    WalkPapers(papers_, entry.What, Walk::Again);
    ++position_;
    SwapOnDisk(entry.What);
    MoveStacks(entry, Walk::Again);
    if (journal_ != nullptr)
        journal_->Walked(entry.What, Walk::Again);
    for (ChangeFollower* follower : followers_)
        follower->Walked(entry.What, Walk::Again);
}

void ChangeLog::Journal(Entry& entry) {
    entry.Places.clear();
    if (journal_ == nullptr)
        return;
    if (const ChangeJournal::Place place = journal_->Added(entry.What); place != 0)
        entry.Places.push_back(place);
}

const Change& ChangeLog::Whole(size_t index) {
    while (bytes_ > MostBytes && PutFarthestAway() == Putting::Done) {
    }
    Entry& entry = entries_.at(index);
    if (entry.What.Away == 0)
        return entry.What;
    if (journal_ == nullptr)
        throw RuntimeError(ErrorNumber::FileNotFound, "the log of changes has gone");
    Change whole;
    for (const ChangeJournal::Place place : entry.Places)
        AppendPart(whole, journal_->ReadAgain(place));
    entry.What.Away = 0;
    MoveDeltas(whole, entry.What);
    bytes_ += entry.What.DeltaBytes();
    settled_ = std::min(settled_, index);
    return entry.What;
}

// Pictures, features and heights that wait are in no journal.
ChangeLog::Putting ChangeLog::PutAway(Entry& entry) {
    Change& change = entry.What;
    const size_t bytes = change.DeltaBytes();
    if (journal_ == nullptr || entry.Places.empty() || bytes == 0 || change.Pictures ||
        change.OtherHeights || change.Features)
        return Putting::None;
    switch (journal_->KeptAt(entry.Places.back())) {
    case ChangeJournal::Kept::No:
        return Putting::None;
    case ChangeJournal::Kept::NotYet:
        return Putting::Waits;
    case ChangeJournal::Kept::Yes:
        break;
    }
    for (const Paper paper : AllPapers)
        if (change.Touches(paper))
            change.Away |= PaperBit(paper);
    Change gone;
    MoveDeltas(change, gone);
    bytes_ -= bytes;
    return Putting::Done;
}

// The next steps both ways stay at hand.
ChangeLog::Putting ChangeLog::PutFarthestAway() {
    size_t low = settled_;
    size_t high = entries_.size();
    while (low < high) {
        const size_t before = position_ > low ? position_ - low : 0;
        const size_t behind = high > position_ ? high - position_ : 0;
        const bool oldest = before >= behind;
        const size_t index = oldest ? low++ : --high;
        if (index == position_ || index + 1 == position_)
            continue;
        const Putting put = PutAway(entries_[index]);
        if (oldest && index == settled_ && put != Putting::Waits)
            ++settled_;
        if (put != Putting::None)
            return put;
    }
    return Putting::None;
}

void ChangeLog::ForgetAway() {
    size_t gone = 0; // of those in force
    for (size_t i = 0; i < position_; ++i)
        if (entries_[i].What.Away != 0)
            gone = i + 1;
    for (; gone > 0; --gone)
        DropOldest();
    for (size_t i = position_; i < entries_.size(); ++i)
        if (entries_[i].What.Away != 0)
            DropBehind(i);
}

void ChangeLog::JournalAgain() {
    settled_ = 0;
    for (Entry& entry : entries_)
        Journal(entry);
}

void ChangeLog::SwapOnDisk(const Change& change) {
    if (change.OtherHeights)
        std::swap(onDisk_[Index(Paper::Heights)], change.OtherHeights->OnDisk);
}

void ChangeLog::MoveStacks(const Entry& entry, Walk walk) const {
    if (keeper_ == nullptr)
        return;
    const auto& stacks = walk == Walk::Back ? entry.StacksBefore : entry.StacksAfter;
    if (stacks)
        keeper_->TakeStacks(stacks);
    else if (entry.What.SingleEdit != 0)
        keeper_->MovePast(entry.What, walk);
}

void ChangeLog::SetRevision(Paper paper, uint64_t revision) {
    Now()[Index(paper)] = revision;
    if (journal_ != nullptr)
        journal_->Revised();
}

void ChangeLog::Saved(Paper paper) {
    onDisk_[Index(paper)] = Revision(paper);
    saved_.insert(Revision(paper));
    if (journal_ != nullptr)
        journal_->Saved(paper);
    TellSaved(paper);
}

void ChangeLog::TellSaved(Paper paper) {
    for (ChangeFollower* follower : followers_)
        follower->Saved(paper);
}

bool ChangeLog::AnyUnsaved() const {
    return HeightsWait() ||
           std::ranges::any_of(AllPapers, [this](Paper paper) { return Unsaved(paper); });
}

bool ChangeLog::HeightsWait() const {
    const size_t heights = Index(Paper::Heights);
    for (size_t i = 0; i < position_; ++i) {
        const Revisions& before = i == 0 ? base_ : entries_[i - 1].After;
        if (const auto& waits = entries_[i].What.OtherHeights;
            waits && waits->OnDisk != before[heights])
            return true;
    }
    return false;
}

std::vector<Paper> ChangeLog::SavedAt(size_t index) const {
    const Entry& entry = entries_.at(index);
    std::vector<Paper> papers;
    for (const Paper paper : AllPapers)
        if (entry.What.Touches(paper) && saved_.contains(entry.After[Index(paper)]))
            papers.push_back(paper);
    return papers;
}

void ChangeLog::LoadedAnew(Paper paper) {
    size_t without = entries_.size(); // the first behind all that touch the paper
    while (without > 0 && !entries_[without - 1].What.Touches(paper))
        --without;
    if (position_ < without) {
        Forget(paper);
    } else {
        const uint64_t revision = ++lastRevision_;
        for (; without > 0; --without)
            DropOldest();
        base_[Index(paper)] = revision;
        for (Entry& entry : entries_)
            entry.After[Index(paper)] = revision;
    }
    onDisk_[Index(paper)] = Revision(paper);
    if (journal_ != nullptr)
        journal_->Loaded(paper);
    TellSaved(paper);
}

void ChangeLog::ChangedOtherwise(Paper paper) {
    Forget(paper);
    if (journal_ != nullptr)
        journal_->Lost();
}

void ChangeLog::Forget(Paper paper) {
    Revisions revisions = Now();
    revisions[Index(paper)] = ++lastRevision_;
    DropBehind(0);
    position_ = 0;
    base_ = revisions;
}

void ChangeLog::KeepWithinMemory() {
    while (bytes_ > MostBytes) {
        const Putting put = PutFarthestAway();
        if (put == Putting::Waits ||
            (put == Putting::None && (position_ <= 1 || position_ < entries_.size())))
            return;
        if (put == Putting::None)
            DropOldest();
    }
}

void ChangeLog::DropOldest() {
    bytes_ -= entries_.front().What.Bytes();
    base_ = entries_.front().After;
    entries_.pop_front();
    --position_;
    settled_ -= settled_ > 0 ? 1 : 0;
}

void ChangeLog::DropBehind(size_t count) {
    for (; entries_.size() > count; entries_.pop_back())
        bytes_ -= entries_.back().What.Bytes();
    settled_ = std::min(settled_, count);
}

Recording::Recording(ChangeLog& log, std::vector<Paper> which, std::string name)
    : log_(log), papers_(log.papers_), which_(std::move(which)), name_(std::move(name)) {
    const auto copy = [](auto values, auto& to) {
        to.assign(values.begin(), values.end());
    };
    if (Watches(Paper::Level2))
        copy(papers_.Terrain.LxArr.Values(), posts_);
    if (Watches(Paper::Heights))
        copy(papers_.Terrain.Elevations.L0ElvArr.Values(), heights_);
    if (Watches(Paper::Catalogue))
        catalogue_ = BytesOf(papers_.Catalogue.Bin);
    if (Watches(Paper::MapFile))
        mapFile_ = papers_.MapFileRecord;
    if (Watches(Paper::Features))
        features_ = std::make_shared<const FeatureSet>(papers_.Features);
    if (log_.keeper_ != nullptr)
        stacks_ = log_.keeper_->StacksNow();
    ++log_.recordings_;
}

void Recording::Replaced(ElevationLayer before) {
    otherHeights_ = std::make_shared<WaitingHeights>(
        WaitingHeights{std::move(before), log_.RevisionOnDisk(Paper::Heights)});
}

bool Recording::Watches(Paper paper) const {
    return std::ranges::find(which_, paper) != which_.end();
}

Change Recording::Made() const {
    Change change{.Name = name_, .Pictures = pictures_};
    change.OtherHeights = otherHeights_;
    if (Watches(Paper::Level2))
        change.Posts.Values =
            Between(posts_, std::as_const(papers_.Terrain.LxArr).Values());
    if (Watches(Paper::Heights))
        change.Heights.Values =
            ChangedBetween(std::span(heights_),
                           std::as_const(papers_.Terrain.Elevations.L0ElvArr).Values());
    if (Watches(Paper::Catalogue))
        change.Catalogue = ChangedBetween(catalogue_, BytesOf(papers_.Catalogue.Bin));
    if (Watches(Paper::MapFile))
        change.MapFile =
            ChangedBetween(BytesOf(mapFile_), BytesOf(papers_.MapFileRecord));
    if (Watches(Paper::Features) && !(*features_ == papers_.Features))
        change.Features = {features_,
                           std::make_shared<const FeatureSet>(papers_.Features)};
    return change;
}

// Where memory lacks for what was done, no way back leads past it.
Recording::~Recording() {
    --log_.recordings_;
    try {
        ChangeLog::Entry entry{.What = Made(), .StacksBefore = stacks_};
        if (log_.keeper_ != nullptr)
            entry.StacksAfter = log_.keeper_->StacksNow();
        log_.Put(std::move(entry));
    } catch (...) {
        for (const Paper paper : which_)
            log_.ChangedOtherwise(paper);
    }
}

} // namespace vardenix
