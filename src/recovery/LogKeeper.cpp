#include "recovery/LogKeeper.h"

#include "files/OwnFolders.h"
#include "recovery/ChangeBytes.h"
#include "recovery/LeftLogs.h"
#include "recovery/PaperFile.h"
#include "texts/RuntimeError.h"

#include <chrono>
#include <exception>
#include <utility>

namespace vardenix {

namespace {

constexpr const char* KeptNoMore =
    "Should Vardenix end unexpectedly, what you change from now on cannot be restored "
    "until you have saved everything, and the history reaches no farther back than "
    "memory does:\n";

// The heights that are in use after that change: those that wait in the next change of
// files, seen from where the log stands, or those that are in use now.
HeightsFiles HeightsAfter(const ProgramState& state, size_t index) {
    const ChangeLog& changes = state.Changes;
    const auto waiting = [&](size_t at) { return changes.At(at).OtherHeights.get(); };
    if (index < changes.Position()) {
        for (size_t i = index + 1; i < changes.Position(); ++i)
            if (const WaitingHeights* other = waiting(i))
                return FilesOf(other->Layer);
    } else {
        for (size_t i = index + 1; i-- > changes.Position();)
            if (const WaitingHeights* other = waiting(i))
                return FilesOf(other->Layer);
    }
    return FilesOf(state.Terrain.Elevations);
}

} // namespace

LogKeeper::LogKeeper(ProgramState& state, std::string folder, uint64_t most)
    : state_(state), folder_(std::move(folder)), most_(most) {
    state_.Changes.KeepJournal(this);
}

LogKeeper::~LogKeeper() {
    state_.Changes.KeepJournal(nullptr);
    if (file_ && !state_.Changes.AnyUnsaved())
        file_->Delete();
}

void LogKeeper::GiveUp() {
    if (file_)
        file_->Delete();
    file_.reset();
    folder_.clear();
}

void LogKeeper::Drain() {
    if (file_)
        file_->Drain();
}

std::string LogKeeper::Complaint() {
    if (file_ && !stopped_)
        if (const std::string failure = file_->Failure(); !failure.empty())
            Stop(failure);
    return std::exchange(complaint_, {});
}

// What was written stays good up to here.
void LogKeeper::Stop(const std::string& why) {
    stopped_ = true;
    if (!std::exchange(complained_, true))
        complaint_ = KeptNoMore + why;
}

template <typename Work>
void LogKeeper::Try(Work work) noexcept {
    try {
        work();
    } catch (const std::exception& error) {
        stopped_ = true;
        try {
            Stop(error.what());
        } catch (...) { // not even memory for the sentence
            complaint_.clear();
        }
    }
}

void LogKeeper::Begin() {
    file_ = std::make_unique<GrowingFile>(MakeLog(folder_));
    LogRecord record = RecordOf(RecordKind::Files);
    record.Files = files_ = FilesOf(state_);
    Write(record);
}

// The changes that can still be walked over, in a file that everything is saved in.
void LogKeeper::BeginAgain() {
    ChangeLog& changes = state_.Changes;
    changes.ForgetAway();
    if (file_)
        file_->Delete();
    file_.reset();
    stopped_ = false;
    if (changes.Count() == 0)
        return;
    Begin();
    for (size_t i = 0; i < changes.Count(); ++i)
        heightsAgain_.push_back(HeightsAfter(state_, i));
    changes.JournalAgain();
    heightsAgain_.clear();
    for (size_t i = changes.Count(); i-- > changes.Position();)
        Write(RecordOf(RecordKind::Back));
    uint8_t all = 0;
    for (const Paper paper : AllPapers)
        all |= PaperBit(paper);
    WriteSaved(all);
}

void LogKeeper::WriteSaved(uint8_t papers) {
    LogRecord record = RecordOf(RecordKind::Saved);
    record.Saved = papers;
    record.Files = files_ = FilesOf(state_);
    Write(record);
}

LogRecord LogKeeper::RecordOf(RecordKind kind) const {
    LogRecord record{.Kind = kind, .Time = std::chrono::system_clock::now()};
    for (const Paper paper : AllPapers)
        if (state_.Changes.Unsaved(paper))
            record.Unsaved |= PaperBit(paper);
    return record;
}

ChangeJournal::Place LogKeeper::Write(const LogRecord& record, const Change* change) {
    if (stopped_)
        return 0;
    const uint64_t more = change == nullptr ? 0 : change->DeltaBytes() + sizeof *change;
    if (file_->Size() + more > most_) {
        Stop("the log of changes has its " + std::to_string(most_ >> 20) + " MiB");
        return 0;
    }
    return file_->Append(BytesOfRecord(record, change));
}

LogRecord LogKeeper::RecordOfAdded(const Change& change) {
    LogRecord record =
        RecordOf(change.OtherHeights ? RecordKind::OtherHeights : RecordKind::Added);
    if (change.OtherHeights) {
        files_.Heights = heightsAgain_.empty() ? FilesOf(state_.Terrain.Elevations)
                                               : heightsAgain_.front();
        record.Files = files_;
    }
    if (!heightsAgain_.empty())
        heightsAgain_.pop_front();
    return record;
}

ChangeJournal::Place LogKeeper::Added(const Change& change) noexcept {
    Place place = 0;
    if (Keeps())
        Try([&] {
            if (!file_)
                Begin();
            place = Write(RecordOfAdded(change), &change);
        });
    return place;
}

ChangeJournal::Place LogKeeper::Grown(const Change& more) noexcept {
    Place place = 0;
    if (Keeps() && file_)
        Try([&] { place = Write(RecordOf(RecordKind::Grown), &more); });
    return place;
}

void LogKeeper::Walked(const Change& change, Walk walk) noexcept {
    if (Keeps() && file_)
        Try([&] {
            if (change.OtherHeights)
                files_.Heights = FilesOf(state_.Terrain.Elevations);
            Write(RecordOf(walk == Walk::Back ? RecordKind::Back : RecordKind::Again));
        });
}

void LogKeeper::Saved(Paper paper) noexcept {
    if (folder_.empty())
        return;
    Try([&] {
        if (stopped_ && !state_.Changes.AnyUnsaved())
            return BeginAgain();
        if (!Keeps() || !file_)
            return;
        if (FileOf(files_, paper) == FileOfPaper(state_, paper))
            Write(RecordOf(RecordKind::Revised));
        else
            WriteSaved(PaperBit(paper));
    });
}

void LogKeeper::Loaded(Paper paper) noexcept {
    if (Keeps() && file_)
        Try([&] { WriteSaved(PaperBit(paper)); });
}

void LogKeeper::Revised() noexcept {
    if (Keeps() && file_)
        Try([&] { Write(RecordOf(RecordKind::Revised)); });
}

void LogKeeper::Lost() noexcept {
    if (Keeps() && file_)
        Try([&] {
            Write(RecordOf(RecordKind::Lost));
            Stop("there was no memory for what a change has made");
        });
}

ChangeJournal::Kept LogKeeper::KeptAt(Place place) const noexcept {
    try {
        if (!file_ || place == 0)
            return Kept::No;
        if (file_->IsWritten(place))
            return Kept::Yes;
        return file_->Failure().empty() ? Kept::NotYet : Kept::No;
    } catch (const std::exception&) {
        return Kept::No;
    }
}

Change LogKeeper::ReadAgain(Place place) const {
    if (!file_)
        throw RuntimeError(ErrorNumber::FileNotFound, "the log of changes has gone");
    const std::vector<std::byte> body = file_->Read(place);
    return ChangeOfRecord(body, folder_);
}

} // namespace vardenix
