#include "builder/LevelRewriting.h"

#include "builder/LevelReader.h"
#include "builder/LevelWriter.h"
#include "platform/FileNames.h"

#include <optional>
#include <vector>

namespace vardenix {

namespace {

// One row of blocks of a level: the old one's, or zeros where there is none.
class OldLevel {
public:
    OldLevel(const LevelPair& pair, const LevelGeometry& geometry, bool notExists)
        : row_(static_cast<size_t>(geometry.Blocks) * PostsPerSegment) {
        if (!notExists)
            reader_.emplace(pair, geometry.Blocks);
    }

    std::span<TerrainPost> Row(int32_t y) {
        if (reader_)
            reader_->ReadRow(y, row_);
        return row_;
    }
    std::span<const std::byte> BehindEntries() const {
        return reader_ ? reader_->BehindEntries() : std::span<const std::byte>();
    }

private:
    std::vector<TerrainPost> row_;
    std::optional<LevelReader> reader_;
};

} // namespace

LevelPair PairOfLevel(const std::string& folder, int32_t level) {
    const std::string number = std::to_string(level);
    return {folder + "theater.l" + number, folder + "theater.o" + number};
}

bool LevelNotExists(const std::string& folder, int32_t level) {
    const LevelPair pair = PairOfLevel(folder, level);
    if (!FileExists(pair.L))
        return true;
    if (!FileExists(pair.O))
        throw RuntimeError(ErrorNumber::FileNotFound,
                           pair.O + " (the L file beside it cannot be read without it)");
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
    OldLevel old(pair, geometry, notExists);
    LevelWriter writer(parts.Files, pair);
    for (int32_t y = 0; y < geometry.Blocks; ++y) {
        const std::span<TerrainPost> row = old.Row(y);
        for (int32_t x = 0; x < geometry.Blocks; ++x) {
            const auto block =
                row.subspan(static_cast<size_t>(x) * PostsPerSegment, PostsPerSegment);
            writer.Store(block, make(y, x, block));
        }
        parts.View.Increase_PBs();
        parts.View.GoOn();
    }
    writer.Finish(old.BehindEntries());
}

} // namespace vardenix
