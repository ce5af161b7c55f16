#include "builder/LevelRewriting.h"

#include "builder/FartileShape.h"
#include "files/FileNames.h"
#include "levels/LevelReader.h"
#include "levels/LevelWriter.h"

#include <optional>

namespace vardenix {

bool LevelNotExists(const std::string& folder, int32_t level) {
    const LevelPair pair = PairOfLevel(folder, level);
    if (!FileExists(pair.L))
        return true;
    if (!FileExists(pair.O))
        throw RuntimeError(ErrorNumber::FileNotFound,
                           pair.O + " (the L file beside it cannot be read without it)");
    if (level < FirstFarLevel && FileLength(pair.L) == 0 && FileLength(pair.O) == 0)
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           ShownPath(pair.L) + " and " + ShownPath(pair.O) +
                               " are empty, as saving an L0 under a new name leaves "
                               "them; delete the two and they are made anew");
    return false;
}

RuntimeError MissingFarLevel(const std::string& folder, int32_t level) {
    return RuntimeError(ErrorNumber::SubscriptOutOfRange,
                        PairOfLevel(folder, level).L +
                            " is not there; the files of levels 3, 4 and 5 can only be "
                            "rebuilt over existing ones");
}

void RewriteLevel(const LevelParts& parts, const LevelPair& pair,
                  const LevelGeometry& geometry, bool notExists, const MakeBlock& make) {
    parts.View.SetPB1_Max(RowsOfLevel(geometry.Level, parts.Terrain.MapWidth));
    parts.View.SetPB1_val(0);
    // Without a whole block there is nothing to say, and what is there stays.
    if (geometry.Blocks == 0)
        return;
    std::optional<LevelReader> old;
    if (!notExists)
        old.emplace(pair, geometry.Blocks);
    const auto was = [&old](const FileIdentity& (LevelReader::*identity)() const) {
        return old ? std::optional(((*old).*identity)()) : std::nullopt;
    };
    RewrittenFile fileL(parts.Files, pair.L, was(&LevelReader::IdentityL));
    LevelWriter writer(fileL, pair.L);
    std::vector<TerrainPost> posts(static_cast<size_t>(geometry.Blocks) *
                                   PostsPerSegment);
    for (int32_t y = 0; y < geometry.Blocks; ++y) {
        if (old)
            old->ReadRow(y, posts);
        for (int32_t x = 0; x < geometry.Blocks; ++x) {
            const auto block = std::span(posts).subspan(
                static_cast<size_t>(x) * PostsPerSegment, PostsPerSegment);
            writer.Store(block, make(y, x, block));
        }
        parts.View.Increase_PBs();
        parts.View.GoOn();
    }
    fileL.Finish();
    RewrittenFile fileO(parts.Files, pair.O, was(&LevelReader::IdentityO));
    writer.WriteOffsets(fileO);
    if (old)
        fileO.Write(old->BehindEntries().Span());
    fileO.Finish();
}

} // namespace vardenix
