#include "search/Replacing.h"

#include "levels/PostHash.h"
#include "texts/RuntimeError.h"

namespace vardenix {

std::vector<TileRun> ReplacedRuns(const Terrain& terrain, const Replacement& replacement,
                                  std::span<const RowSpan> spans) {
    const auto& choice = replacement.New;
    if (choice.empty())
        throw RuntimeError(ErrorNumber::InvalidCall, "there is no tile to replace by");
    const int32_t width = terrain.MapWidth;
    const auto posts = terrain.LxArr.Values();
    const auto oldOf = [&](int32_t serial) {
        return int32_t{posts[static_cast<size_t>(serial) - 1].TileOffset};
    };
    const auto newOf = [&](int32_t serial) {
        const int32_t old = oldOf(serial);
        if (!IsMeant(replacement.Old, old))
            return old;
        const auto drawn =
            DrawAtPost((serial - 1) % width, (serial - 1) / width, replacement.Seed,
                       static_cast<uint32_t>(choice.size()));
        return choice[drawn];
    };
    return RunsOf<int32_t>(spans, width, oldOf, newOf);
}

std::vector<RowSpan> WholeTerrain(const Terrain& terrain) {
    std::vector<RowSpan> spans;
    spans.reserve(static_cast<size_t>(terrain.MapWidth));
    for (int32_t y = 0; y < terrain.MapWidth; ++y)
        spans.push_back({y, 0, terrain.MapWidth - 1});
    return spans;
}

std::vector<RowSpan> SpansOfHits(const SearchResults& hits, int32_t mapWidth) {
    return SpansOfSerials(std::span(hits).subspan(1), mapWidth);
}

int64_t CountReplaced(const Terrain& terrain, const TileMarks& old,
                      std::span<const RowSpan> spans) {
    const auto posts = terrain.LxArr.Values();
    const auto width = static_cast<size_t>(terrain.MapWidth);
    int64_t count = 0;
    for (const RowSpan& span : spans) {
        const size_t row = static_cast<size_t>(span.Y) * width;
        for (const TerrainPost& post :
             posts.subspan(row + static_cast<size_t>(span.X1),
                           static_cast<size_t>(int64_t{span.X2} - span.X1 + 1)))
            count += IsMeant(old, post.TileOffset) ? 1 : 0;
    }
    return count;
}

} // namespace vardenix
