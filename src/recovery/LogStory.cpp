#include "recovery/LogStory.h"

#include "recovery/ChangeBytes.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vardenix {

namespace {

constexpr uint8_t HeightsBit = PaperBit(Paper::Heights);
constexpr auto HeightsWay = static_cast<size_t>(Paper::Heights);

// Takes the records in, and keeps for each paper the way from its file: what is done and
// then taken back is no part of it.
class Storyteller {
public:
    explicit Storyteller(const BasedOn& files) { now_.Files = files.Heights; }

    // False where no record can follow.
    bool Take(const LogRecord& record) {
        if (!TakeIn(record))
            return false;
        now_.Unsaved = (record.Unsaved & HeightsBit) != 0;
        return true;
    }

    // `papers` but for heights, which tell by themselves what of them is unsaved.
    void TellInto(LogStory& story) {
        const auto papers = static_cast<uint8_t>(story.Unsaved & ~HeightsBit);
        std::vector<const Drawer*> unsaved;
        const auto take = [&unsaved](const Drawer& drawer) {
            if (drawer.Unsaved && !drawer.Way.empty())
                unsaved.push_back(&drawer);
        };
        for (size_t i = 0; i < position_; ++i)
            if (const auto& waits = entries_[stack_[i]].Waits)
                take(*waits);
        now_.Way = ways_[HeightsWay];
        take(now_);
        story.LastInUse = !unsaved.empty() && unsaved.back() == &now_;
        for (const Drawer* drawer : unsaved) {
            story.Heights.push_back(drawer->Files);
            AppendSteps(story, drawer == unsaved.back() ? papers : uint8_t{0},
                        drawer->Number);
        }
        if (unsaved.empty())
            AppendSteps(story, papers, NoDrawer);
    }

private:
    // Heights of one file, as it was loaded once.
    struct Drawer {
        size_t Number = 0;
        HeightsFiles Files{};
        std::vector<size_t> Way{}; // of those that wait
        bool Unsaved = false;
    };
    static constexpr size_t NoDrawer = SIZE_MAX;

    struct Entry {
        std::string Name;
        std::chrono::system_clock::time_point Time;
        std::vector<size_t> Parts{};
        // What another file of heights has put aside, or what it would bring again.
        std::optional<Drawer> Waits{};
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
        size_t Drawer = 0;  // in use
    };

    bool TakeIn(const LogRecord& record) {
        switch (record.Kind) {
        case RecordKind::Added:
            AddEntry(record);
            AddPart(record);
            break;
        case RecordKind::OtherHeights:
            AddEntry(record);
            entries_.back().Waits =
                Drawer{.Number = ++drawers_, .Files = record.Files.Heights};
            SwapHeights(entries_.back());
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
            TakeSaved(record);
            break;
        case RecordKind::Files:
        case RecordKind::Revised:
            break;
        case RecordKind::Lost:
            return false;
        }
        return true;
    }

    void AddEntry(const LogRecord& record) {
        stack_.resize(position_);
        stack_.push_back(entries_.size());
        ++position_;
        entries_.push_back({record.Name, record.Time});
    }

    // One of all papers is of all heights, too.
    void TakeSaved(const LogRecord& record) {
        if ((record.Saved & HeightsBit) != 0)
            now_.Files = record.Files.Heights;
        if ((record.Saved & PaperBit(Paper::Features)) != 0)
            for (Entry& entry : entries_)
                if (entry.Waits)
                    entry.Waits->Way.clear();
        Forget(record.Saved);
    }

    void SwapHeights(Entry& entry) {
        now_.Way = std::move(ways_[HeightsWay]);
        std::swap(now_, *entry.Waits);
        ways_[HeightsWay] = std::move(now_.Way);
    }

    // What still counts of the papers, and of the heights in that drawer.
    void AppendSteps(LogStory& story, uint8_t papers, size_t drawer) const {
        std::vector<StoryStep>& steps = story.Steps;
        const size_t first = steps.size();
        size_t entry = entries_.size(); // of the newest step
        for (const Moved& moved : way_) {
            uint8_t counts = moved.Papers & papers;
            if (moved.Drawer == drawer)
                counts |= moved.Papers & HeightsBit;
            if (counts == 0)
                continue;
            const Part& part = parts_[moved.Part];
            if (steps.size() == first || entry != part.Entry ||
                steps.back().Back != moved.Back) {
                entry = part.Entry;
                steps.push_back({.Name = entries_[entry].Name,
                                 .Time = entries_[entry].Time,
                                 .Back = moved.Back,
                                 .Heights = story.Heights.size() - 1});
            }
            steps.back().Parts.push_back({part.ChangeAt, counts});
        }
    }

    void AddPart(const LogRecord& record) {
        parts_.push_back({stack_.back(), record.ChangeAt, record.Papers});
        entries_[stack_.back()].Parts.push_back(parts_.size() - 1);
        Move(parts_.size() - 1, false);
    }

    void Walk(Entry& entry, bool back) {
        if (entry.Waits)
            SwapHeights(entry);
        if (back)
            for (auto part = entry.Parts.rbegin(); part != entry.Parts.rend(); ++part)
                Move(*part, true);
        else
            for (const size_t part : entry.Parts)
                Move(part, false);
    }

    void Move(size_t part, bool back) {
        Moved moved{part, back, 0, now_.Number};
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
    Drawer now_;                              // but for its way
    size_t drawers_ = 0;                      // others so far
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

uint8_t StoryStep::Papers() const {
    uint8_t papers = 0;
    for (const Part& part : Parts)
        papers |= part.Papers;
    return papers;
}

uint8_t LogStory::Papers() const {
    uint8_t papers = 0;
    for (const StoryStep& step : Steps)
        papers |= step.Papers();
    return papers;
}

LogStory ReadStory(std::span<const std::byte> bytes, const std::string& path) {
    LogReader reader(bytes, path);
    LogRecord record;
    if (!reader.Next(record) || record.Kind != RecordKind::Files)
        throw RuntimeError(ErrorNumber::TypeMismatch, path + " is no log of changes");
    LogStory story{.Files = record.Files, .Unsaved = record.Unsaved, .Last = record.Time};
    story.WholeBytes = reader.Position();
    Storyteller teller(record.Files);
    while (reader.Next(record) && teller.Take(record)) {
        if (record.Kind == RecordKind::Saved)
            story.Files = record.Files;
        story.Unsaved = record.Unsaved;
        story.Last = record.Time;
        story.WholeBytes = reader.Position();
    }
    teller.TellInto(story);
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
