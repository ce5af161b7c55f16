#include "search/ReplaceWish.h"

#include "texts/Windows1252.h"

#include <utility>

namespace vardenix {

namespace {

std::vector<RowSpan> SpansWanted(const Terrain& terrain, const ReplacePlaces& places,
                                 ReplaceWhere where) {
    switch (where) {
    case ReplaceWhere::Hits:
        return SpansOfHits(places.Hits, terrain.MapWidth);
    case ReplaceWhere::Selection:
        return {places.Selected.begin(), places.Selected.end()};
    case ReplaceWhere::Everywhere:
        break;
    }
    return WholeTerrain(terrain);
}

// Of those wanted the posts that give way.
std::vector<RowSpan> SpansGivingWay(const Terrain& terrain, const TileMarks& old,
                                    std::span<const RowSpan> spans) {
    std::vector<int32_t> serials;
    for (const RowSpan& span : spans)
        for (int32_t x = span.X1; x <= span.X2; ++x) {
            const int32_t serial = span.Y * terrain.MapWidth + x + 1;
            if (IsMeant(old, terrain.LxArr(serial).TileOffset))
                serials.push_back(serial);
        }
    return SpansOfSerials(serials, terrain.MapWidth);
}

} // namespace

ReplacePlan PlanOf(const Terrain& terrain, const TileLookup& lookup,
                   const ReplacePlaces& places, const ReplaceWish& wish) {
    TilesOfText old = TilesWritten(lookup, BytesFromUtf8(wish.Old), TilesFrom::Anywhere);
    TilesOfText by = TilesWritten(lookup, BytesFromUtf8(wish.New), TilesFrom::Catalogue);
    ReplacePlan plan{.Old = std::move(old.Numbers),
                     .New = std::move(by.Numbers),
                     .UnknownOld = Utf8FromBytes(old.Unknown),
                     .UnknownNew = Utf8FromBytes(by.Unknown)};
    plan.Posts = CountReplaced(terrain, MarksOf(plan.Old),
                               SpansWanted(terrain, places, wish.Where));
    return plan;
}

int64_t ReplaceTiles(Terrain& terrain, const TileLookup& lookup,
                     const ReplacePlaces& places, const ReplaceWish& wish,
                     ChangeLog& changes, const FittingTiles& fitting) {
    const ReplacePlan plan = PlanOf(terrain, lookup, places, wish);
    if (!plan.Possible())
        return 0;
    const TileMarks old = MarksOf(plan.Old);
    const auto spans = SpansWanted(terrain, places, wish.Where);
    auto runs =
        wish.Fitting && plan.New.size() == 1 && fitting
            ? fitting(SpansGivingWay(terrain, old, spans), plan.New.front(), wish.Seed)
            : ReplacedRuns(terrain, {old, plan.New, wish.Seed}, spans);
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
