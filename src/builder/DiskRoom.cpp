#include "builder/DiskRoom.h"

#include "builder/FartileIndex.h"
#include "builder/LevelRewriting.h"
#include "builder/PostsUnder.h"
#include "files/FileNames.h"
#include "levels/LevelReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <optional>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unordered_map>
#include <vector>

namespace vardenix {

namespace {

// `isBlank(y, x)` of each block; blank ones share one.
template <typename IsBlank>
uint64_t BytesOfPair(const LevelGeometry& geometry, uint64_t behindEntries,
                     IsBlank isBlank) {
    uint64_t blocks = 0;
    bool anyBlank = false;
    for (int32_t y = 0; y < geometry.Blocks; ++y)
        for (int32_t x = 0; x < geometry.Blocks; ++x) {
            const bool blank = isBlank(y, x);
            blocks += blank && anyBlank ? 0 : 1;
            anyBlank = anyBlank || blank;
        }
    return blocks * BlockBytes + static_cast<uint64_t>(geometry.AllBlocks()) * 4 +
           behindEntries;
}

// The blocks of a level that is there, each read once however many share it.
class OldBlocks {
public:
    OldBlocks(const LevelPair& pair, const LevelGeometry& geometry)
        : blocks_(geometry.Blocks), reader_(pair, geometry.Blocks) {}

    uint64_t BehindEntries() const { return reader_.LengthBehindEntries(); }

    // Whether one of its posts is such; always asked for the same.
    template <typename IsSuch>
    bool Has(int32_t y, int32_t x, IsSuch isSuch) {
        const int32_t offset =
            reader_.Offsets()[static_cast<size_t>(int64_t{y} * blocks_ + x)];
        const auto [known, isNew] = known_.try_emplace(offset, false);
        if (isNew) {
            reader_.ReadBlock(offset, posts_);
            known->second = std::any_of(posts_.begin(), posts_.end(), isSuch);
        }
        return known->second;
    }

private:
    int32_t blocks_;
    LevelReader reader_;
    std::unordered_map<int32_t, bool> known_; // by offset
    std::array<TerrainPost, PostsPerSegment> posts_{};
};

// None for a level that is not there or has no block.
std::optional<OldBlocks> OldBlocksOf(const std::string& folder,
                                     const LevelGeometry& geometry) {
    std::optional<OldBlocks> old;
    if (geometry.Blocks > 0 && !LevelNotExists(folder, geometry.Level))
        old.emplace(PairOfLevel(folder, geometry.Level), geometry);
    return old;
}

uint64_t BehindEntries(const std::optional<OldBlocks>& old) {
    return old ? old->BehindEntries() : 0;
}

// Whether the finest grid has a height under fine block (x, y).
bool HasHeight(const ElevationGrids& grids, const LevelGeometry& geometry, int32_t y,
               int32_t x) {
    const int32_t side = SegmentSide << geometry.Level;
    for (int64_t row = int64_t{y} * side; row < (int64_t{y} + 1) * side; ++row) {
        const auto heights = grids.Heights(0).subspan(
            static_cast<size_t>(row * grids.WidthOf(0) + int64_t{x} * side),
            static_cast<size_t>(side));
        if (std::any_of(heights.begin(), heights.end(), [](int16_t h) { return h != 0; }))
            return true;
    }
    return false;
}

// Calls visit(y, x, empty, blank) for every post of a far level that lies in a whole
// block.
template <typename Visit>
void ForEachFarPost(const Terrain& terrain, const LevelGeometry& geometry, Visit visit) {
    PostsUnder posts(terrain, geometry);
    const int32_t side = geometry.Blocks * SegmentSide;
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            posts.Look(x, y);
            visit(y, x, posts);
        }
}

// Whether the level 2 posts under fine block (x, y) have a tile.
bool HasTile(const Terrain& terrain, const LevelGeometry& geometry, int32_t y, int32_t x,
             bool countElevation) {
    const int32_t side = SegmentSide / geometry.Finer;
    const auto posts = terrain.LxArr.Values();
    for (int32_t row = y * side; row < (y + 1) * side; ++row)
        for (int32_t column = x * side; column < (x + 1) * side; ++column) {
            const TerrainPost& post =
                posts[static_cast<size_t>(int64_t{row} * terrain.MapWidth + column)];
            if (post.TileOffset != 0 || (countElevation && post.Elevation != 0))
                return true;
        }
    return false;
}

} // namespace

FreeRoom FreeRoomAt(const std::string& folder) {
    // That of a name alone is the one where the program stands.
    const std::string path = folder.empty() ? "." : RealPath(folder).string();
    struct statvfs room {};
    struct stat place {};
    if (::statvfs(path.c_str(), &room) != 0 || ::stat(path.c_str(), &place) != 0)
        ThrowSystemError(errno, "looking for room in", folder);
    return {place.st_dev, uint64_t{room.f_bavail} * room.f_frsize};
}

void RequireRoom(const std::vector<RoomNeeded>& needs, const AskFreeRoom& ask) {
    struct Total {
        std::string Folder;
        uint64_t Free = 0;
        uint64_t Needed = 0;
    };
    std::map<uint64_t, Total> byDevice;
    for (const RoomNeeded& need : needs) {
        const FreeRoom room = ask(need.Folder);
        Total& total = byDevice.try_emplace(room.Device).first->second;
        total.Folder = total.Folder.empty() ? need.Folder : total.Folder;
        total.Free = room.Bytes;
        total.Needed += need.Bytes;
    }
    for (const auto& [device, total] : byDevice)
        if (total.Needed > total.Free)
            throw RuntimeError(
                ErrorNumber::DiskFull,
                "the new files need " + std::to_string(total.Needed) +
                    " bytes beside the old ones, and " + std::to_string(total.Free) +
                    " are free on the disk of " + total.Folder + "; nothing has changed");
}

uint64_t BytesOfFineLevel(const Terrain& terrain, const std::string& folder,
                          int32_t level) {
    const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
    auto old = OldBlocksOf(folder, geometry);
    return BytesOfPair(geometry, BehindEntries(old), [&](int32_t y, int32_t x) {
        if (HasTile(terrain, geometry, y, x, !old))
            return false;
        return !old || !old->Has(y, x, [](const TerrainPost& post) {
            return post.Elevation != 0;
        });
    });
}

uint64_t BytesOfFarLevel(const Terrain& terrain, const std::string& folder,
                         int32_t level) {
    const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
    std::vector<bool> full(static_cast<size_t>(geometry.AllBlocks()));
    const auto place = [&](int32_t y, int32_t x) {
        return static_cast<size_t>(int64_t{y} * geometry.Blocks + x);
    };
    ForEachFarPost(terrain, geometry, [&](int32_t y, int32_t x, const PostsUnder& posts) {
        if (!posts.Blank())
            full[place(y / SegmentSide, x / SegmentSide)] = true;
    });
    const auto old = OldBlocksOf(folder, geometry);
    return BytesOfPair(geometry, BehindEntries(old),
                       [&](int32_t y, int32_t x) { return !full[place(y, x)]; });
}

uint64_t BytesOfElevations(const Terrain& terrain, const std::string& folder,
                           int32_t level, const ElevationGrids& grids) {
    const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
    if (level == 2) {
        const OldBlocks old({terrain.LFilename, terrain.OFilename}, geometry);
        return BytesOfPair(geometry, old.BehindEntries(),
                           [](int32_t, int32_t) { return false; });
    }
    auto old = OldBlocksOf(folder, geometry);
    return BytesOfPair(geometry, BehindEntries(old), [&](int32_t y, int32_t x) {
        if (HasHeight(grids, geometry, y, x))
            return false;
        return old ? !old->Has(y, x,
                               [&](const TerrainPost& post) {
                                   return post.TileOffset != geometry.Base;
                               })
                   : !HasTile(terrain, geometry, y, x, false);
    });
}

FartileTotals CountFartiles(const Terrain& terrain) {
    FartileTotals totals;
    for (int32_t level = 3; level <= 5; ++level) {
        const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
        bool empty = false;
        uint64_t count = 0;
        ForEachFarPost(terrain, geometry, [&](int32_t, int32_t, const PostsUnder& posts) {
            count += posts.Empty() && empty ? 0 : 1;
            empty = empty || posts.Empty();
        });
        totals.Count += count;
        totals.Serials += count * static_cast<uint64_t>(geometry.Coarser) *
                          static_cast<uint64_t>(geometry.Coarser);
    }
    return totals;
}

uint64_t BytesOfFartiles(uint64_t count, uint64_t tiles, const FartileShape& shape) {
    return 2 * (FartileShape::HeaderBytes + count * shape.LinearSize()) +
           BytesOfIndex(count, 2 * tiles);
}

} // namespace vardenix
