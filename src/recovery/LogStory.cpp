#include "recovery/LogStory.h"

#include "recovery/ChangeBytes.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vardenix {

namespace {

// Takes the records in, and keeps for each paper the way from its file: what is done and
// then taken back is no part of it.
class Storyteller {
public:
    // False where no record can follow.
    bool Take(const LogRecord& record) {
        switch (record.Kind) {
        case RecordKind::Added:
            stack_.resize(position_);
            stack_.push_back(entries_.size());
            ++position_;
            entries_.push_back({record.Name, record.Time, {}});
            AddPart(record);
            break;
        case RecordKind::Grown:
            if (position_ == 0 || position_ != stack_.size())
                return false;
            entries_[stack_.back()].Name = record.Name;
            AddPart(record);
            break;
        case RecordKind::Back:
            if (position_ == 0)
                return false;
            Walk(entries_[stack_[--position_]], true);
            break;
        case RecordKind::Again:
            if (position_ == stack_.size())
                return false;
            Walk(entries_[stack_[position_++]], false);
            break;
        case RecordKind::Saved:
            Forget(record.Saved);
            break;
        case RecordKind::Files:
        case RecordKind::Revised:
            break;
        case RecordKind::Lost:
            return false;
        }
        return true;
    }

    std::vector<StoryStep> StepsOf(uint8_t papers) const {
        std::vector<StoryStep> steps;
        size_t entry = entries_.size(); // of the newest step
        for (const Moved& moved : way_) {
            const auto counts = static_cast<uint8_t>(moved.Papers & papers);
            if (counts == 0)
                continue;
            const Part& part = parts_[moved.Part];
            if (steps.empty() || entry != part.Entry || steps.back().Back != moved.Back) {
                entry = part.Entry;
                steps.push_back(
                    {entries_[entry].Name, entries_[entry].Time, moved.Back, {}});
            }
            steps.back().Parts.push_back({part.ChangeAt, counts});
        }
        return steps;
    }

private:
    struct Entry {
        std::string Name;
        std::chrono::system_clock::time_point Time;
        std::vector<size_t> Parts;
    };
    struct Part {
        size_t Entry = 0;
        size_t ChangeAt = 0;
        uint8_t Papers = 0;
    };
    struct Moved {
        size_t Part = 0;
        bool Back = false;
        uint8_t Papers = 0; // that it still counts for
    };

    void AddPart(const LogRecord& record) {
        parts_.push_back({stack_.back(), record.ChangeAt, record.Papers});
        entries_[stack_.back()].Parts.push_back(parts_.size() - 1);
        Move(parts_.size() - 1, false);
    }

    void Walk(const Entry& entry, bool back) {
        if (back)
            for (auto part = entry.Parts.rbegin(); part != entry.Parts.rend(); ++part)
                Move(*part, true);
        else
            for (const size_t part : entry.Parts)
                Move(part, false);
    }

    void Move(size_t part, bool back) {
        Moved moved{part, back, 0};
        for (size_t paper = 0; paper < ways_.size(); ++paper) {
            const auto bit = static_cast<uint8_t>(1U << paper);
            if ((parts_[part].Papers & bit) == 0)
                continue;
            auto& way = ways_[paper];
            if (!way.empty() && way_[way.back()].Part == part &&
                way_[way.back()].Back != back) {
                way_[way.back()].Papers &= static_cast<uint8_t>(~bit);
                way.pop_back();
            } else {
                way.push_back(way_.size());
                moved.Papers |= bit;
            }
        }
        way_.push_back(moved);
        while (!way_.empty() && way_.back().Papers == 0)
            way_.pop_back();
    }

    void Forget(uint8_t papers) {
        for (size_t paper = 0; paper < ways_.size(); ++paper)
            if ((papers & (1U << paper)) != 0) {
                for (const size_t moved : ways_[paper])
                    way_[moved].Papers &= static_cast<uint8_t>(~(1U << paper));
                ways_[paper].clear();
            }
    }

    std::vector<Entry> entries_;
    std::vector<Part> parts_;
    std::vector<size_t> stack_; // of entries, as the log of the program has them
    size_t position_ = 0;
    std::vector<Moved> way_;
    std::array<std::vector<size_t>, 4> ways_; // of each paper, into way_
};

template <typename Delta>
void SwapDelta(Delta& delta) {
    std::ranges::reverse(delta.Runs);
    for (auto& run : delta.Runs)
        std::swap(run.OldValue, run.NewValue);
    std::swap(delta.Values.Old, delta.Values.New);
}

// What is carried out runs after values is taken back runs before values.
void AppendTakenBack(std::vector<Change>& changes, Change change) {
    SwapDelta(change.Posts);
    SwapDelta(change.Heights);
    std::swap(change.Catalogue.Old, change.Catalogue.New);
    std::swap(change.MapFile.Old, change.MapFile.New);
    const auto hasBoth = [](const auto& delta) {
        return !delta.Runs.empty() && !delta.Values.Empty();
    };
    if (hasBoth(change.Posts) || hasBoth(change.Heights)) {
        changes.push_back({.Name = change.Name, .Time = change.Time});
        std::swap(changes.back().Posts.Runs, change.Posts.Runs);
        std::swap(changes.back().Heights.Runs, change.Heights.Runs);
    }
    changes.push_back(std::move(change));
}

void LeaveOut(Change& change, uint8_t papers) {
    if ((papers & PaperBit(Paper::Level2)) == 0)
        change.Posts = {};
    if ((papers & PaperBit(Paper::Heights)) == 0)
        change.Heights = {};
    if ((papers & PaperBit(Paper::Catalogue)) == 0)
        change.Catalogue = {};
    if ((papers & PaperBit(Paper::MapFile)) == 0)
        change.MapFile = {};
}

// Runs alone, as strokes grow by.
bool IsRunsAlone(const Change& change) {
    return change.Posts.Values.Empty() && change.Heights.Values.Empty() &&
           change.Catalogue.Empty() && change.MapFile.Empty();
}

void AppendRuns(Change& change, const Change& more) {
    change.Posts.Runs.insert(change.Posts.Runs.end(), more.Posts.Runs.begin(),
                             more.Posts.Runs.end());
    change.Heights.Runs.insert(change.Heights.Runs.end(), more.Heights.Runs.begin(),
                               more.Heights.Runs.end());
}

} // namespace

uint8_t LogStory::Papers() const {
    uint8_t papers = 0;
    for (const StoryStep& step : Steps)
        for (const StoryStep::Part& part : step.Parts)
            papers |= part.Papers;
    return papers;
}

LogStory ReadStory(std::span<const std::byte> bytes, const std::string& path) {
    LogReader reader(bytes, path);
    LogRecord record;
    if (!reader.Next(record) || record.Kind != RecordKind::Files)
        throw RuntimeError(ErrorNumber::TypeMismatch, path + " is no log of changes");
    LogStory story{.Files = record.Files, .Unsaved = record.Unsaved, .Last = record.Time};
    story.WholeBytes = reader.Position();
    Storyteller teller;
    while (reader.Next(record) && teller.Take(record)) {
        if (record.Kind == RecordKind::Saved)
            story.Files = record.Files;
        story.Unsaved = record.Unsaved;
        story.Last = record.Time;
        story.WholeBytes = reader.Position();
    }
    story.Steps = teller.StepsOf(story.Unsaved);
    return story;
}

std::vector<Change> ChangesOf(const StoryStep& step, std::span<const std::byte> bytes,
                              const std::string& path) {
    std::vector<Change> changes;
    for (const StoryStep::Part& part : step.Parts) {
        BinaryReader reader(bytes.subspan(std::min(part.ChangeAt, bytes.size())), path);
        Change change = ReadChange(reader);
        LeaveOut(change, part.Papers);
        change.Name = step.Back ? "Taken back: " + step.Name : step.Name;
        change.Time = step.Time;
        const size_t before = changes.size();
        if (step.Back)
            AppendTakenBack(changes, std::move(change));
        else
            changes.push_back(std::move(change));
        if (before > 0 && changes.size() == before + 1 && IsRunsAlone(changes.back())) {
            AppendRuns(changes[before - 1], changes.back());
            changes.pop_back();
        }
    }
    return changes;
}

} // namespace vardenix
