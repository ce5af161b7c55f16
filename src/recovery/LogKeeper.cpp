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
    "until you have saved everything:\n";

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
    const ChangeLog& changes = state_.Changes;
    if (file_)
        file_->Delete();
    file_.reset();
    stopped_ = false;
    if (changes.Count() == 0)
        return;
    Begin();
    for (size_t i = 0; i < changes.Count(); ++i) {
        LogRecord record = RecordOf(RecordKind::Added);
        Write(record, &changes.At(i));
    }
    for (size_t i = changes.Position(); i < changes.Count(); ++i)
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

void LogKeeper::Write(const LogRecord& record, const Change* change) {
    if (stopped_)
        return;
    const uint64_t more = change == nullptr ? 0 : change->Bytes();
    if (file_->Size() + more > most_)
        return Stop("the log of changes has its " + std::to_string(most_ >> 20) + " MiB");
    file_->Append(BytesOfRecord(record, change));
}

void LogKeeper::Added(const Change& change) noexcept {
    if (Keeps())
        Try([&] {
            if (!file_)
                Begin();
            Write(RecordOf(RecordKind::Added), &change);
        });
}

void LogKeeper::Grown(const Change& more) noexcept {
    if (Keeps() && file_)
        Try([&] { Write(RecordOf(RecordKind::Grown), &more); });
}

void LogKeeper::Walked(Walk walk) noexcept {
    if (Keeps() && file_)
        Try([&] {
            Write(RecordOf(walk == Walk::Back ? RecordKind::Back : RecordKind::Again));
        });
}

// After a save to a copy the theater's own file still is what it was.
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

} // namespace vardenix
