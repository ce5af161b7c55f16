#include "program/NumberPasses.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr std::array NumberedPapers{Paper::Level2, Paper::Catalogue};

} // namespace

NumberPasses::NumberPasses(ChangeLog& changes) : changes_(changes) {
    changes.Follow(*this);
}

size_t NumberPasses::NumberingAt(Paper paper, uint64_t revision) const {
    const Rows& rows = rows_[Index(paper)];
    const auto behind =
        std::ranges::upper_bound(rows, revision, {}, &Rows::value_type::first);
    return behind == rows.begin() ? 0 : std::prev(behind)->second;
}

// A new revision is greater than all before it, so its row comes behind the others. An
// older one keeps the numbering that it had.
void NumberPasses::SetNow(Paper paper, size_t numbering) {
    const uint64_t revision = changes_.Revision(paper);
    now_[Index(paper)] = numbering;
    Rows& rows = rows_[Index(paper)];
    if (NumberingAt(paper, revision) == numbering ||
        (!rows.empty() && rows.back().first > revision))
        return;
    if (!rows.empty() && rows.back().first == revision)
        rows.back().second = numbering;
    else
        rows.emplace_back(revision, numbering);
}

void NumberPasses::Passed(const TileRenumbering& numbers, bool changed) {
    if (numbers.MovesNone())
        return;
    numberings_.push_back({now_[Index(Paper::Catalogue)], numbers, changed,
                           changed ? 0 : changes_.Revision(Paper::Level2)});
    begun_ = numberings_.size() - 1;
}

// Both papers in one change, without a word on it, is a pass that was restored.
void NumberPasses::Recorded(const Change& change) {
    if (!begun_ && change.Touches(Paper::Catalogue) && change.Touches(Paper::Level2)) {
        numberings_.push_back(
            {.Before = now_[Index(Paper::Catalogue)], .Changed = true, .Known = false});
        begun_ = numberings_.size() - 1;
    }
    for (const Paper paper : NumberedPapers) {
        size_t& now = now_[Index(paper)];
        if (begun_ && change.Touches(Paper::Catalogue))
            now = *begun_;
        if (change.Touches(paper))
            SetNow(paper, now);
    }
    begun_.reset();
}

void NumberPasses::Walked(const Change& /*change*/, Walk /*walk*/) {
    for (const Paper paper : NumberedPapers)
        now_[Index(paper)] = NumberingAt(paper, changes_.Revision(paper));
}

void NumberPasses::LevelTwoReadAnew() {
    const uint64_t file = changes_.RevisionOnDisk(Paper::Level2);
    size_t numbering = NumberingAt(Paper::Level2, file);
    if (const auto path = Path(numbering, now_[Index(Paper::Catalogue)]))
        for (const size_t each : *path) {
            if (numberings_[each].Changed || numberings_[each].SameFor != file)
                break;
            numbering = each;
        }
    SetNow(Paper::Level2, numbering);
}

void NumberPasses::CaughtUp() { SetNow(Paper::Level2, now_[Index(Paper::Catalogue)]); }

std::optional<std::vector<size_t>> NumberPasses::Path(size_t from, size_t to) const {
    std::vector<size_t> path;
    for (; to > from; to = numberings_[to].Before)
        path.insert(path.begin(), to);
    if (to != from)
        return std::nullopt;
    return path;
}

// A pass that has left level 2 as it is now is not missing there.
std::optional<std::vector<size_t>> NumberPasses::MissingPath() const {
    auto path = Path(now_[Index(Paper::Level2)], now_[Index(Paper::Catalogue)]);
    if (!path)
        return path;
    const auto lacks = std::ranges::find_if(*path, [this](size_t each) {
        return numberings_[each].Changed ||
               numberings_[each].SameFor != changes_.Revision(Paper::Level2);
    });
    path->erase(path->begin(), lacks);
    return path;
}

bool NumberPasses::Fits() const {
    const auto missing = MissingPath();
    return missing && missing->empty();
}

std::vector<TileRenumbering> NumberPasses::Missing() const {
    std::vector<TileRenumbering> missing;
    for (const size_t each : MissingPath().value_or(std::vector<size_t>{})) {
        if (!numberings_[each].Known)
            return {};
        missing.push_back(numberings_[each].Numbers);
    }
    return missing;
}

bool NumberPasses::Unsaved(Paper paper) const {
    const size_t file = NumberingAt(paper, changes_.RevisionOnDisk(paper));
    const size_t now = now_[Index(paper)];
    const auto path = Path(std::min(file, now), std::max(file, now));
    return !path || std::ranges::any_of(
                        *path, [this](size_t each) { return numberings_[each].Changed; });
}

} // namespace vardenix
