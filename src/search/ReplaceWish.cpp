#include "search/ReplaceWish.h"

#include "texts/Windows1252.h"

#include <utility>

namespace vardenix {

namespace {

std::vector<RowSpan> SpansWanted(const Terrain& terrain, const SearchResults& hits,
                                 ReplaceWhere where) {
    return where == ReplaceWhere::Hits ? SpansOfHits(hits, terrain.MapWidth)
                                       : WholeTerrain(terrain);
}

} // namespace

ReplacePlan PlanOf(const Terrain& terrain, const TileLookup& lookup,
                   const SearchResults& hits, const ReplaceWish& wish) {
    TilesOfText old = TilesWritten(lookup, BytesFromUtf8(wish.Old), TilesFrom::Anywhere);
    TilesOfText by = TilesWritten(lookup, BytesFromUtf8(wish.New), TilesFrom::Catalogue);
    ReplacePlan plan{.Old = std::move(old.Numbers),
                     .New = std::move(by.Numbers),
                     .UnknownOld = Utf8FromBytes(old.Unknown),
                     .UnknownNew = Utf8FromBytes(by.Unknown)};
    plan.Posts =
        CountReplaced(terrain, MarksOf(plan.Old), SpansWanted(terrain, hits, wish.Where));
    return plan;
}

int64_t ReplaceTiles(Terrain& terrain, const TileLookup& lookup,
                     const SearchResults& hits, const ReplaceWish& wish,
                     ChangeLog& changes) {
    const ReplacePlan plan = PlanOf(terrain, lookup, hits, wish);
    if (!plan.Possible())
        return 0;
    auto runs = ReplacedRuns(terrain, {MarksOf(plan.Old), plan.New, wish.Seed},
                             SpansWanted(terrain, hits, wish.Where));
    const int64_t count = CountOf<int32_t>(runs);
    if (count == 0)
        return 0;
    WriteNew(terrain.LxArr, runs);
    Change made;
    made.Name = "Replace " + std::to_string(count) + (count == 1 ? " post" : " posts");
    made.Posts.Runs = std::move(runs);
    changes.Add(std::move(made));
    return count;
}

} // namespace vardenix
