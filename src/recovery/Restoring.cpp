#include "recovery/Restoring.h"

#include "catalogue/TextureBinFile.h"
#include "levels/PostDelta.h"
#include "recovery/ChangeBytes.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

// As many as a box holds; the last ones are those that the user remembers.
constexpr size_t MostListed = 15;

std::string NameOfStep(const StoryStep& step) {
    return HoursMinutes(LocalTimeOf(step.Time)) + "  " +
           (step.Back ? "Taken back: " : "") + PlainText(step.Name);
}

// Has the heights loaded that a step is about.
class HeightsInUse {
public:
    HeightsInUse(const LogStory& story, RestoringWindows& windows)
        : story_(story), windows_(windows) {}

    // False for a step of heights that cannot be loaded any more. Error 53 where the
    // user was told why not.
    bool TakeUp(const StoryStep& step) {
        if ((step.Papers() & PaperBit(Paper::Heights)) == 0)
            return true;
        if (inUse_ != step.Heights)
            Load(step.Heights);
        return fits_;
    }
    const std::string& LeftOut() const { return leftOut_; }

private:
    void Load(size_t number) {
        const HeightsFiles& files = story_.Heights.at(number);
        const BasedOnFile* gone = story_.WasPutAside(number) ? FirstGone(files) : nullptr;
        fits_ = gone == nullptr;
        inUse_ = number;
        if (!fits_)
            leftOut_ +=
                (leftOut_.empty() ? "" : "\n") +
                ("The changes of " + files.L.Path + " have not come back: " + gone->Path +
                 " has been changed since then.");
        else if (!windows_.LoadHeights(files.Kind, files.L.Path))
            throw RuntimeError(ErrorNumber::FileNotFound,
                               files.L.Path + " could not be loaded");
    }

    const LogStory& story_;
    RestoringWindows& windows_;
    std::optional<size_t> inUse_;
    bool fits_ = true;
    std::string leftOut_;
};

void CarryOutStep(ProgramState& state, const LeftLog& log, const StoryStep& step) {
    for (Change& change : ChangesOf(step, log.Bytes.Span(), log.File.Path().string())) {
        RequireFits(change, state.Terrain.LxArr.UpperBound(),
                    state.Terrain.Elevations.L0ElvArr.UpperBound());
        state.Changes.Apply(std::move(change));
    }
}

// One log, however it ends, or nothing when it is not to be asked about now.
enum class Offered { Passed, Declined, Restored };

Offered Offer(ProgramState& state, LeftLog& log, Dialogs& dialogs,
              RestoringWindows& windows) {
    if (const std::string why = WhyUnfit(log.Story); !why.empty()) {
        if (IsOnDisk(state, log))
            DropLog(log);
        else if (log.Fate == LogFate::Left) {
            SetFate(log, LogFate::Unfit);
            dialogs.Notice(UnfitNotice(log, why), {}, BoxIcon::Warning);
        }
        return Offered::Passed;
    }
    if (dialogs.MessageBox(RestoreQuestion(log), {}, BoxIcon::Question,
                           BoxButtons::YesUnlessNo) != BoxAnswer::Yes)
        return Offered::Declined;
    std::string told;
    windows.ShowOnce([&] { told = RestoreChanges(state, log, windows); });
    windows.KeepRestored();
    if (told.empty()) {
        DropLog(log);
    } else {
        SetFate(log, LogFate::NotWanted);
        dialogs.Notice(told, {}, BoxIcon::Warning);
    }
    return Offered::Restored;
}

// One is kept of a theater.
void KeepAside(LeftLog& log, const std::vector<LeftLog>& others) {
    for (const LeftLog& other : others)
        if (other.Fate == LogFate::NotWanted)
            DropLog(other);
    SetFate(log, LogFate::NotWanted);
}

} // namespace

std::string WhenOf(std::chrono::system_clock::time_point time,
                   std::chrono::system_clock::time_point now) {
    const LocalTime then = LocalTimeOf(time);
    const LocalTime today = LocalTimeOf(now);
    const bool isToday =
        then.Year == today.Year && then.Month == today.Month && then.Day == today.Day;
    return HoursMinutes(then) + (isToday ? "" : " on " + ShortMonthDate(then));
}

std::string PlainText(const std::string& text) {
    std::string plain = text.substr(0, 200);
    for (char& letter : plain)
        if (static_cast<unsigned char>(letter) < ' ' || letter == '\x7F')
            letter = '?';
    return plain;
}

std::string RestoreQuestion(const LeftLog& log) {
    const auto& steps = log.Story.Steps;
    std::string question = "Vardenix ended unexpectedly at " +
                           WhenOf(log.Story.Last, std::chrono::system_clock::now()) +
                           " with unsaved changes to this theater. Restore them?\n";
    const size_t listed = std::min(steps.size(), MostListed);
    if (listed < steps.size())
        question += "\n" + std::to_string(steps.size() - listed) + " earlier changes";
    for (const StoryStep& step : std::span(steps).last(listed))
        question += "\n" + NameOfStep(step);
    if (log.Damaged())
        question += "\n\nThe last of them may be missing: the log of changes is damaged "
                    "behind these.";
    return question;
}

std::string UnfitNotice(const LeftLog& log, const std::string& why) {
    return "Vardenix ended unexpectedly at " +
           WhenOf(log.Story.Last, std::chrono::system_clock::now()) +
           " with unsaved changes to this theater. They cannot be restored: " + why +
           ".\n\nThey are kept until \"vardenix-cli recovery drop " + log.Name +
           "\" takes them away, and are offered again should the files be as they were.";
}

bool IsOnDisk(const ProgramState& state, const LeftLog& log) {
    const LogStory& story = log.Story;
    if ((story.Papers() & PaperBit(Paper::Heights)) != 0)
        return false; // which are not loaded yet
    try {
        std::vector<Change> changes;
        for (const StoryStep& step : story.Steps)
            for (Change& change :
                 ChangesOf(step, log.Bytes.Span(), log.File.Path().string()))
                changes.push_back(std::move(change));
        const PostArray& posts = state.Terrain.LxArr;
        PostArray led(posts.UpperBound());
        std::ranges::copy(posts.Values(), led.Values().begin());
        for (const Change& change : changes) {
            RequireFits(change, posts.UpperBound(), 0);
            WriteNew(led, change.Posts);
        }
        if (!std::ranges::equal(posts.Values(), std::as_const(led).Values()))
            return false;
        std::vector<std::byte> bin = BytesOf(state.Catalogue.Bin);
        const auto mapBytes = std::as_bytes(std::span(&state.MapFileRecord, 1));
        std::vector<std::byte> map(mapBytes.begin(), mapBytes.end());
        for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
            bin = WithOld(bin, change->Catalogue);
            map = WithOld(map, change->MapFile);
        }
    } catch (const RuntimeError&) { // it was made of something else
        return false;
    }
    return true;
}

bool OfferLeftLogs(ProgramState& state, const std::string& folder, Dialogs& dialogs,
                   RestoringWindows& windows) {
    std::vector<LeftLog> logs = LeftLogsOf(folder, state.Terrain.LFilename).Logs;
    for (size_t i = logs.size(); i-- > 0;) {
        if (logs[i].Fate == LogFate::NotWanted)
            continue;
        try {
            const Offered offered = Offer(state, logs[i], dialogs, windows);
            if (offered == Offered::Restored)
                return true; // an older one would not fit what is in memory now
            if (offered == Offered::Declined)
                KeepAside(logs[i], logs);
        } catch (const RuntimeError& error) {
            dialogs.Notice(ReportText(error), {}, BoxIcon::Warning);
        }
    }
    return false;
}

std::string RestoreChanges(ProgramState& state, const LeftLog& log,
                           RestoringWindows& windows) {
    const std::vector<StoryStep>& steps = log.Story.Steps;
    HeightsInUse heights(log.Story, windows);
    size_t done = 0;
    try {
        for (const StoryStep& step : steps) {
            if (heights.TakeUp(step))
                CarryOutStep(state, log, step);
            ++done;
        }
    } catch (const RuntimeError& error) {
        return std::to_string(done) + " of " + std::to_string(steps.size()) +
               " changes have come back. The next one cannot: " +
               (error.Detail().empty() ? error.Description() : error.Detail());
    }
    return heights.LeftOut();
}

} // namespace vardenix
